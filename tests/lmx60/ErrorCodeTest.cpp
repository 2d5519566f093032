#include "lmx60/ErrorCode.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace lmx {
namespace {

TEST(ErrorCodeTest, EveryCodeHasADescriptionOfItsOwn) {
  constexpr int last = static_cast<int>(error_code::not_written);
  std::set<std::string_view> descriptions;
  for (int code = 0; code <= last; ++code) {
    const std::string_view text = get_error_description(static_cast<error_code>(code));
    EXPECT_NE(text, "unknown error") << code;
    descriptions.insert(text);
  }
  EXPECT_EQ(descriptions.size(), last + 1U);
}

TEST(ErrorCodeTest, OtherNumbersAreUnknownErrors) {
  EXPECT_EQ(get_error_description(static_cast<error_code>(1000)), "unknown error");
  EXPECT_EQ(get_error_description(static_cast<error_code>(-1)), "unknown error");
}

}  // namespace
}  // namespace lmx
