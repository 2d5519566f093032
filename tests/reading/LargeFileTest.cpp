// Files of more than 4 GiB, nearly all of which are holes.

#include "ReadingFixture.h"
#include "consolidated/File.h"
#include "support/AllocationGauge.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>
#include <string>

namespace consolidated {
namespace {

using consolidator::SectionKind;

constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30U;

class LargeFileTest : public testing::Test {
 protected:
  LargeFileTest() : descriptor_(memfd_create("LargeFileTest", MFD_CLOEXEC)) {}

  LargeFileTest(const LargeFileTest&) = delete;
  LargeFileTest& operator=(const LargeFileTest&) = delete;

  ~LargeFileTest() override { close(descriptor_); }

  void put(std::uint64_t offset, const std::string& bytes) const {
    ASSERT_EQ(pwrite(descriptor_, bytes.data(), bytes.size(), off_t(offset)),
              ssize_t(bytes.size()));
  }

  Result<File> openWithSize(std::uint64_t size) const {
    EXPECT_EQ(ftruncate(descriptor_, off_t(size)), 0);
    return File::fromDescriptor(descriptor_);
  }

 private:
  int descriptor_;
};

TEST_F(LargeFileTest, IsOpenedWithoutMemory) {
  put(0, header(0));
  const consolidator::AllocationGauge gauge;
  const Result<File> file = openWithSize(64 * gibibyte);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes().size(), 64 * gibibyte);
  EXPECT_TRUE(file->complete());
  EXPECT_LE(gauge.largest(), 1024U);
}

TEST_F(LargeFileTest, GreatestSizeIsTheOneBelow) {
  put(0, header(1) + entry(SectionKind::Dwarf, 40, 0xFFFFFFFF));
  const std::uint64_t end = 40 + std::uint64_t{0xFFFFFFFE};
  EXPECT_EQ(openWithSize(end)->dwarf()->stored().size(), 0xFFFFFFFEU);
  EXPECT_TRUE(openWithSize(end)->complete());
  EXPECT_FALSE(openWithSize(end - 1)->dwarf());
  EXPECT_EQ(describe(openWithSize(end - 1)->fault()), "section-outside section 0 at 16");
}

TEST_F(LargeFileTest, OffsetsOf2GiBAreNegative) {
  put(0, header(1) + entry(SectionKind::ProjectName, 2 * gibibyte - 1, 4));
  put(2 * gibibyte - 1, "demo");
  EXPECT_EQ(openWithSize(5 * gibibyte)->project()->view(), "demo");
  EXPECT_EQ(openWithSize(5 * gibibyte)->project()->offset(), 2 * gibibyte - 1);
  put(16, entry(SectionKind::ProjectName, 2 * gibibyte, 4));
  EXPECT_FALSE(openWithSize(5 * gibibyte)->project());
}

TEST_F(LargeFileTest, RecordsMayReachBeyond4GiB) {
  put(0, header(1) + entry(SectionKind::KernelRecords, 40, 4) + u32(2) + u32(0xFFFFFFFF));
  put(48 + std::uint64_t{0xFFFFFFFE},
      kernelRecord("", 4, {"/t/k"}).substr(4) + kernelRecord("second", 1, {"/t/k2"}));
  const Result<File> file = openWithSize(9 * gibibyte);
  ASSERT_TRUE(file);
  auto kernel = file->kernels().begin();
  EXPECT_EQ(kernel->name().stored().size(), 0xFFFFFFFEU);
  EXPECT_EQ(kernel->name().view(), "");
  EXPECT_EQ(kernel->instancePaths().begin()->view(), "/t/k");
  EXPECT_EQ((++kernel)->name().view(), "second");
  EXPECT_EQ(kernel->offset(), 48 + std::uint64_t{0xFFFFFFFE} + 36);
  EXPECT_EQ(kernel->instancePaths().begin()->offset(), kernel->offset() + 18);
}

// All counts are 0 in a hole: kernels of 32 bytes that say nothing.
TEST_F(LargeFileTest, HolesAreReadInLinearTime) {
  constexpr std::uint32_t kernels = 2'000'000;
  put(0, header(1) + entry(SectionKind::KernelRecords, 40, 4) + u32(0xFFFFFFFF));
  const Result<File> file = openWithSize(44 + std::uint64_t{32} * kernels);
  std::uint32_t count = 0;
  for (const Kernel& kernel : file->kernels()) count += kernel.name().view().empty() ? 1U : 0U;
  EXPECT_EQ(count, kernels);
  EXPECT_EQ(describe(file->fault()), "records-short section 0 at 40");
}

TEST_F(LargeFileTest, BitsAreNotLookedAt) {
  constexpr std::uint32_t locations = 0x1FFFFFFF;
  const std::string before = u32(1) + text("k") + u32(0) + u32(4) + u32(0) + u32(0) + u32(1) +
                             text("/t/k/r") + u32(locations);
  put(0, header(1) + entry(SectionKind::KernelRecords, 40, 4) + before);
  const std::uint64_t end = 40 + before.size() + std::uint64_t{8} * locations + 8;
  const Result<File> file = openWithSize(end);
  ASSERT_TRUE(file);
  const std::clock_t start = std::clock();
  EXPECT_TRUE(file->findKernel("k"));
  EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 10);
  const auto hardware = *file->findKernel("k")->hardwareVariables().begin();
  EXPECT_EQ(hardware.logicLocations().size(), locations);
  EXPECT_TRUE(hardware.logicLocations()[locations - 1] == Location());
  EXPECT_FALSE(openWithSize(end - 1)->findKernel("k"));
}

}  // namespace
}  // namespace consolidated
