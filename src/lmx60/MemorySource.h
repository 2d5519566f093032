#pragma once

#include "lmx60/ByteSource.h"

#include <string_view>

namespace lmx {

/// A document in memory.
class c_memory_source final : public c_byte_source {
 public:
  /// The text must outlive the source.
  explicit c_memory_source(std::string_view text) : rest_(text) {}

  std::size_t read(char* bytes, std::size_t size) override {
    const std::size_t count = rest_.copy(bytes, size);
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
};

}  // namespace lmx
