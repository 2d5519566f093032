// A JSON library would need memory for the longest string and the deepest nesting, and refuses
// numbers that it cannot hold; here nothing but the grammar counts.

#include "inspect/verify/StrictJson.h"

#include "inspect/output/Utf8.h"
#include "inspect/verify/PlainBytes.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace consolidator::inspect {

namespace {

bool isDecimalDigit(int c) { return c >= '0' && c <= '9'; }

bool isHexDigit(int c) {
  return isDecimalDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Each function goes on to the end of what it is named for and returns whether that was there; if
// not, the position is where it fails.
class StrictJsonReader {
 public:
  explicit StrictJsonReader(std::string_view text) : text_(text) {}

  bool document();

  std::size_t position() const { return position_; }

 private:
  enum class Step { Failed, Opened, Ended };

  // The next byte, or none of all bytes at the end.
  int next() const {
    return position_ < text_.size() ? static_cast<unsigned char>(text_[position_]) : -1;
  }

  bool take(char c) {
    if (next() != c) return false;
    ++position_;
    return true;
  }

  void blanks() {
    while (take(' ') || take('\n') || take('\r') || take('\t')) {
    }
  }

  Step value();
  Step open(bool isObject, char close);
  bool endsValue();
  bool key();
  bool string();
  bool specialCharacter();
  bool escape();
  bool literal(std::string_view word);
  bool digits();
  bool number();

  std::string_view text_;
  std::size_t position_ = 0;
  std::vector<bool> isObject_;  // of all that is open
};

bool StrictJsonReader::document() {
  blanks();
  while (true) {
    const Step step = value();
    if (step == Step::Failed) return false;
    if (step == Step::Ended && !endsValue()) return false;
    if (isObject_.empty()) return position_ == text_.size();
  }
}

StrictJsonReader::Step StrictJsonReader::value() {
  const auto ended = [](bool isThere) { return isThere ? Step::Ended : Step::Failed; };
  switch (next()) {
    case '{':
      return open(true, '}');
    case '[':
      return open(false, ']');
    case '"':
      return ended(string());
    case 't':
      return ended(literal("true"));
    case 'f':
      return ended(literal("false"));
    case 'n':
      return ended(literal("null"));
    default:
      return ended(number());
  }
}

// An object or array up to its first value; if it is empty, to its end.
StrictJsonReader::Step StrictJsonReader::open(bool isObject, char close) {
  ++position_;
  blanks();
  if (take(close)) return Step::Ended;
  isObject_.push_back(isObject);
  return !isObject || key() ? Step::Opened : Step::Failed;
}

// What follows a value: ends of objects and arrays, and then the start of the next value, unless
// nothing is open any more.
bool StrictJsonReader::endsValue() {
  blanks();
  while (!isObject_.empty()) {
    const bool isObject = isObject_.back();
    if (take(',')) {
      blanks();
      return !isObject || key();
    }
    if (!take(isObject ? '}' : ']')) return false;
    isObject_.pop_back();
    blanks();
  }
  return true;
}

bool StrictJsonReader::key() {
  if (!string()) return false;
  blanks();
  if (!take(':')) return false;
  blanks();
  return true;
}

bool StrictJsonReader::string() {
  if (!take('"')) return false;
  while (true) {
    position_ += plainBytes(text_.substr(position_));
    if (take('"')) return true;
    if (!specialCharacter()) return false;
  }
}

bool StrictJsonReader::specialCharacter() {
  if (next() == '\\') return escape();
  const Utf8Sequence sequence = firstSequence(text_.substr(position_));
  if (next() < 0x80 || !sequence.isWellFormed) return false;
  position_ += sequence.size;
  return true;
}

bool StrictJsonReader::escape() {
  ++position_;
  const int c = next();
  if (c < 0 ||
      std::string_view("\"\\/bfnrtu").find(static_cast<char>(c)) == std::string_view::npos) {
    return false;
  }
  ++position_;
  for (int i = 0; c == 'u' && i < 4; ++i) {
    if (!isHexDigit(next())) return false;
    ++position_;
  }
  return true;
}

bool StrictJsonReader::literal(std::string_view word) {
  return std::ranges::all_of(word, [this](char c) { return take(c); });
}

bool StrictJsonReader::digits() {
  std::size_t end = position_;
  while (end < text_.size() && isDecimalDigit(text_[end])) ++end;
  return std::exchange(position_, end) < end;
}

bool StrictJsonReader::number() {
  static_cast<void>(take('-'));
  if (!take('0') && !digits()) return false;
  if (take('.') && !digits()) return false;
  if (!take('e') && !take('E')) return true;
  if (!take('+')) static_cast<void>(take('-'));
  return digits();
}

}  // namespace

std::size_t findNotStrict(std::string_view text) {
  StrictJsonReader reader(text);
  return reader.document() ? std::string_view::npos : reader.position();
}

}  // namespace consolidator::inspect
