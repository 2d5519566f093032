#include "model/HardwareVariable.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace consolidator {
namespace {

HardwareVariable variableWithLocations() {
  HardwareVariable variable("reg");
  variable.logicLocations = {{1, 2}, {0, 0}, {0xFFFFFFFFU, 7}};
  return variable;
}

std::string bytesWithLocations() {
  return hexBytes(
      "03 00 00 00 72 65 67  03 00 00 00"
      "01 00 00 00 02 00 00 00  00 00 00 00 00 00 00 00  FF FF FF FF 07 00 00 00");
}

TEST(HardwareVariable, IsEmptyAndIncompleteWhenNew) {
  const HardwareVariable variable;
  EXPECT_EQ(variable.rtlName, "");
  EXPECT_TRUE(variable.logicLocations.empty());
  EXPECT_FALSE(variable.valid);
}

TEST(HardwareVariable, IsCompleteWhenMadeByName) {
  const HardwareVariable variable("reg");
  EXPECT_EQ(variable.rtlName, "reg");
  EXPECT_TRUE(variable.logicLocations.empty());
  EXPECT_TRUE(variable.valid);
}

TEST(HardwareVariable, ComparesAllThatIsStoredButNotTheFlag) {
  const HardwareVariable variable = variableWithLocations();
  HardwareVariable other = variable;
  other.valid = false;
  EXPECT_EQ(variable, other);
  other.rtlName = "Reg";
  EXPECT_NE(variable, other);
  other = variable;
  other.logicLocations.pop_back();
  EXPECT_NE(variable, other);
}

TEST(HardwareVariable, IsWrittenAsNameAndLocations) {
  EXPECT_EQ(encode(variableWithLocations()), bytesWithLocations());
  EXPECT_EQ(encode(HardwareVariable()), hexBytes("00 00 00 00  00 00 00 00"));
}

TEST(HardwareVariable, IsReadAsNameAndLocations) {
  HardwareVariable variable;
  EXPECT_TRUE(decode(bytesWithLocations(), variable));
  EXPECT_EQ(variable, variableWithLocations());
  EXPECT_TRUE(variable.valid);
}

TEST(HardwareVariable, IsCompleteWithoutLocations) {
  HardwareVariable variable;
  EXPECT_TRUE(decode(hexBytes("01 00 00 00 72  00 00 00 00"), variable));
  EXPECT_EQ(variable, HardwareVariable("r"));
  EXPECT_TRUE(variable.valid);
}

TEST(HardwareVariable, KeepsWhatAShortReadGave) {
  const std::string bytes = bytesWithLocations();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    HardwareVariable variable;
    EXPECT_FALSE(decode(bytes.substr(0, size), variable)) << size;
    EXPECT_FALSE(variable.valid) << size;
    EXPECT_EQ(variable.rtlName, size < 7 ? "" : "reg") << size;
    const std::size_t locations = size < 11 ? 0 : (size - 11) / 8;
    EXPECT_EQ(variable.logicLocations.size(), locations) << size;
  }
}

TEST(HardwareVariable, FailsOnTheLargestCountAndKeepsTheWholeLocations) {
  HardwareVariable variable;
  EXPECT_FALSE(decode(hexBytes("01 00 00 00 72  FF FF FF FF  01 00 00 00 02 00 00 00"), variable));
  EXPECT_EQ(variable.logicLocations, (std::vector<LogicLocation>{{1, 2}}));
  EXPECT_FALSE(variable.valid);
}

}  // namespace
}  // namespace consolidator
