#include "ReadingFixture.h"
#include "consolidated/Kernel.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace consolidated {
namespace {

static_assert(std::forward_iterator<List<Text>::Iterator>);
static_assert(std::forward_iterator<List<Variable>::Iterator>);

class KernelTest : public ReadingFixture {
 protected:
  Kernel readKernel(const std::string& record) {
    return *readRecords(u32(1) + record).kernels().begin();
  }

  // The record of a kernel that has nothing but arguments of these types.
  static std::string withArguments(const std::vector<std::string>& types) {
    std::string record = text("k") + u32(0) + u32(4) + u32(std::uint32_t(types.size()));
    for (const std::string& type : types) record += text("a") + text("r") + text(type) + u32(0);
    return record + u32(0) + u32(0) + u32(0) + u32(0);
  }
};

TEST_F(KernelTest, HasTextsAndNumbersAsStored) {
  const Kernel kernel = readKernel(kernelRecord("vadd", 7, {"/t/vadd_1", "/t/vadd_2"}));
  EXPECT_EQ(kernel.name().view(), "vadd");
  EXPECT_EQ(kernel.name().offset(), recordsStart + 8);
  EXPECT_EQ(static_cast<std::uint32_t>(kernel.type()), 7U);
  EXPECT_EQ(kernel.offset(), recordsStart + 4);
  EXPECT_EQ(kernel.endOffset(), recordsStart + 4 + 8 + 4 + 13 + 13 + 4 + 20);
  EXPECT_EQ(kernel.section(), 0U);

  const List<Text> paths = kernel.instancePaths();
  EXPECT_EQ(paths.size(), 2U);
  EXPECT_FALSE(paths.empty());
  EXPECT_EQ(paths.offset(), recordsStart + 16);
  auto path = paths.begin();
  EXPECT_EQ(path->view(), "/t/vadd_1");
  EXPECT_EQ(path->offset(), recordsStart + 20);
  EXPECT_EQ((*path++).view(), "/t/vadd_1");
  EXPECT_EQ((*path).view(), "/t/vadd_2");
  EXPECT_TRUE(path != paths.end());
  EXPECT_TRUE(++path == paths.end());
  EXPECT_TRUE(kernel.brams().empty());
}

TEST_F(KernelTest, HasVariablesWithTheBitsOfEachInstance) {
  const Kernel kernel =
      readKernel(text("k") + u32(0) + u32(4) + u32(0) + u32(2) + text("i") + text("i_r") +
                 text("int") + u32(2) + u32(2) + u32(1) + u32(2) + u32(3) + u32(4) + u32(0) +
                 text("j") + text("j_r") + text("char") + u32(0) + u32(0) + u32(0) + u32(0));
  EXPECT_TRUE(kernel.arguments().empty());
  auto variable = kernel.variables().begin();
  EXPECT_EQ(variable->offset(), recordsStart + 4 + 21);
  EXPECT_EQ(variable->name().view(), "i");
  EXPECT_EQ(variable->second().view(), "i_r");
  EXPECT_EQ(variable->cType().view(), "int");
  const List<Locations> instances = variable->instanceBits();
  ASSERT_EQ(instances.size(), 2U);
  auto bits = instances.begin();
  ASSERT_EQ(bits->size(), 2U);
  EXPECT_TRUE(((*bits)[1] == Location{3, 4}));
  EXPECT_EQ(bits->offset(), variable->offset() + 5 + 7 + 7 + 4 + 4);
  EXPECT_TRUE((++bits)->empty());
  EXPECT_EQ((++variable)->name().view(), "j");
  EXPECT_TRUE(variable->instanceBits().empty());
  EXPECT_TRUE(++variable == kernel.variables().end());
}

TEST_F(KernelTest, HasHardwareVariables) {
  const Kernel kernel = readKernel(text("k") + u32(0) + u32(4) + u32(0) + u32(0) + u32(1) +
                                   text("/t/k/i_r") + u32(1) + u32(5) + u32(6) + u32(0) + u32(0));
  const auto variable = *kernel.hardwareVariables().begin();
  EXPECT_EQ(variable.rtlName().view(), "/t/k/i_r");
  EXPECT_EQ(variable.registerName(), "i_r");
  ASSERT_EQ(variable.logicLocations().size(), 1U);
  EXPECT_TRUE((variable.logicLocations()[0] == Location{5, 6}));
  EXPECT_EQ(variable.offset(), recordsStart + 4 + 5 + 16 + 4);
}

TEST_F(KernelTest, HasConditionsOfWhichSourceLinesHaveAPlace) {
  const Kernel kernel =
      readKernel(text("k") + u32(0) + u32(4) + u32(0) + u32(0) + u32(0) + u32(2) + u32(2) +
                 text("== s 2") + u32(7) + text("k.c") + u32(9) + text("x") + u32(1) + text("ram"));
  auto condition = kernel.breakableConditions().begin();
  EXPECT_EQ(condition->kind(), ConditionKind::SourceLine);
  EXPECT_EQ(condition->condition().view(), "== s 2");
  EXPECT_EQ(condition->line(), 7U);
  EXPECT_EQ(condition->file().view(), "k.c");
  EXPECT_EQ(condition->offset(), recordsStart + 4 + 5 + 20 + 4);
  ++condition;
  EXPECT_EQ(static_cast<std::uint32_t>(condition->kind()), 9U);
  EXPECT_EQ(condition->condition().view(), "x");
  EXPECT_EQ(condition->line(), 0U);
  EXPECT_EQ(condition->file().view(), "");
  EXPECT_EQ(condition->file().offset(), 0U);
  EXPECT_EQ(kernel.brams().begin()->view(), "ram");
}

TEST_F(KernelTest, TypesOfOtherNumbersAreUnknown) {
  EXPECT_EQ(nameOf(KernelType::OpenCL), "OpenCL");
  EXPECT_EQ(nameOf(KernelType::C), "C");
  EXPECT_EQ(nameOf(KernelType::RTL), "RTL");
  EXPECT_EQ(nameOf(KernelType::Unknown), "Unknown");
  EXPECT_EQ(nameOf(KernelType::HLS), "HLS");
  EXPECT_EQ(nameOf(KernelType{5}), "Unknown");
}

TEST_F(KernelTest, WidthFollowsFromTheTextOfTheType) {
  const auto widthOf = [&](const std::string& type) {
    return readKernel(withArguments({type})).arguments().begin()->bitWidth();
  };
  EXPECT_EQ(widthOf("char*"), 64U);
  EXPECT_EQ(widthOf("signed char"), 8U);
  EXPECT_EQ(widthOf("double"), 32U);
  EXPECT_EQ(widthOf(""), 32U);
  EXPECT_EQ(widthOf(std::string("int\0*", 5)), 32U);
}

TEST_F(KernelTest, SuffixFollowsFromTheTypesOfAllArguments) {
  const auto suffixOf = [&](const std::vector<std::string>& types) {
    return std::string(readKernel(withArguments(types)).instanceSuffix());
  };
  EXPECT_EQ(suffixOf({}), "/inst");
  EXPECT_EQ(suffixOf({"int", "char*"}), "/inst");
  EXPECT_EQ(suffixOf({"int", "const float*"}), "/U0");
  EXPECT_EQ(suffixOf({"double", "int"}), "/U0");
  EXPECT_EQ(suffixOf({std::string("int\0float", 9)}), "/inst");
}

TEST_F(KernelTest, SuffixDoesNotFollowFromVariables) {
  const Kernel kernel = readKernel(text("k") + u32(0) + u32(4) + u32(0) + u32(1) + text("i") +
                                   text("i_r") + text("float") + u32(0) + u32(0) + u32(0) + u32(0));
  EXPECT_EQ(kernel.instanceSuffix(), "/inst");
}

TEST_F(KernelTest, PathsTakeTheSuffix) {
  using namespace std::string_view_literals;
  EXPECT_EQ(suffixedPath(Text("/t/k\0x"sv, 0), "/U0"), "/t/k/U0");
}

}  // namespace
}  // namespace consolidated
