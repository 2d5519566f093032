// Whole runs that add a small input of each kind, damaged in every place, to a consolidated file.
// Plain readers say what each must print and leave behind.

#include "driver/DriverRun.h"
#include "model/KernelMerge.h"
#include "readers/HdlReservedWords.h"
#include "support/AllocationGauge.h"
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
#include <ctime>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

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

class DamagedRun : public testing::Test {
 protected:
  static constexpr std::size_t enough = std::size_t{32} * 1024 * 1024;

  DamagedRun() {
    list_.edit([&](auto& kernels) { kernels = plain_.kernels; });
  }

  // Adds a file to the sample of a consolidated file.
  Outcome add(const char* option, std::string_view text) const {
    stored_.write(container_);
    input_.write(text);
    const AllocationGauge gauge;
    const std::clock_t start = std::clock();
    Outcome outcome = run({"-f", stored_.path(), option, input_.path()});
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
    EXPECT_LE(gauge.total(), container_.size() + enough);
    return outcome;
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
  const MemoryFile stored_;
  const MemoryFile input_;
};

class DamagedRunTest : public DamagedRun, public testing::WithParamInterface<Kind> {};

TEST_P(DamagedRunTest, GivesWhatAPlainReaderFinds) {
  std::size_t different = 0;
  const std::string intact = merged(
      GetParam().read(std::string(GetParam().sample), input_.path(), plain_.kernels).kernels);
  forEachDamage(GetParam().sample, static_cast<unsigned>(std::max(1, rounds(8))),
                [&](std::string_view damaged, const std::string& what) {
                  if (HasFailure()) return;
                  SCOPED_TRACE(what);
                  const Reading expected =
                      GetParam().read(std::string(damaged), input_.path(), plain_.kernels);
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

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedRunTest,
                         testing::Values(Kind{"Hierarchy", "-h", hierarchySample, readHierarchy},
                                         Kind{"Hls", "-s", hlsSample, readHls},
                                         Kind{"Auxiliary", "-x", auxiliarySample, readAuxiliary},
                                         Kind{"LogicLocations", "-l", logicLocationSample,
                                              readLogicLocations},
                                         Kind{"RamReport", "-r", ramReportSample, readRamReport}),
                         kindName);

// There is no plain reader of kernel XML. What is refused leaves the file as a run without input
// does; what is read adds kernels and changes the known ones of their names alone.
using DamagedKernelXmlRun = DamagedRun;

TEST_F(DamagedKernelXmlRun, AddsAllOrNothing) {
  const std::string untouched = merged({});
  ASSERT_EQ(add("-k", kernelXmlSample), quiet);
  const std::string intact = stored_.read();
  ASSERT_NE(intact, untouched);
  const Outcome refused{0, "", "Could not parse kernel file\n"};
  const std::size_t rootEnd = kernelXmlSample.rfind('>') + 1;
  forEachDamage(
      kernelXmlSample, static_cast<unsigned>(std::max(1, rounds(8))),
      [&](std::string_view damaged, const std::string& what) {
        if (HasFailure()) return;
        SCOPED_TRACE(what);
        const Outcome outcome = add("-k", damaged);
        const std::string file = stored_.read();
        if (damaged.size() < rootEnd) {
          EXPECT_EQ(outcome, refused);
        } else if (damaged.size() < kernelXmlSample.size()) {
          EXPECT_EQ(file, intact);
        }
        if (outcome == refused) {
          EXPECT_EQ(file, untouched);
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
}

}  // namespace
}  // namespace consolidator
