#include "text/ShortText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

TEST(ShortText, IsPutInAnyLengthAndNothingBeyondIt) {
  std::string bytes;
  for (int i = 0; i < 100; ++i) bytes += static_cast<char>(i);
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    const std::string_view text = std::string_view(bytes).substr(bytes.size() - length);
    std::string to(length + 1, '#');
    EXPECT_EQ(putText(to.data(), text), to.data() + length);
    EXPECT_EQ(to, std::string(text) + '#');
  }
}

TEST(ShortText, MayBeNullIfEmpty) {
  char place = '#';
  EXPECT_EQ(putText(&place, {}), &place);
  EXPECT_EQ(lengthUpToZero(nullptr, 0), 0U);
  EXPECT_EQ(place, '#');
}

TEST(ShortText, EndsAtItsFirstZeroByte) {
  for (std::size_t size = 0; size <= 40; ++size) {
    const std::string text(size + 1, '\x80');
    EXPECT_EQ(lengthUpToZero(text.data(), size), size);
    for (std::size_t zero = 0; zero < size; ++zero) {
      std::string cut = text;
      cut[zero] = '\0';
      cut.back() = '\0';
      EXPECT_EQ(lengthUpToZero(cut.data(), size), zero) << size;
    }
  }
}

// A search for zero bytes in a word of the processor may mistake a one above a zero for another.
TEST(ShortText, HoldsOnes) {
  const std::string ones(20, '\x01');
  EXPECT_EQ(lengthUpToZero(ones.data(), ones.size()), ones.size());
  const std::string zero("\1\1\1\0\1\1\1\1\1", 9);
  EXPECT_EQ(lengthUpToZero(zero.data(), zero.size()), 3U);
}

}  // namespace
}  // namespace consolidator
