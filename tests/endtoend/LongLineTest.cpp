// One line of 16 MiB, or of CONSOLIDATOR_LONG_LINE (such as 1G), comes through a pipe as an input
// of each kind. Where it says nothing it is skipped as it comes; where it does, it costs a few
// times its size. What the consolidated file held stays.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

enum class Memory { Bounded, TimesTheLine };

struct LongLine {
  const char* name;
  char option;
  const char* before;
  char filler;  // what the line is made of
  const char* after;
  Memory memory;
  const char* message;
  const char* messageWhenHuge;  // from 1 GiB on
};

void PrintTo(const LongLine& line, std::ostream* out) { *out << line.name; }

std::string lineSize() {
  const char* const size = std::getenv("CONSOLIDATOR_LONG_LINE");
  return size == nullptr ? "16M" : size;
}

class LongLineTest : public ExecutableTest, public testing::WithParamInterface<LongLine> {
 protected:
  // A command that prints the line.
  static std::string generator() {
    const LongLine& line = GetParam();
    return std::string("printf %s '") + line.before + "'; head -c " + lineSize() +
           " /dev/zero | tr '\\0' '" + line.filler + "'; printf %s '" + line.after + "'";
  }

  // Sanitizers have memory of their own to account for.
  bool isMemoryLimitable() const {
    return runScript("ulimit -v 400000; exec \"$0\" --version").status == 0;
  }
};

TEST_P(LongLineTest, DoesNoHarm) {
  constexpr long someMebibytes = 8 * 1024;
  const LongLine& line = GetParam();
  const bool isHuge = lineSize().ends_with('G');
  const std::string held = container(
      {projectSection("project"), recordsSection({kernelRecord("known", 4, {"/top/k"})})});
  write("out", held);
  const ExecutableRun baseline = start({"-f", "out", "-h", "missing"});
  ASSERT_EQ(baseline.outcome(), silence());
  const std::string untouched = read("out");

  const ExecutableRun run = startScript("exec 9< <(" + generator() + "); exec \"$0\" -f out -" +
                                        line.option + " /dev/fd/9");
  EXPECT_EQ(run.outcome(), complained(isHuge ? line.messageWhenHuge : line.message));
  if (isMemoryLimitable() && line.memory == Memory::Bounded) {
    EXPECT_LE(run.peakMemory(), baseline.peakMemory() + someMebibytes);
  }
  if (isMemoryLimitable() && !isHuge && line.memory == Memory::TimesTheLine) {
    EXPECT_LE(run.peakMemory(), baseline.peakMemory() + someMebibytes + 5 * 16 * 1024);
  }
  if (line.after == std::string_view(":")) {
    // A kernel of that name was added; the file is too large to be looked at as a whole.
    std::string start(16, '\0');
    std::ifstream(path("out")).read(start.data(), 16);
    EXPECT_EQ(start, header(3));
    EXPECT_GT(std::filesystem::file_size(path("out")), std::size_t{32} * 1024 * 1024);
  } else {
    EXPECT_TRUE(folderHolds({{"out", untouched}}));
  }
}

class EndlessLineTest : public ExecutableTest {};

TEST_F(EndlessLineTest, IsRefusedAtOnce) {
  EXPECT_EQ(run({"-c", "-f", "out", "-s", "/dev/zero"}), silence());
  EXPECT_EQ(run({"-c", "-f", "out", "-x", "/dev/zero"}),
            complained("Malformed auxiliary file: /dev/zero\n"));
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

constexpr const char* refusedXml = "Could not parse kernel file\n";
constexpr const char* refusedVersion =
    "Unsupported hierarchy file: /dev/fd/9\nVersion: 3.40282e+38\nSupported Version: 1\n";
constexpr const char* refusedAuxiliary = "Malformed auxiliary file: /dev/fd/9\n";

constexpr std::array longLines{
    LongLine{"HierarchyComment", 'h', "#", 'c', "", Memory::Bounded, "", ""},
    LongLine{"HierarchyWhiteSpace", 'h', "type:", ' ', "c", Memory::Bounded, "", ""},
    LongLine{"HierarchyName", 'h', "", 'n', ":", Memory::TimesTheLine, "", ""},
    LongLine{"HierarchyVersion", 'h', "version: ", '1', "", Memory::TimesTheLine, refusedVersion,
             refusedVersion},
    LongLine{"HierarchyVersionOfZeros", 'h', "version: ", '0', "", Memory::Bounded, "", ""},
    LongLine{"KernelXmlText", 'k', "<project>", 't', "</project>", Memory::Bounded, "", ""},
    LongLine{"KernelXmlComment", 'k', "<project><!--", 'c', "--></project>", Memory::TimesTheLine,
             "", refusedXml},
    LongLine{"KernelXmlAttribute", 'k', "<project name=\"", 'a', "\"/>", Memory::TimesTheLine, "",
             refusedXml},
    LongLine{"KernelXmlJunk", 'k', "", 'x', "", Memory::TimesTheLine, refusedXml, refusedXml},
    LongLine{"Hls", 's', "local ", 'l', "", Memory::Bounded, "", ""},
    LongLine{"Auxiliary", 'x', "<ak:arg ", 'a', "", Memory::Bounded, refusedAuxiliary,
             refusedAuxiliary},
    LongLine{"LogicLocation", 'l', "Bit 1 2 3 d 0 Net=", 'n', "", Memory::Bounded, "", ""},
    LongLine{"LogicLocationWhiteSpace", 'l', "", ' ', "Bit", Memory::Bounded, "", ""},
    LongLine{"RamReport", 'r', "|", 'r', "|", Memory::Bounded, "", ""},
    LongLine{"RamReportWhiteSpace", 'r', "", ' ', "|", Memory::Bounded, "", ""}};

const auto lineName = [](const testing::TestParamInfo<LongLine>& info) {
  return std::string(info.param.name);
};

INSTANTIATE_TEST_SUITE_P(Lines, LongLineTest, testing::ValuesIn(longLines), lineName);

}  // namespace
}  // namespace consolidator
