#pragma once

#include "inspect/records/RegisterInstances.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace consolidator::inspect {

/// Numbers different texts in the order in which they come. Holds copies of them, since those of a
/// mapped file may change.
class TextNumbers {
 public:
  std::uint32_t size() const { return static_cast<std::uint32_t>(numbers_.size()); }

  /// The number of a text, which is a new one if it was not there yet.
  std::uint32_t add(std::string_view text) {
    const auto known = numbers_.find(text);
    if (known != numbers_.end()) return known->second;
    return numbers_.emplace(text, size()).first->second;
  }

  std::optional<std::uint32_t> find(std::string_view text) const {
    const auto known = numbers_.find(text);
    return known == numbers_.end() ? std::nullopt : std::optional(known->second);
  }

  /// Calls `visit(text, number)` for all of them, in no particular order.
  template <typename Visit>
  void forEach(Visit visit) const {
    for (const auto& [text, number] : numbers_) visit(std::string_view(text), number);
  }

 private:
  std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> numbers_;
};

}  // namespace consolidator::inspect
