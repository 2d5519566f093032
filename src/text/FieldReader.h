#pragma once

#include "text/WhiteSpace.h"

#include <charconv>
#include <concepts>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace consolidator {

/// The fields of one line, extracted as by a standard stream with the C locale, at a fraction of
/// the cost. The line must outlive the reader and what it returns.
class FieldReader {
 public:
  explicit FieldReader(std::string_view line) : rest_(line) {}

  /// Skips white space and reads up to the next; empty at the end of the line.
  std::string_view readWord() {
    skipWhiteSpace();
    const std::string_view word = rest_.substr(0, wordLength(rest_));
    rest_.remove_prefix(word.size());
    return word;
  }

  /// What follows the field read last, white space included.
  std::string_view rest() const { return rest_; }

  /// Skips white space and reads an unsigned number. As from a stream, it may have a sign ("-1"
  /// wraps around) and, in base 16, "0x" before its digits. It ends before the first character that
  /// is no digit, where the next field starts. Returns false when there is no digit or the number
  /// exceeds T; the line must not be read on then.
  template <std::unsigned_integral T>
  bool readNumber(T& number, int base = 10) {
    skipWhiteSpace();
    const bool isNegative = skipSign();
    if (base == 16 && (rest_.starts_with("0x") || rest_.starts_with("0X"))) rest_.remove_prefix(2);
    T magnitude = 0;
    const char* const start = rest_.data();
    const auto [end, error] = std::from_chars(start, start + rest_.size(), magnitude, base);
    if (error != std::errc()) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - start));
    number = isNegative ? T{0} - magnitude : magnitude;
    return true;
  }

 private:
  void skipWhiteSpace() {
    while (!rest_.empty() && isWhiteSpace(rest_.front())) rest_.remove_prefix(1);
  }

  // Skips one sign. Returns whether it was a minus.
  bool skipSign() {
    const bool isNegative = rest_.starts_with('-');
    if (isNegative || rest_.starts_with('+')) rest_.remove_prefix(1);
    return isNegative;
  }

  std::string_view rest_;
};

}  // namespace consolidator
