// A small file of every format is damaged in every place, one place at a time, and goes through
// whole runs. Plain readers say what each run must print and leave; none may take much memory or
// time.

#include "driver/DriverRun.h"
#include "model/KernelMerge.h"
#include "readers/HdlReservedWords.h"
#include "support/AllocationGauge.h"
#include "support/FullContainer.h"
#include "support/InputSamples.h"
#include "support/MemoryFile.h"
#include "support/PlainAuxiliary.h"
#include "support/PlainContainer.h"
#include "support/PlainHierarchy.h"
#include "support/PlainHls.h"
#include "support/PlainLogicLocations.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

// How many bits of each byte are flipped and how many numbers put at each place. In slow builds
// these are fewer, at each place others than at the one before.
const auto perPlace = static_cast<std::size_t>(std::max(1, rounds(8)));

// Calls `visit(damaged)` with a text cut at every byte, with flipped bits of every byte, and with
// every four bytes set to numbers that a length or a count may well be damaged to.
template <typename Visit>
void forEachDamage(std::string_view intact, Visit visit) {
  const auto visitOne = [&](const std::string& damaged, const std::string& what) {
    if (testing::Test::HasFailure()) return;
    SCOPED_TRACE(what);
    visit(damaged);
  };
  for (std::size_t at = 0; at < intact.size(); ++at) {
    visitOne(std::string(intact.substr(0, at)), "cut to " + std::to_string(at));
    for (std::size_t bit = at; bit < at + perPlace; ++bit) {
      std::string damaged(intact);
      damaged[at] = static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ 1U << bit % 8);
      visitOne(damaged, "bit " + std::to_string(bit % 8) + " of byte " + std::to_string(at));
    }
    if (at + 4 > intact.size()) continue;
    const auto rest = static_cast<std::uint32_t>(intact.size() - at - 4);
    const std::array values{0U,       1U,          rest - 1,    rest,
                            rest + 1, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU};
    for (std::size_t i = at; i < at + perPlace; ++i) {
      const std::uint32_t value = values[i % values.size()];
      visitOne(std::string(intact).replace(at, 4, u32(value)),
               std::to_string(value) + " at byte " + std::to_string(at));
    }
  }
}

class DamageTest : public testing::Test {
 protected:
  // A run that asks for no more than a few blocks, texts and nodes beside what the files hold.
  Outcome runWithinLimits(std::vector<std::string> words) const {
    const AllocationGauge gauge;
    const std::clock_t start = std::clock();
    Outcome outcome = run(std::move(words));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
    EXPECT_LE(gauge.largest(), std::size_t{264} * 1024);
    EXPECT_LE(gauge.total(), std::size_t{4} * 1024 * 1024);
    return outcome;
  }

  const MemoryFile stored_;
  const MemoryFile other_;
};

class DamagedContainerTest : public DamageTest {
 protected:
  // What a run says of the project and the versions of a file, if anything.
  Outcome complaint(const PlainContainer& file, const std::string& project) const {
    const std::string start = "Error: consolidated file " + stored_.path();
    if (!project.empty() && !file.projectName.empty() && file.projectName != project) {
      return {1, "",
              start + " has meta-data for project " + file.projectName +
                  ", not specified project " + project + "\n"};
    }
    const auto major = static_cast<std::int32_t>(numberAt(file.header, 4, 4));
    const auto minor = static_cast<std::int32_t>(numberAt(file.header, 8, 4));
    if (major <= 1) return quiet;
    return {1, "",
            start + " is version " + std::to_string(major) + "." + std::to_string(minor) +
                " and only versions up to 1.1 are supported.\n"};
  }
};

TEST_F(DamagedContainerTest, IsRewrittenAsFarAsAPlainReaderReadsIt) {
  ASSERT_TRUE(PlainContainer(fullContainer()).complete());
  forEachDamage(fullContainer(), [&](const std::string& damaged) {
    PlainContainer plain(damaged);
    const Outcome expected = complaint(plain, "");
    stored_.write(damaged);
    EXPECT_EQ(runWithinLimits({"-f", stored_.path(), "-h", "missing"}), expected);
    EXPECT_EQ(stored_.read(), expected == quiet ? plain.save() : "");
  });
}

// The project name stands after all other sections: a dump reads over them to find it.
TEST_F(DamagedContainerTest, DumpsWhatAPlainReaderFinds) {
  const std::string project = "name";
  const std::string before = "what was there before";
  ASSERT_EQ(PlainContainer(fullContainer()).projectName, project);
  forEachDamage(fullContainer(), [&](const std::string& damaged) {
    const PlainContainer plain(damaged);
    const Outcome expected = complaint(plain, project);
    stored_.write(damaged);
    for (const auto& [option, kind] :
         {std::pair{"-u", SectionKind::Dwarf}, {"-j", SectionKind::Json}}) {
      other_.write(before);
      EXPECT_EQ(runWithinLimits({"-f", stored_.path(), "-p", project, option, other_.path()}),
                expected);
      EXPECT_EQ(other_.read(), expected == quiet ? plain.dump(kind) : before);
    }
    EXPECT_EQ(stored_.read(), damaged);
  });
}

// What a plain reader makes of an input.
struct Reading {
  std::string messages;
  KernelSequence kernels;
};

using PlainReader = Reading (*)(const std::string& text, const std::string& path,
                                const KernelSequence& known);

