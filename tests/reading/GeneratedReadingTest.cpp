// Files that no hand would write: sections of any kind in any order, overlapping or apart, with
// records made at random, and damage in a few places. Tool and library must find the same in them.

#include "model/RandomKernels.h"
#include "support/BothReadings.h"
#include "support/Bytes.h"
#include "support/PlainRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace consolidator {
namespace {

class RandomContainer {
 public:
  explicit RandomContainer(unsigned seed) : random_(seed) {}

  std::string next() {
    const std::size_t sections = random_.below(7);
    const std::size_t start = 16 + 24 * sections;
    std::string table;
    std::string payload;
    for (std::size_t i = 0; i < sections; ++i) {
      const auto kind = static_cast<std::uint32_t>(random_.below(random_.below(8) == 0 ? 5 : 4));
      const std::string bytes = payloadOf(SectionKind{kind});
      const bool isShared = !payload.empty() && random_.below(6) == 0;
      const std::size_t offset =
          start + (isShared ? random_.below(payload.size()) : payload.size());
      if (!isShared) payload += bytes;
      table += entry(kind, offset + highPart(), static_cast<std::uint32_t>(bytes.size()));
    }
    std::string file = header(static_cast<std::uint32_t>(sections)) + table + payload;
    for (std::size_t damages = random_.below(4); damages > 0; --damages) damage(file);
    return file;
  }

 private:
  // Bits of an offset that do not count.
  std::uint64_t highPart() {
    return random_.below(10) == 0 ? std::uint64_t{random_.below(9)} << 32U : 0;
  }

  std::string payloadOf(SectionKind kind) {
    if (kind != SectionKind::KernelRecords) {
      return std::string(random_.below(9), "ab\0"[random_.below(3)]);
    }
    const std::size_t kernels = random_.below(4);
    std::string bytes = u32(static_cast<std::uint32_t>(kernels));
    for (std::size_t i = 0; i < kernels; ++i) bytes += PlainRecordWriter::kernel(random_.next(3));
    return bytes;
  }

  void damage(std::string& file) {
    const std::size_t at = random_.below(file.size() + 1);
    const std::size_t rest = file.size() - at;
    if (random_.below(5) == 0) {
      file.resize(at);
    } else if (rest < 4) {
      file += static_cast<char>(random_.below(256));
    } else if (random_.below(2) == 0) {
      file[at] = static_cast<char>(random_.below(256));
    } else {
      const std::array<std::size_t, 6> extremes{0, 1, rest, rest + 1, 0x7FFFFFFF, 0xFFFFFFFF};
      file.replace(at, 4, u32(static_cast<std::uint32_t>(extremes[random_.below(6)])));
    }
  }

  RandomKernels random_;
};

TEST(GeneratedReadingTest, IsTheSameOfEveryFile) {
  constexpr int files = 3000;
  RandomContainer containers(20);
  BothReadings readings;
  int complete = 0;
  for (int i = 0; i < files && !testing::Test::HasFailure(); ++i) {
    SCOPED_TRACE(testing::Message() << "file " << i);
    const std::string bytes = containers.next();
    EXPECT_EQ(readings.difference(bytes), "");
    const auto file = consolidated::File::fromBytes(bytes);
    complete += file && file->complete() ? 1 : 0;
  }
  EXPECT_GT(complete, files / 4);
  EXPECT_LT(complete, 3 * files / 4);
}

}  // namespace
}  // namespace consolidator
