// How the bytes of a file are had: mapped, read, or from a pipe.

#include "consolidated/File.h"
#include "support/Bytes.h"
#include "support/InterruptedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace consolidated {
namespace {

using consolidator::container;
using consolidator::kernelRecord;
using consolidator::PiecewisePipe;
using consolidator::SectionKind;
using consolidator::text;
using consolidator::u32;

class FileOpeningTest : public testing::Test {
 protected:
  static std::string nameOfFirst(const File& file) {
    const auto kernels = file.kernels();
    const auto first = kernels.begin();
    return first == kernels.end() ? "" : std::string(first->name().view());
  }

  // A file that zeros fill up to some size.
  std::string pathOfLong(off_t size) const {
    const std::string path = folder_.write("long", bytes_);
    EXPECT_EQ(truncate(path.c_str(), size), 0);
    return path;
  }

  const std::string bytes_ =
      container({{SectionKind::KernelRecords, u32(1) + kernelRecord("vadd", 0)}});
  const consolidator::TemporaryFolder folder_;
  const std::string path_ = folder_.write("file", bytes_);
};

TEST_F(FileOpeningTest, MapsAFile) {
  const Result<File> file = File::open(path_.c_str());
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes(), bytes_);
  EXPECT_EQ(nameOfFirst(*file), "vadd");
}

TEST_F(FileOpeningTest, ReadsAFile) {
  const Result<File> file = File::open(path_.c_str(), Access::Read);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes(), bytes_);
}

TEST_F(FileOpeningTest, TellsWhyAFileCannotBeOpened) {
  const Result<File> missing = File::open(folder_.path("missing").c_str());
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.fault().code, FaultCode::CannotOpen);
  EXPECT_EQ(missing.fault().offset, 0U);
  EXPECT_EQ(missing.fault().systemError, ENOENT);
  const Result<File> folder = File::open(folder_.path("").c_str());
  ASSERT_FALSE(folder);
  EXPECT_EQ(folder.fault().code, FaultCode::CannotRead);
  EXPECT_EQ(folder.fault().systemError, EISDIR);
}

TEST_F(FileOpeningTest, RefusesWhatIsNoConsolidatedFile) {
  for (const Access access : {Access::Mapped, Access::Read}) {
    const auto faultOf = [&](std::string_view bytes) {
      return File::open(folder_.write("other", bytes).c_str(), access).fault().code;
    };
    EXPECT_EQ(faultOf(""), FaultCode::ShortHeader);
    EXPECT_EQ(faultOf("\xD4\xDA\xEF\xBE"), FaultCode::ShortHeader);
    EXPECT_EQ(faultOf("no consolidated file at all"), FaultCode::WrongMagic);
  }
}

TEST_F(FileOpeningTest, ReadsAPipeInPiecesOfAnySize) {
  for (const std::size_t size : {1U, 7U, 4096U}) {
    const PiecewisePipe pipe(consolidator::pieces(bytes_, size));
    const Result<File> file = File::open(pipe.path().c_str());
    ASSERT_TRUE(file);
    EXPECT_EQ(file->bytes(), bytes_);
  }
}

TEST_F(FileOpeningTest, ReadsAPipeOnAfterASignal) {
  const consolidator::InterruptedPipe pipe(bytes_);
  const Result<File> file = File::open(pipe.path().c_str());
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes(), bytes_);
}

TEST_F(FileOpeningTest, ReadsAPipeThatIsLongerThanWhatItTakesAtATime) {
  const std::string dwarf(3'000'000, 'x');
  const std::string bytes = container({{SectionKind::Dwarf, dwarf}});
  const std::string pipe = folder_.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::thread writer([&] { consolidator::writeFile(pipe, bytes); });
  const Result<File> file = File::open(pipe.c_str());
  writer.join();
  ASSERT_TRUE(file);
  EXPECT_EQ(file->dwarf()->stored(), dwarf);
}

// Otherwise the reading of a device would never end.
TEST_F(FileOpeningTest, GivesUpOnWhatBeginsWronglyAtOnce) {
  EXPECT_EQ(File::open("/dev/zero").fault().code, FaultCode::WrongMagic);
  EXPECT_EQ(File::open("/dev/null").fault().code, FaultCode::ShortHeader);
}

TEST_F(FileOpeningTest, TakesADescriptorFromItsPositionOn) {
  const std::string path = folder_.write("behind", "four" + bytes_);
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_EQ(File::fromDescriptor(descriptor).fault().code, FaultCode::WrongMagic);
  ASSERT_EQ(lseek(descriptor, 4, SEEK_SET), 4);
  const Result<File> file = File::fromDescriptor(descriptor);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes(), bytes_);
  EXPECT_EQ(close(descriptor), 0);
}

