#include "lmx60/LmxException.h"

#include <gtest/gtest.h>

namespace lmx {
namespace {

TEST(LmxExceptionTest, TellsLineDescriptionAndDetail) {
  const c_lmx_exception failure(error_code::not_well_formed, 3, "mismatched tag");
  EXPECT_STREQ(failure.what(), "line 3: document not well-formed (mismatched tag)");
  EXPECT_EQ(failure.code(), error_code::not_well_formed);
  EXPECT_EQ(failure.line(), 3U);
}

TEST(LmxExceptionTest, LeavesOutAnEmptyDetail) {
  const c_lmx_exception failure(error_code::nested_too_deep, 1, "");
  EXPECT_STREQ(failure.what(), "line 1: elements nested too deep");
}

}  // namespace
}  // namespace lmx
