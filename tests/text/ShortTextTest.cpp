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
  EXPECT_EQ(place, '#');
}

}  // namespace
}  // namespace consolidator