Reading oneOrNothing(const std::optional<KernelRecord>& kernel, const std::string& refusal = "") {
  return kernel ? Reading{"", {*kernel}} : Reading{refusal, {}};
}

Reading readHierarchy(const std::string& text, const std::string& path,
                      const KernelSequence& /*known*/) {
  const PlainHierarchy read = readHierarchyPlainly(text, path);
  return {read.messages, read.result ? read.kernels : KernelSequence()};
}

Reading readHls(const std::string& text, const std::string& path, const KernelSequence& /*known*/) {
  return oneOrNothing(PlainHlsReader(text, path).read());
}

Reading readAuxiliary(const std::string& text, const std::string& path,
                      const KernelSequence& /*known*/) {
  HdlReservedWords words;
  buildHdlReservedWords(words);
  return oneOrNothing(PlainAuxiliaryReader(text, words).read(),
                      "Malformed auxiliary file: " + path + "\n");
}

Reading readLogicLocations(const std::string& text, const std::string& /*path*/,
                           const KernelSequence& known) {
  return {"", readLogicLocationsPlainly(text, known)};
}

Reading readRamReport(const std::string& /*text*/, const std::string& /*path*/,
                      const KernelSequence& /*known*/) {
  return {};
}

struct Kind {
  const char* name;
  const char* option;
  std::string_view sample;
  PlainReader read;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

// Adds inputs to the sample of a consolidated file.
class DamagedInput : public DamageTest {
 protected:
  DamagedInput() {
    list_.edit([&](auto& kernels) { kernels = plain_.kernels; });
  }

  Outcome add(const char* option, std::string_view text) const {
    stored_.write(container_);
    other_.write(text);
    return runWithinLimits({"-f", stored_.path(), option, other_.path()});
  }

  // The file that such a run leaves when these kernels were read.
  std::string merged(KernelSequence kernels) const {
    KernelList list = list_;
    mergeKernels(list, std::move(kernels));
    PlainContainer result = plain_;
    result.kernels.assign(list.begin(), list.end());
    return result.save();
  }

  const std::string container_ = containerSample();
  const PlainContainer plain_{container_};
  KernelList list_;
};

class DamagedInputTest : public DamagedInput, public testing::WithParamInterface<Kind> {};

TEST_P(DamagedInputTest, GivesWhatAPlainReaderFinds) {
  const auto readPlainly = [&](const std::string& text) {
    return GetParam().read(text, other_.path(), plain_.kernels);
  };
  const std::string intact = merged(readPlainly(std::string(GetParam().sample)).kernels);
  std::size_t different = 0;
  forEachDamage(GetParam().sample, [&](const std::string& damaged) {
    const Reading expected = readPlainly(damaged);
    const std::string file = merged(expected.kernels);
    EXPECT_EQ(add(GetParam().option, damaged), (Outcome{0, "", expected.messages}));
    EXPECT_EQ(stored_.read(), file);
    if (file != intact) ++different;
  });
  if (GetParam().read == readRamReport) return;  // which says nothing
  EXPECT_GT(different, GetParam().sample.size()) << "most of the sample should matter";
}

const auto kindName = [](const testing::TestParamInfo<Kind>& info) {
  return std::string(info.param.name);
};

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedInputTest,
                         testing::Values(Kind{"Hierarchy", "-h", hierarchySample, readHierarchy},
                                         Kind{"Hls", "-s", hlsSample, readHls},
                                         Kind{"Auxiliary", "-x", auxiliarySample, readAuxiliary},
                                         Kind{"LogicLocations", "-l", logicLocationSample,
                                              readLogicLocations},
                                         Kind{"RamReport", "-r", ramReportSample, readRamReport}),
                         kindName);

// There is no plain reader of kernel XML. What is refused leaves the file as a run without input
// does; what is read adds kernels and changes the known ones of their names alone.
using DamagedKernelXmlTest = DamagedInput;

TEST_F(DamagedKernelXmlTest, AddsAllOrNothing) {
  const std::string untouched = merged({});
  ASSERT_EQ(add("-k", kernelXmlSample), quiet);
  const std::string intact = stored_.read();
  ASSERT_NE(intact, untouched);
  const Outcome refused{0, "", "Could not parse kernel file\n"};
  const std::size_t rootEnd = kernelXmlSample.rfind('>') + 1;
  std::size_t refusals = 0;
  forEachDamage(kernelXmlSample, [&](const std::string& damaged) {
    const Outcome outcome = add("-k", damaged);
    const std::string file = stored_.read();
    if (damaged.size() < rootEnd) {
      EXPECT_EQ(outcome, refused);
    } else if (damaged.size() < kernelXmlSample.size()) {
      EXPECT_EQ(file, intact);
    }
    if (outcome == refused) {
      EXPECT_EQ(file, untouched);
      ++refusals;
    } else {
      EXPECT_EQ(outcome, quiet);
      const PlainContainer read(file);
      EXPECT_TRUE(read.complete());
      ASSERT_GE(read.kernels.size(), plain_.kernels.size());
      EXPECT_LE(read.kernels.size(), plain_.kernels.size() + 2);
      EXPECT_EQ(read.kernels[1].name, "scale");
      EXPECT_TRUE(read.kernels[1].hardwareVariables == plain_.kernels[1].hardwareVariables);
    }
  });
  EXPECT_GT(refusals, kernelXmlSample.size());
}

}  // namespace
}  // namespace consolidator