TEST_F(FileOpeningTest, WaitsForADescriptorThatDoesNotBlock) {
  int ends[2];  // NOLINT(*-avoid-c-arrays): what the system takes
  ASSERT_EQ(pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
  std::thread writer([&] {
    usleep(50'000);
    EXPECT_EQ(write(ends[1], bytes_.data(), bytes_.size()), ssize_t(bytes_.size()));
    close(ends[1]);
  });
  const Result<File> file = File::fromDescriptor(ends[0]);
  writer.join();
  close(ends[0]);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->bytes(), bytes_);
}

TEST_F(FileOpeningTest, TellsWhyADescriptorCannotBeRead) {
  const Result<File> file = File::fromDescriptor(-1);
  ASSERT_FALSE(file);
  EXPECT_EQ(file.fault().code, FaultCode::CannotRead);
  EXPECT_EQ(file.fault().offset, 0U);
  EXPECT_EQ(file.fault().systemError, EBADF);
}

TEST_F(FileOpeningTest, BytesThatWereReadDoNotChangeWithTheFile) {
  const Result<File> file = File::open(path_.c_str(), Access::Read);
  ASSERT_TRUE(file);
  ASSERT_EQ(truncate(path_.c_str(), 0), 0);
  EXPECT_EQ(file->bytes(), bytes_);
  EXPECT_EQ(nameOfFirst(*file), "vadd");
}

// The address space that this process takes up, in bytes.
std::size_t addressSpace() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST_F(FileOpeningTest, MemoryOfWhatWasReadIsGivenBack) {
  constexpr std::size_t size = std::size_t{64} << 20U;
  const std::string path = pathOfLong(size);
  const std::size_t before = addressSpace();
  for (const Access access : {Access::Mapped, Access::Read}) {
    EXPECT_TRUE(File::open(path.c_str(), access));
    EXPECT_LT(addressSpace(), before + size / 2);
  }
}

TEST_F(FileOpeningTest, TellsThatThereIsNoMemoryForTheBytes) {
  const std::string path = pathOfLong(off_t{64} << 20U);
  const auto openInTightMemory = [&] {
    const rlim_t most = addressSpace() + (std::size_t{8} << 20U);
    const rlimit limit{most, most};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
    const Fault fault = File::open(path.c_str(), Access::Read).fault();
    std::_Exit(fault.code == FaultCode::OutOfMemory && !fault.section && fault.offset == 0 &&
                       fault.systemError == 0
                   ? 0
                   : 1);
  };
  EXPECT_EXIT(openInTightMemory(), testing::ExitedWithCode(0), "");
}

// As a program does that must live on when a mapped file shrinks.
void mapZeros(int, siginfo_t* info, void*) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  char* const place = static_cast<char*>(info->si_addr);
  mmap(place - reinterpret_cast<std::uintptr_t>(place) % page, page, PROT_READ,
       MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
}

TEST_F(FileOpeningTest, AMappedFileMayShrinkUnderAHandlerThatMapsZeros) {
  constexpr std::uint32_t count = 10'000;
  std::string records = u32(count);
  for (std::uint32_t i = 0; i < count; ++i) records += kernelRecord("kernel", 0, {"/top/kernel"});
  const std::string path =
      folder_.write("long", container({{SectionKind::KernelRecords, records}}));

  struct sigaction action {};

  struct sigaction before {};

  action.sa_sigaction = mapZeros;
  action.sa_flags = SA_SIGINFO;
  ASSERT_EQ(sigaction(SIGBUS, &action, &before), 0);
  const Result<File> file = File::open(path.c_str());
  ASSERT_TRUE(file);
  std::uint32_t seen = 0;
  for (const Kernel& kernel : file->kernels()) {
    if (++seen == 5000) {
      EXPECT_EQ(truncate(path.c_str(), 4096), 0);
    }
    for (const Text& instance : kernel.instancePaths()) EXPECT_LE(instance.view().size(), 11U);
  }
  EXPECT_GE(seen, 5000U);
  EXPECT_LE(seen, count);
  ASSERT_EQ(sigaction(SIGBUS, &before, nullptr), 0);
}

TEST_F(FileOpeningTest, SeveralThreadsMayReadOneFile) {
  std::string records = u32(1000);
  for (int i = 0; i < 1000; ++i) records += kernelRecord("k" + std::to_string(i), 0);
  const std::string bytes = container({{SectionKind::KernelRecords, records}});
  const Result<File> file = File::fromBytes(bytes);
  ASSERT_TRUE(file);
  std::vector<std::thread> readers;
  for (int i = 0; i < 4; ++i) {
    readers.emplace_back([&] {
      EXPECT_TRUE(file->complete());
      EXPECT_TRUE(file->findKernel("k999"));
    });
  }
  for (std::thread& reader : readers) reader.join();
}

}  // namespace
}  // namespace consolidated
