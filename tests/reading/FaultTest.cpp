#include "consolidated/Fault.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

namespace consolidated {
namespace {

TEST(FaultTest, HasASentenceAndAName) {
  const Fault fault{FaultCode::ShortTable, {}, 16, 0};
  EXPECT_STREQ(fault.sentence(), "The section table claims more entries than the file holds.");
  EXPECT_STREQ(fault.name(), "short-table");
}

TEST(FaultTest, TellsAllCodesApart) {
  std::set<std::string> names;
  std::set<std::string> sentences;
  const auto last = static_cast<int>(FaultCode::RecordsShort);
  for (int code = 0; code <= last; ++code) {
    const Fault fault{static_cast<FaultCode>(code), {}, 0, 0};
    names.insert(fault.name());
    sentences.insert(fault.sentence());
  }
  EXPECT_EQ(names.size(), static_cast<std::size_t>(last) + 1);
  EXPECT_EQ(sentences.size(), static_cast<std::size_t>(last) + 1);
  EXPECT_EQ(names.count("unknown-fault"), 0U);
}

TEST(FaultTest, HasASentenceForACodeThatItDoesNotKnow) {
  const Fault fault{static_cast<FaultCode>(1000), {}, 0, 0};
  EXPECT_STREQ(fault.name(), "unknown-fault");
  EXPECT_STREQ(fault.sentence(), "The fault is not known.");
}

}  // namespace
}  // namespace consolidated
