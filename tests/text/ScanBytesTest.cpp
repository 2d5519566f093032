#include "text/ScanBytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

std::size_t lengthUpToZero(std::string_view text) { return lengthBeforeCodeBelow<1>(text); }

TEST(ScanBytes, MayBeGivenANullText) { EXPECT_EQ(lengthUpToZero({}), 0U); }

TEST(ScanBytes, FindsTheFirstZeroByteAtAnyPlaceOfAnyLength) {
  for (std::size_t size = 0; size <= 40; ++size) {
    const std::string text(size + 1, '\x80');
    EXPECT_EQ(lengthUpToZero(std::string_view(text).substr(0, size)), size);
    for (std::size_t zero = 0; zero < size; ++zero) {
      std::string cut = text;
      cut[zero] = '\0';
      cut.back() = '\0';
      EXPECT_EQ(lengthUpToZero(std::string_view(cut).substr(0, size)), zero) << size;
    }
  }
}

// A search for zero bytes in a word of the processor may mistake a one above a zero for another.
TEST(ScanBytes, TakesNoOneForAZero) {
  EXPECT_EQ(lengthUpToZero(std::string(20, '\x01')), 20U);
  EXPECT_EQ(lengthUpToZero(std::string_view("\1\1\1\0\1\1\1\1\1", 9)), 3U);
}

TEST(ScanBytes, TheGreatestEndTakesBytesOfTheUpperHalfOnly) {
  const std::string upper(20, '\x80');
  EXPECT_EQ(lengthBeforeCodeBelow<128>(upper), upper.size());
  EXPECT_EQ(lengthBeforeCodeBelow<128>(upper + '\x7F'), upper.size());
}

}  // namespace
}  // namespace consolidator
