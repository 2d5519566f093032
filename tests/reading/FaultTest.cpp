#include "consolidated/Fault.h"

#include <gtest/gtest.h>

namespace consolidated {
namespace {

TEST(FaultTest, HasASentenceAndAName) {
  const Fault fault{FaultCode::ShortTable, {}, 16, 0};
  EXPECT_STREQ(fault.sentence(), "The section table claims more entries than the file holds.");
  EXPECT_STREQ(fault.name(), "short-table");
}

}  // namespace
}  // namespace consolidated
