#include "inspect/output/Numbered.h"

#include <gtest/gtest.h>

namespace consolidator::inspect {
namespace {

TEST(NumberedTest, NamesOneThingInTheSingular) {
  EXPECT_EQ(numbered(0, "bit"), "0 bits");
  EXPECT_EQ(numbered(1, "bit"), "1 bit");
  EXPECT_EQ(numbered(12, "bit"), "12 bits");
}

}  // namespace
}  // namespace consolidator::inspect
