// A small file of each kind is damaged in every place, one place at a time, and read: the reader
// gives what a plain stream-based one gives, in little memory and time. The kernel XML, for which
// there is no plain reader, is read whole or refused whole.

#include "model/Describe.h"
#include "readers/AuxiliaryXMLFile.h"
#include "readers/HLSFile.h"
#include "readers/HierarchyFile.h"
#include "readers/KernelFile.h"
#include "readers/LLFile.h"
#include "readers/RAMFile.h"
#include "support/AllocationGauge.h"
#include "support/InputSamples.h"
#include "support/MemoryFile.h"
#include "support/PlainAuxiliary.h"
#include "support/PlainContainer.h"
#include "support/PlainHierarchy.h"
#include "support/PlainHls.h"
#include "support/PlainLogicLocations.h"
#include "support/PlainRamReport.h"
#include "support/Rounds.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

constexpr std::size_t enough = std::size_t{1024} * 1024;

// A text that ends where its memory does, so that sanitizers see a look beyond.
class ExactText {
 public:
  explicit ExactText(std::string_view text) : bytes_(text.begin(), text.end()) {}

  std::string_view view() const { return {bytes_.data(), bytes_.size()}; }

 private:
  std::vector<char> bytes_;
};

std::string shown(const KernelSequence& kernels) {
  std::string text;
  for (const KernelRecord& kernel : kernels) text += describe(kernel);
  return text;
}

// What a reading gives: its messages, its result and its records.
std::string parsed(InputFile& reader) {
  const StreamCapture capture;
  const AllocationGauge gauge;
  const std::clock_t start = std::clock();
  const bool result = reader.parse();
  EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
  EXPECT_LE(gauge.total(), enough);
  return capture.err() + (result ? "accepted " : "refused ") + shown(reader.kernels());
}

KernelSequence knownKernels() { return PlainContainer(containerSample()).kernels; }

KernelList listOf(const KernelSequence& kernels) {
  KernelList list;
  for (const KernelRecord& kernel : kernels) list.append(kernel);
  return list;
}

// Damages a sample in every place and compares `read(text)` with `readPlainly(text)`.
template <typename Read, typename ReadPlainly>
void compareDamaged(std::string_view sample, Read read, ReadPlainly readPlainly) {
  const std::string intact = readPlainly(std::string(sample));
  int different = 0;
  forEachDamage(sample, 8, [&](std::string_view damaged, const std::string& what) {
    if (testing::Test::HasFailure()) return;
    SCOPED_TRACE(what);
    const std::string expected = readPlainly(std::string(damaged));
    EXPECT_EQ(read(ExactText(damaged).view()), expected) << testing::PrintToString(damaged);
    if (expected != intact) ++different;
  });
  EXPECT_GT(different, static_cast<int>(sample.size())) << "most of the sample should matter";
}

TEST(DamagedInput, AHierarchyFileReadsAsByAPlainStream) {
  compareDamaged(
      hierarchySample,
      [](std::string_view text) {
        HierarchyFile reader("in", text);
        return parsed(reader);
      },
      [](const std::string& text) {
        const PlainHierarchy read = readHierarchyPlainly(text, "in");
        return read.messages + (read.result ? "accepted " : "refused ") + shown(read.kernels);
      });
}

TEST(DamagedInput, AnHlsFileReadsAsByAPlainStream) {
  compareDamaged(
      hlsSample,
      [](std::string_view text) {
        HLSFile reader("scale.dbg", text);
        return parsed(reader);
      },
      [](const std::string& text) {
        const auto kernel = PlainHlsReader(text, "scale.dbg").read();
        return kernel ? "accepted " + describe(*kernel) : std::string("refused ");
      });
}

TEST(DamagedInput, AnAuxiliaryFileReadsAsByAPlainStream) {
  HdlReservedWords words;
  buildHdlReservedWords(words);
  compareDamaged(
      auxiliarySample,
      [](std::string_view text) {
        AuxiliaryXMLFile reader("in", text);
        return parsed(reader);
      },
      [&](const std::string& text) {
        const auto kernel = PlainAuxiliaryReader(text, words).read();
        return kernel ? "accepted " + describe(*kernel)
                      : std::string("Malformed auxiliary file: in\nrefused ");
      });
}

TEST(DamagedInput, ALogicLocationFileReadsAsByAPlainStream) {
  const KernelSequence kernels = knownKernels();
  const KernelList list = listOf(kernels);
  compareDamaged(
      logicLocationSample,
      [&](std::string_view text) {
        LLFile reader("in", text);
        reader.setKernels(list);
        return parsed(reader);
      },
      [&](const std::string& text) {
        return "accepted " + shown(readLogicLocationsPlainly(text, kernels));
      });
}

TEST(DamagedInput, ARamReportReadsAsByAPlainStream) {
  const KernelList kernels = listOf(knownKernels());
  const auto end = [](std::uint32_t section, bool powerSeen) {
    return std::to_string(section) + (powerSeen ? " after the power title" : "");
  };
  compareDamaged(
      ramReportSample,
      [&](std::string_view text) {
        RAMFile reader("in", text, kernels);
        EXPECT_TRUE(reader.parse());
        return end(reader.section(), reader.powerSeen());
      },
      [&](const std::string& text) {
        const PlainRamReport report(text);
        return end(report.section, report.powerSeen);
      });
}

// The XML library looks at every byte of its own accord, so that a slow build tries one bit of
// each.
TEST(DamagedInput, AKernelXmlFileIsReadWholeOrRefused) {
  const MemoryFile file;
  const std::string path = file.path();
  const auto read = [&](std::string_view text) {
    file.write(text);
    KernelFile reader(path.c_str());
    return parsed(reader);
  };
  const std::string refusal = "Could not parse kernel file\nrefused ";
  const std::string intact = read(kernelXmlSample);
  ASSERT_TRUE(intact.starts_with("accepted ")) << intact;
  const std::size_t rootEnd = kernelXmlSample.rfind('>') + 1;
  const auto kernelsIn = [](std::string_view reading) {
    int count = 0;
    for (std::size_t at = 0; (at = reading.find(" name ", at)) != std::string_view::npos; ++at) {
      ++count;
    }
    return count;
  };
  std::size_t refused = 0;
  forEachDamage(kernelXmlSample, static_cast<unsigned>(std::max(1, rounds(8))),
                [&](std::string_view damaged, const std::string& what) {
                  SCOPED_TRACE(what);
                  const std::string reading = read(damaged);
                  if (damaged.size() < kernelXmlSample.size()) {
                    EXPECT_EQ(reading, damaged.size() < rootEnd ? refusal : intact);
                  } else if (reading == refusal) {
                    ++refused;
                  } else {
                    EXPECT_TRUE(reading.starts_with("accepted ")) << reading;
                    EXPECT_LE(kernelsIn(reading), kernelsIn(intact)) << reading;
                  }
                });
  EXPECT_GT(refused, kernelXmlSample.size() / 4);
}

}  // namespace
}  // namespace consolidator
