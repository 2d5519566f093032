#pragma once

#include "lookup/HashSeed.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace consolidator {

/// The keyed hash SipHash with the given numbers of rounds for each word and at the end. Nobody can
/// make texts with the same hash without knowing the seed.
template <int wordRounds, int finalRounds>
class SipHash {
 public:
  explicit SipHash(const HashSeed& seed)
      : v0_(seed.first ^ 0x736f'6d65'7073'6575U),
        v1_(seed.second ^ 0x646f'7261'6e64'6f6dU),
        v2_(seed.first ^ 0x6c79'6765'6e65'7261U),
        v3_(seed.second ^ 0x7465'6462'7974'6573U) {}

  /// Adds a word.
  void add(std::uint64_t word) {
    v3_ ^= word;
    rounds<wordRounds>();
    v0_ ^= word;
  }

  /// Adds a text by its words, the last of which holds the remaining bytes and the low eight bits
  /// of the size. If nothing else is added, the hash is the one that SipHash defines for the text.
  void add(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; end - at >= wordSize; at += wordSize) add(load<std::uint64_t>(at));
    add(rest(text, at) | static_cast<std::uint64_t>(text.size()) << 56U);
  }

  /// Returns the hash of all that was added. Nothing may be added afterwards.
  std::uint64_t finish() {
    v2_ ^= 0xFF;
    rounds<finalRounds>();
    return v0_ ^ v1_ ^ v2_ ^ v3_;
  }

 private:
  static constexpr std::ptrdiff_t wordSize = sizeof(std::uint64_t);

  // The host is little-endian, as the words of SipHash are.
  template <typename T>
  static std::uint64_t load(const char* bytes) {
    T value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }

  // The up to seven bytes from `at` on, by loads that may overlap.
  static std::uint64_t rest(std::string_view text, const char* at) {
    const char* const end = text.data() + text.size();
    const auto count = static_cast<std::size_t>(end - at);
    if (text.size() >= sizeof(std::uint64_t)) {
      return load<std::uint64_t>(end - wordSize) >> 8U >> (56U - 8U * count);
    }
    if (count >= 4) {
      return load<std::uint32_t>(at) | load<std::uint32_t>(end - 4) << (8U * (count - 4));
    }
    if (count == 0) return 0;
    const std::size_t middle = count / 2;
    return load<std::uint8_t>(at) | load<std::uint8_t>(at + middle) << (8U * middle) |
           load<std::uint8_t>(end - 1) << (8U * (count - 1));
  }

  template <int count>
  void rounds() {
    for (int i = 0; i < count; ++i) {
      v0_ += v1_;
      v2_ += v3_;
      v1_ = std::rotl(v1_, 13) ^ v0_;
      v3_ = std::rotl(v3_, 16) ^ v2_;
      v0_ = std::rotl(v0_, 32);
      v2_ += v1_;
      v0_ += v3_;
      v1_ = std::rotl(v1_, 17) ^ v2_;
      v3_ = std::rotl(v3_, 21) ^ v0_;
      v2_ = std::rotl(v2_, 32);
    }
  }

  std::uint64_t v0_;
  std::uint64_t v1_;
  std::uint64_t v2_;
  std::uint64_t v3_;
};

}  // namespace consolidator
