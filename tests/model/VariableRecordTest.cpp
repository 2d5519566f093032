#include "model/VariableRecord.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {
namespace {

VariableRecord variableWithBits() {
  VariableRecord variable("ab", "c", "int");
  variable.instanceBits = {{{1, 2}, {3, 4}}, {}};
  return variable;
}

std::string bytesWithBits() {
  return hexBytes(
      "02 00 00 00 61 62  01 00 00 00 63  03 00 00 00 69 6E 74"  // the texts
      "02 00 00 00"                                              // two instances
      "02 00 00 00  01 00 00 00 02 00 00 00  03 00 00 00 04 00 00 00"
      "00 00 00 00");
}

TEST(VariableRecord, IsEmptyAndIncompleteWhenNew) {
  const VariableRecord variable;
  EXPECT_EQ(variable.name, "");
  EXPECT_EQ(variable.second, "");
  EXPECT_EQ(variable.cType, "");
  EXPECT_TRUE(variable.instanceBits.empty());
  EXPECT_FALSE(variable.valid);
}

TEST(VariableRecord, IsCompleteWhenMadeOfThreeTexts) {
  const VariableRecord variable("name", "second", "type");
  EXPECT_EQ(variable.name, "name");
  EXPECT_EQ(variable.second, "second");
  EXPECT_EQ(variable.cType, "type");
  EXPECT_TRUE(variable.instanceBits.empty());
  EXPECT_TRUE(variable.valid);
}

// The coarse rule has to stay: consumers rely on it.
TEST(VariableRecord, DerivesItsWidthFromTheTypeCoarsely) {
  const std::pair<std::string_view, unsigned> widths[] = {
      {"char*", 64},    {"int*", 64},         {"*", 64},     {"char *p[2]", 64},
      {"char", 8},      {"unsigned char", 8}, {"uchar4", 8}, {"signed char", 8},
      {"double", 32},   {"float", 32},        {"", 32},      {"long long", 32},
      {"CHAR", 32},     {"Char", 32},         {"cha r", 32}, {"int", 32},
      {"charstar*", 64}};
  for (const auto& [type, width] : widths) {
    EXPECT_EQ(VariableRecord("v", "v", type).bitWidth(), width) << type;
    EXPECT_EQ(KernelRecord::bitWidth(VariableRecord("v", "v", type)), width) << type;
  }
}

TEST(VariableRecord, ComparesAllThatIsStoredButNotTheFlag) {
  const VariableRecord variable = variableWithBits();
  VariableRecord other = variable;
  other.valid = false;
  EXPECT_EQ(variable, other);
  other.name = "x";
  EXPECT_NE(variable, other);
  other = variable;
  other.second = "x";
  EXPECT_NE(variable, other);
  other = variable;
  other.cType = "x";
  EXPECT_NE(variable, other);
  other = variable;
  other.instanceBits[0][1].second = 5;
  EXPECT_NE(variable, other);
}

TEST(VariableRecord, IsWrittenAsTextsInstancesAndBits) {
  EXPECT_EQ(encode(variableWithBits()), bytesWithBits());
  EXPECT_EQ(encode(VariableRecord()), hexBytes("00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"));
}

TEST(VariableRecord, IsReadAsTextsInstancesAndBits) {
  VariableRecord variable;
  EXPECT_TRUE(decode(bytesWithBits(), variable));
  EXPECT_EQ(variable, variableWithBits());
  EXPECT_TRUE(variable.valid);
}

TEST(VariableRecord, IsCompleteWithoutInstances) {
  VariableRecord variable;
  EXPECT_TRUE(decode(hexBytes("01 00 00 00 61  00 00 00 00  00 00 00 00  00 00 00 00"), variable));
  EXPECT_EQ(variable, VariableRecord("a", "", ""));
  EXPECT_TRUE(variable.valid);
}

TEST(VariableRecord, IsIncompleteWhereverItIsCut) {
  const std::string bytes = bytesWithBits();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    VariableRecord variable;
    EXPECT_FALSE(decode(bytes.substr(0, size), variable)) << size;
    EXPECT_FALSE(variable.valid) << size;
  }
}

TEST(VariableRecord, KeepsWhatAShortReadGave) {
  VariableRecord variable;
  EXPECT_FALSE(decode(bytesWithBits().substr(0, 10), variable));
  EXPECT_EQ(variable.name, "ab");
  EXPECT_EQ(variable.second, "");

  VariableRecord withBits;
  EXPECT_FALSE(decode(bytesWithBits().substr(0, 40), withBits));
  EXPECT_EQ(withBits.cType, "int");
  EXPECT_EQ(withBits.instanceBits, (std::vector<InstanceBits>{{{1, 2}}}));

  // The second instance is there without its number of bits.
  VariableRecord withInstances;
  EXPECT_FALSE(decode(bytesWithBits().substr(0, bytesWithBits().size() - 1), withInstances));
  EXPECT_EQ(withInstances.instanceBits, variableWithBits().instanceBits);
}

TEST(VariableRecord, FailsOnTheLargestInstanceCount) {
  VariableRecord variable;
  EXPECT_FALSE(decode(hexBytes("01 00 00 00 61  00 00 00 00  00 00 00 00  FF FF FF FF 00 00 00 00"),
                      variable));
  EXPECT_EQ(variable.name, "a");
  EXPECT_EQ(variable.instanceBits, (std::vector<InstanceBits>{{}, {}}));
}

}  // namespace
}  // namespace consolidator
