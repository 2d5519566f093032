#pragma once

#include <cstdint>
#include <string_view>

namespace lmx {

/// A place in a document: bytes before it, line and column counted from 1.
struct c_position {
  std::uint64_t bytes = 0;
  std::uint64_t line = 1;
  std::uint64_t column = 1;
};

/// Is told what a reader leaves out.
class c_reading_observer {
 public:
  c_reading_observer() = default;
  c_reading_observer(const c_reading_observer&) = delete;
  c_reading_observer& operator=(const c_reading_observer&) = delete;
  virtual ~c_reading_observer() = default;

  /// An element that its parent does not know starts on that line; it is skipped.
  virtual void on_unknown_element(std::uint64_t line) = 0;

  /// An element on that line has an attribute that it does not know; it is skipped.
  virtual void on_unknown_attribute(std::uint64_t line) = 0;

  /// The document was read so far, up to its end or to a fault.
  virtual void on_end(const c_position& position) = 0;
};

}  // namespace lmx
