#pragma once

#include <cstddef>

namespace lmx {

/// Where the bytes of a document come from: one forward pass, block by block.
class c_byte_source {
 public:
  c_byte_source() = default;
  c_byte_source(const c_byte_source&) = delete;
  c_byte_source& operator=(const c_byte_source&) = delete;
  virtual ~c_byte_source() = default;

  /// Whether there is anything to read from at all.
  virtual bool is_open() const { return true; }

  /// Fills `bytes` with up to `size` bytes and returns how many there were; less than `size` only
  /// at the end of the input. A read error ends the input.
  virtual std::size_t read(char* bytes, std::size_t size) = 0;
};

}  // namespace lmx
