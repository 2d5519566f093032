#include "lookup/SipHash.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

// The bytes 0, 1, 2 and so on, as a seed and as texts, are those of the published test vectors.
constexpr HashSeed seed{0x0706050403020100U, 0x0F0E0D0C0B0A0908U};

std::string countedBytes(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i);
  return bytes;
}

template <typename Hash>
std::uint64_t hashOf(std::string_view text) {
  Hash hash(seed);
  hash.add(text);
  return hash.finish();
}

TEST(SipHash, GivesThePublishedHashesWithTwoAndFourRounds) {
  constexpr std::array<std::uint64_t, 17> hashes{
      0x726FDB47DD0E0E31U, 0x74F839C593DC67FDU, 0x0D6C8009D9A94F5AU, 0x85676696D7FB7E2DU,
      0xCF2794E0277187B7U, 0x18765564CD99A68DU, 0xCBC9466E58FEE3CEU, 0xAB0200F58B01D137U,
      0x93F5F5799A932462U, 0x9E0082DF0BA9E4B0U, 0x7A5DBBC594DDB9F3U, 0xF4B32F46226BADA7U,
      0x751E8FBC860EE5FBU, 0x14EA5627C0843D90U, 0xF723CA908E7AF2EEU, 0xA129CA6149BE45E5U,
      0x3F2ACC7F57C29BDBU};
  for (std::size_t size = 0; size < hashes.size(); ++size) {
    EXPECT_EQ((hashOf<SipHash<2, 4>>(countedBytes(size))), hashes[size]) << size;
  }
}

TEST(SipHash, GivesTheKnownHashesWithOneAndThreeRounds) {
  constexpr std::array<std::uint64_t, 17> hashes{
      0xABAC0158050FC4DCU, 0xC9F49BF37D57CA93U, 0x82CB9B024DC7D44DU, 0x8BF80AB8E7DDF7FBU,
      0xCF75576088D38328U, 0xDEF9D52F49533B67U, 0xC50D2B50C59F22A7U, 0xD3927D989BB11140U,
      0x369095118D299A8EU, 0x25A48EB36C063DE4U, 0x79DE85EE92FF097FU, 0x70C118C1F94DC352U,
      0x78A384B157B4D9A2U, 0x306F760C1229FFA7U, 0x605AA111C0F95D34U, 0xD320D86D2A519956U,
      0xCC4FDD1A7D908B66U};
  for (std::size_t size = 0; size < hashes.size(); ++size) {
    EXPECT_EQ((hashOf<SipHash<1, 3>>(countedBytes(size))), hashes[size]) << size;
  }
}

TEST(SipHash, ReadsNoByteBeyondTheText) {
  for (std::size_t size = 0; size <= 24; ++size) {
    const std::string text = countedBytes(size);
    const std::string longer = "front" + text + "back";
    EXPECT_EQ((hashOf<SipHash<1, 3>>(std::string_view(longer).substr(5, size))),
              (hashOf<SipHash<1, 3>>(text)))
        << size;
  }
}

TEST(SipHash, DependsOnBothWordsOfTheSeed) {
  const auto hashWith = [](const HashSeed& other) {
    SipHash<1, 3> hash(other);
    hash.add("text");
    return hash.finish();
  };
  EXPECT_NE(hashWith({1, 2}), hashWith({1, 3}));
  EXPECT_NE(hashWith({1, 2}), hashWith({2, 2}));
}

}  // namespace
}  // namespace consolidator
