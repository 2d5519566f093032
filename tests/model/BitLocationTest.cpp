#include "model/BitLocation.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

// Reads locations from bytes after those that `locations` holds.
bool read(std::string_view bytes, std::vector<BitLocation>& locations) {
  const MemoryStream stream(bytes);
  ByteReader in(stream.get());
  return readLocations(in, locations);
}

TEST(BitLocation, IsZeroWhenNew) {
  const BitLocation location;
  EXPECT_EQ(location.first, 0U);
  EXPECT_EQ(location.second, 0U);
}

TEST(BitLocation, ComparesBothNumbers) {
  EXPECT_EQ((BitLocation{1, 2}), (BitLocation{1, 2}));
  EXPECT_NE((BitLocation{1, 2}), (BitLocation{1, 3}));
  EXPECT_NE((BitLocation{1, 2}), (BitLocation{3, 2}));
}

TEST(BitLocation, IsWrittenAsACountAndPairs) {
  EXPECT_EQ(written([](ByteWriter& out) {
              writeLocations(out, {{1, 2}, {0xFFFFFFFFU, 0x80000000U}});
            }),
            hexBytes("02 00 00 00  01 00 00 00 02 00 00 00  FF FF FF FF 00 00 00 80"));
  EXPECT_EQ(written([](ByteWriter& out) { writeLocations(out, {}); }), hexBytes("00 00 00 00"));
}

TEST(BitLocation, IsReadAsACountAndPairs) {
  std::vector<BitLocation> locations;
  EXPECT_TRUE(
      read(hexBytes("02 00 00 00  01 00 00 00 02 00 00 00  FF FF FF FF 00 00 00 80"), locations));
  EXPECT_EQ(locations, (std::vector<BitLocation>{{1, 2}, {0xFFFFFFFFU, 0x80000000U}}));
}

TEST(BitLocation, IsReadAfterWhatTheListHolds) {
  std::vector<BitLocation> locations{{1, 2}};
  EXPECT_TRUE(read(hexBytes("01 00 00 00  03 00 00 00 04 00 00 00"), locations));
  EXPECT_EQ(locations, (std::vector<BitLocation>{{1, 2}, {3, 4}}));
}

TEST(BitLocation, KeepsTheWholePairsOfAShortRead) {
  const std::string bytes =
      hexBytes("02 00 00 00  01 00 00 00 02 00 00 00  03 00 00 00 04 00 00 00");
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    std::vector<BitLocation> locations;
    EXPECT_FALSE(read(bytes.substr(0, size), locations)) << size;
    EXPECT_EQ(locations,
              size < 12 ? std::vector<BitLocation>() : std::vector<BitLocation>({{1, 2}}))
        << size;
  }
}

TEST(BitLocation, FailsOnTheLargestCount) {
  std::vector<BitLocation> locations;
  EXPECT_FALSE(read(hexBytes("FF FF FF FF  01 00 00 00 02 00 00 00"), locations));
  EXPECT_EQ(locations, (std::vector<BitLocation>{{1, 2}}));
}

}  // namespace
}  // namespace consolidator
