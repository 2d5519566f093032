#pragma once

#include "consolidated/Kernel.h"
#include "lookup/KeyedHash.h"
#include "text/TextSearch.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace consolidator::inspect {

/// For sets and maps of texts from files, whose makers cannot know which of them collide.
struct TextHash {
  using is_transparent = void;

  std::size_t operator()(std::string_view text) const { return keyedHash(text); }
};

using TextSet = std::unordered_set<std::string, TextHash, std::equal_to<>>;

/// An instance of a kernel in which a hardware variable lies.
struct RegisterInstance {
  std::string_view path;  ///< holds as long as the RegisterInstances
  consolidated::Belonging belonging = consolidated::Belonging::None;
};

/// Tells in which instances of a kernel its hardware variables lie: by the rule of belonging(), but
/// not pair by pair, of which there may be any number.
class RegisterInstances {
 public:
  /// The most instances that are told for one hardware variable. What the tool makes of real
  /// designs has one or two.
  static constexpr std::size_t mostInstances = 64;

  /// Of a kernel whose file stays open; for hardware variables with one of these register names.
  RegisterInstances(const consolidated::Kernel& kernel, const TextSet& registers);

  struct Found {
    std::vector<RegisterInstance> instances;  ///< in the kernel's order, equal paths once
    bool areAll = true;                       ///< false if there may be more
  };

  /// The instances of a hardware variable of that kernel; none if no argument or variable has its
  /// register. Takes a time that grows with the length of its name.
  Found of(const consolidated::HardwareVariable& hardware);

 private:
  void addBearers(const consolidated::List<consolidated::Variable>& variables,
                  const TextSet& registers);
  void addPaths(const consolidated::List<consolidated::Text>& paths);

  // For each register one of those that have it: belonging() asks no more of it.
  std::unordered_map<std::string, consolidated::Variable, TextHash, std::equal_to<>> bearers_;
  std::vector<std::string> paths_;  // copies, since a mapped file may change while they are sorted
  std::unique_ptr<TextSearch> search_;
};

}  // namespace consolidator::inspect
