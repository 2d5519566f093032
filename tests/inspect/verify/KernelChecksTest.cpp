#include "inspect/verify/VerifyFixture.h"

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

std::uint64_t secondRecordOffset(const std::vector<KernelRecord>& kernels) {
  return offsetOfSection(plainSections(kernels), 3) + 4 + encode(kernels[0]).size();
}

TEST(KernelChecksTest, FindsKernelsOfTheSameName) {
  const std::vector<KernelRecord> kernels{plainKernel("a"), plainKernel("a")};
  EXPECT_TRUE(findsOnly(container(plainSections(kernels)), FindingCode::DuplicateKernel,
                        secondRecordOffset(kernels)));
  EXPECT_EQ(countsIn(container(plainSections({plainKernel("a"), plainKernel("A")}))), Counts());
}

TEST(KernelChecksTest, ComparesNamesAsTheToolReadsThem) {
  const std::vector<KernelRecord> kernels{plainKernel("a\0b"s), plainKernel("a\0c"s)};
  EXPECT_EQ(countsIn(container(plainSections(kernels))),
            (Counts{{"duplicate-kernel", 1}, {"zero-byte-in-text", 2}, {"json-not-strict", 1}}));
}

TEST(KernelChecksTest, FindsKernelWithoutName) {
  EXPECT_TRUE(findsOnlyInKernel(plainKernel(""), FindingCode::UnnamedKernel, 0));
}

TEST(KernelChecksTest, FindsKernelOfUnknownType) {
  KernelRecord kernel = plainKernel();
  for (const std::uint32_t type : {0U, 1U, 2U, 3U, 4U}) {
    kernel.type = static_cast<KernelType>(type);
    EXPECT_EQ(countsIn(container(plainSections({kernel}))), Counts()) << type;
  }
  for (const std::uint32_t type : {5U, 0xFFFFFFFFU}) {
    kernel.type = static_cast<KernelType>(type);
    EXPECT_TRUE(findsOnlyInKernel(kernel, FindingCode::UnknownType, 0)) << type;
  }
}

TEST(KernelChecksTest, FindsKernelWithoutInstance) {
  KernelRecord kernel = plainKernel();
  kernel.instancePaths.clear();
  EXPECT_TRUE(findsOnlyInKernel(kernel, FindingCode::NoInstance, 0));
}

TEST(KernelChecksTest, FindsUnlocatedBits) {
  KernelRecord kernel = plainKernel();
  kernel.setLogicLocation("/t/k_1/i_r", 1, 0, 5);
  kernel.setLogicLocation("/t/k_1/i_r", 3, 5, 0);
  const std::vector<Section> sections = plainSections({kernel});
  const std::string file = container(sections);
  // The locations end 4 + ... bytes before the end: conditions and block RAMs follow them.
  const std::size_t rest = 4 + encode(kernel.breakableConditions[0]).size() + 4 + 4 + "ram"s.size();
  EXPECT_TRUE(findsOnly(file, FindingCode::UnlocatedBit, file.size() - rest - 2 * 8));
  EXPECT_EQ(findingsIn(file).list(FindingCode::UnlocatedBit)[0].number, 2);
}

TEST(KernelChecksTest, FindsUnlocatedBitsOfInstances) {
  KernelRecord kernel = plainKernel();
  VariableRecord variable("v", "v_r", "int");
  variable.instanceBits = {{{1, 2}}, {{0, 0}}};
  kernel.arguments = VariableList({variable});
  kernel.variables = VariableList({variable});
  EXPECT_EQ(findingsIn(container(plainSections({kernel}))).count(FindingCode::UnlocatedBit), 2U);
}

TEST(KernelChecksTest, FindsThatNothingIsThere) {
  const std::string file = container({{SectionKind::Json, emptyJson()}});
  EXPECT_EQ(countsIn(file), (Counts{{"no-kernels", 1}, {"no-dwarf", 1}, {"no-location", 1}}));
  KernelRecord kernel = plainKernel();
  kernel.hardwareVariables.clear();
  EXPECT_TRUE(findsOnly(container(plainSections({kernel})), FindingCode::NoLocation, std::nullopt));
  std::vector<Section> sections = plainSections();
  sections.erase(sections.begin() + 1);
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::NoDwarf, std::nullopt));
}

TEST(KernelChecksTest, TakesInstanceBitsForLocations) {
  KernelRecord kernel = plainKernel();
  kernel.hardwareVariables.clear();
  VariableRecord variable("v", "v_r", "int");
  variable.instanceBits = {{{1, 2}}};
  kernel.variables = VariableList({variable});
  EXPECT_EQ(findingsIn(container(plainSections({kernel}))).count(FindingCode::NoLocation), 0U);
}

}  // namespace
}  // namespace consolidator::inspect
