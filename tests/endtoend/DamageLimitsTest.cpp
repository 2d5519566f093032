// What damaged files cost the executable: every run ends by itself, with little memory and time.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "support/InputSamples.h"
#include "support/Rounds.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

// Sanitizers make a run take ten times as long: then only some of the runs are made.
constexpr std::size_t every(std::size_t step) {
  return step * static_cast<std::size_t>(20 / std::max(1, rounds(20)));
}

class DamageLimitsTest : public ExecutableTest {
 protected:
  // Runs the executable and returns how that ended; too much memory or time is a failure.
  Outcome runWithinLimits(const Arguments& arguments) const {
    const ExecutableRun run = start(arguments);
    EXPECT_LT(run.processorTime(), 1.0);
    EXPECT_LE(run.peakMemory(), allowed_);
    return run.outcome();
  }

  const std::string container_ = containerSample();

 private:
  // What a run on nothing needs, the size of the files, which are below one KiB, and 32 MiB.
  static constexpr long someMebibytes = 32 * 1024 + 1;
  const long allowed_ = start({"-f", "none", "-h", "missing"}).peakMemory() + someMebibytes;
};

// Lengths, counts, sizes and offsets are small in the sample; four bytes of anything else are not.
TEST_F(DamageLimitsTest, EveryNumberOfAContainerSetToItsLimits) {
  std::size_t fields = 0;
  for (std::size_t at = 12; at + 4 <= container_.size(); ++at) {
    if (numberAt(container_, at, 4) > container_.size()) continue;
    if (fields++ % every(3) != 0) continue;
    const auto rest = static_cast<std::uint32_t>(container_.size() - at - 4);
    for (const std::uint32_t value : {0U, 1U, rest, rest + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      SCOPED_TRACE(testing::Message() << "byte " << at << " set to " << value);
      std::string damaged = container_;
      write("out", damaged.replace(at, 4, u32(value)));
      EXPECT_EQ(runWithinLimits({"-f", "out", "-h", "missing"}), silence());
    }
  }
  EXPECT_GT(fields, 80U);
}

TEST_F(DamageLimitsTest, CutsAndFlippedBitsOfAContainer) {
  std::size_t count = 0;
  forEachDamage(container_.substr(12), 8, [&](std::string_view damaged, const std::string& what) {
    if (count++ % every(11) != 0) return;
    SCOPED_TRACE(what);
    write("out", container_.substr(0, 12).append(damaged));
    EXPECT_EQ(runWithinLimits({"-f", "out", "-h", "missing"}), silence());
  });
}

struct Kind {
  const char* name;
  const char* option;
  std::string_view sample;
  std::string_view message;  // the only one that there may be, or its start
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

class DamagedKindTest : public DamageLimitsTest, public testing::WithParamInterface<Kind> {};

TEST_P(DamagedKindTest, EndsWellWithOneMessageAtMost) {
  const Kind& kind = GetParam();
  std::size_t count = 0;
  forEachDamage(kind.sample, 8, [&](std::string_view damaged, const std::string& what) {
    if (count++ % every(53) != 0) return;
    SCOPED_TRACE(what);
    write("out", container_);
    write("in", damaged);
    const Outcome outcome = runWithinLimits({"-f", "out", kind.option, "in"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    if (!outcome.err.empty()) {
      ASSERT_NE(kind.message, "") << outcome.err;
      EXPECT_TRUE(outcome.err == "Parse error\n" || outcome.err.starts_with(kind.message))
          << outcome.err;
    }
    EXPECT_EQ(read("out").substr(0, 16), header(5)) << "header of the saved file";
  });
}

constexpr std::array kinds{
    Kind{"Hierarchy", "-h", hierarchySample, "Unsupported hierarchy file: in\nVersion: "},
    Kind{"KernelXml", "-k", kernelXmlSample, "Could not parse kernel file\n"},
    Kind{"Hls", "-s", hlsSample, ""},
    Kind{"Auxiliary", "-x", auxiliarySample, "Malformed auxiliary file: in\n"},
    Kind{"LogicLocations", "-l", logicLocationSample, ""},
    Kind{"RamReport", "-r", ramReportSample, ""}};

const auto kindName = [](const testing::TestParamInfo<Kind>& info) {
  return std::string(info.param.name);
};

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedKindTest, testing::ValuesIn(kinds), kindName);

}  // namespace
}  // namespace consolidator
