#include "CollidingKeys.h"

#include <array>
#include <cstring>
#include <string_view>

namespace consolidator {

namespace {

// MurmurHash64A, which takes a text by words of 8 bytes. Each step can be undone.
constexpr std::uint64_t multiplier = 0xC6A4A7935BD1E995U;
constexpr std::uint64_t inverse = 0x5F7A0EA7E59B19BDU;
constexpr std::uint64_t librarySeed = 0xC70F6907U;

static_assert(multiplier * inverse == 1);

constexpr std::uint64_t folded(std::uint64_t value) { return value ^ value >> 47U; }

constexpr std::uint64_t mixed(std::uint64_t word) { return folded(word * multiplier) * multiplier; }

constexpr std::uint64_t unmixed(std::uint64_t word) { return folded(word * inverse) * inverse; }

using Word = std::array<char, 8>;

std::uint64_t numberOf(const Word& word) {
  std::uint64_t number = 0;
  std::memcpy(&number, word.data(), sizeof number);
  return number;
}

constexpr std::string_view alphabet =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+*!?$%@^~{}.";

Word wordOf(std::uint64_t number) {
  Word word{};
  for (char& c : word) {
    c = alphabet[number % alphabet.size()];
    number /= alphabet.size();
  }
  return word;
}

bool isVisible(const Word& word) {
  for (const char c : word) {
    if (alphabet.find(c) == std::string_view::npos) return false;
  }
  return true;
}

// Of each part there are 32 with the same effect on the hash, whatever the others are.
constexpr std::size_t partSize = 2 * sizeof(Word);
constexpr std::size_t partCount = 4;
constexpr std::size_t choices = 32;

using Parts = std::array<std::array<std::string, choices>, partCount>;

// The second word is what leads from the first one to the wanted state, if it can be seen.
std::string nextPart(std::uint64_t state, std::uint64_t wanted, std::uint64_t& tried) {
  for (;;) {
    const Word first = wordOf(tried++);
    const std::uint64_t between = (state ^ mixed(numberOf(first))) * multiplier;
    const std::uint64_t number = unmixed(between ^ wanted);
    Word second{};
    std::memcpy(second.data(), &number, sizeof number);
    if (!isVisible(second)) continue;
    return std::string(first.data(), first.size()) + std::string(second.data(), second.size());
  }
}

Parts makeParts() {
  Parts parts;
  std::uint64_t state = librarySeed ^ (partCount * partSize * multiplier);
  for (auto& choicesOfPart : parts) {
    constexpr std::uint64_t wanted = 0;
    std::uint64_t tried = 0;
    for (std::string& part : choicesOfPart) part = nextPart(state, wanted, tried);
    state = wanted * multiplier;
  }
  return parts;
}

}  // namespace

std::string collidingText(std::size_t number) {
  static const Parts parts = makeParts();
  std::string text;
  for (const auto& choicesOfPart : parts) {
    text += choicesOfPart[number % choices];
    number /= choices;
  }
  return text;
}

std::uint32_t CollidingNumbers::operator[](std::size_t position) {
  constexpr std::uint32_t zeroBits = 0x3FC00;
  constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15U;
  for (; found_.size() <= position; ++next_) {
    std::uint64_t spread = hash_(next_) * goldenRatio;
    spread ^= spread >> 32U;
    spread *= goldenRatio;
    if (((spread >> 32U) & zeroBits) == 0) found_.push_back(next_);
  }
  return found_[position];
}

}  // namespace consolidator
