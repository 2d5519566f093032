#include "readers/UsualNumbers.h"

#include "text/WhiteSpace.h"

#include <cstddef>

namespace consolidator {

namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f'); }

// Skips one field after another, each with the spaces that must follow it.
class UsualFields {
 public:
  explicit UsualFields(std::string_view line) : line_(line) {}

  std::string_view rest() const { return line_.substr(at_); }

  bool skip(std::string_view text) {
    if (!rest().starts_with(text)) return false;
    at_ += text.size();
    return true;
  }

  bool skipSpaces() {
    const std::size_t start = at_;
    while (at_ < line_.size() && line_[at_] == ' ') ++at_;
    return at_ > start;
  }

  template <typename IsPart>
  bool skipDigits(std::size_t most, IsPart isPart) {
    const std::size_t start = at_;
    while (at_ < line_.size() && isPart(line_[at_])) ++at_;
    return at_ > start && at_ - start <= most && skipSpaces();
  }

  bool skipWord() {
    const std::size_t start = at_;
    at_ += plainLength(rest());
    return at_ > start && skipSpaces();
  }

 private:
  std::string_view line_;
  std::size_t at_ = 0;
};

// So many digits never exceed 64 or 32 bits.
constexpr std::size_t longDigits = 18;
constexpr std::size_t hexDigits = 16;
constexpr std::size_t shortDigits = 9;

}  // namespace

std::optional<std::string_view> afterUsualNumbers(std::string_view line) {
  UsualFields fields(line);
  const bool isUsual = fields.skip("Bit") && fields.skipSpaces() &&
                       fields.skipDigits(longDigits, isDigit) && fields.skip("0x") &&
                       fields.skipDigits(hexDigits, isHexDigit) &&
                       fields.skipDigits(shortDigits, isDigit) && fields.skipWord() &&
                       fields.skipDigits(shortDigits, isDigit);
  if (!isUsual) return std::nullopt;
  return fields.rest();
}

}  // namespace consolidator
