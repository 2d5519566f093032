#pragma once

#include "consolidated/File.h"
#include "inspect/verify/Findings.h"
#include "inspect/verify/Verification.h"
#include "model/KernelRecord.h"
#include "support/Bytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// A kernel with all that a file must have so that there is nothing to find in it.
inline KernelRecord plainKernel(std::string_view name = "k") {
  KernelRecord kernel;
  kernel.name = name;
  kernel.type = KernelType::HLS;
  kernel.addInstancePath("/t/k_1");
  kernel.addArgument("a", "a_r", "int*");
  kernel.addVariable("i", "i_r", "int");
  kernel.setLogicLocation("/t/k_1/i_r", 0, 7, 9);
  kernel.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  kernel.brams.emplace_back("ram");
  return kernel;
}

inline std::string recordsOf(const std::vector<KernelRecord>& kernels) {
  std::string bytes = u32(static_cast<std::uint32_t>(kernels.size()));
  for (const KernelRecord& kernel : kernels) bytes += encode(kernel);
  return bytes;
}

/// The JSON section that shows the kernels with their conditions as they are.
inline std::string jsonOf(const std::vector<KernelRecord>& kernels) {
  std::string text = "{  \"Kernels\" : [ ";
  for (const KernelRecord& kernel : kernels) {
    if (&kernel != &kernels.front()) text += ", ";
    text += json(kernel);
  }
  return text + " ] }" + '\0';
}

/// Project, DWARF, JSON and kernel records, in which there is nothing to find.
inline std::vector<Section> plainSections(const std::vector<KernelRecord>& kernels) {
  return {{SectionKind::ProjectName, "proj"},
          {SectionKind::Dwarf, "\177ELF"},
          {SectionKind::Json, jsonOf(kernels)},
          {SectionKind::KernelRecords, recordsOf(kernels)}};
}

inline std::vector<Section> plainSections() { return plainSections({plainKernel()}); }

/// Where the bytes of a section of a container begin.
inline std::uint64_t offsetOfSection(const std::vector<Section>& sections, std::size_t index) {
  std::uint64_t offset = 16 + 24 * sections.size();
  for (std::size_t i = 0; i < index; ++i) offset += sections[i].bytes.size();
  return offset;
}

/// What is found in a file of these bytes.
inline Findings findingsIn(std::string_view bytes, const Requirements& requirements = {}) {
  Findings findings;
  const auto file = consolidated::File::fromBytes(bytes);
  EXPECT_TRUE(file);
  Verification(*file, findings).run(requirements);
  return findings;
}

using Counts = std::map<std::string_view, std::uint64_t>;

inline Counts countsOf(const Findings& findings) {
  Counts counts;
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    if (findings.count(code) > 0) counts[nameOf(code)] = findings.count(code);
  }
  return counts;
}

inline Counts countsIn(std::string_view bytes, const Requirements& requirements = {}) {
  return countsOf(findingsIn(bytes, requirements));
}

/// Whether one thing is found in a file, at this offset, and nothing else.
inline testing::AssertionResult findsOnly(std::string_view bytes, FindingCode code,
                                          std::optional<std::uint64_t> offset) {
  const Findings findings = findingsIn(bytes);
  const Counts counts = countsOf(findings);
  if (counts != Counts{{nameOf(code), 1}}) {
    return testing::AssertionFailure() << testing::PrintToString(counts);
  }
  const auto found = findings.list(code).front().offset;
  if (found == offset) return testing::AssertionSuccess();
  return testing::AssertionFailure() << testing::PrintToString(found);
}

/// The same for a container of one kernel.
inline testing::AssertionResult findsOnlyInKernel(const KernelRecord& kernel, FindingCode code,
                                                  std::uint64_t offsetInRecord) {
  const std::vector<Section> sections = plainSections({kernel});
  return findsOnly(container(sections), code, offsetOfSection(sections, 3) + 4 + offsetInRecord);
}

}  // namespace consolidator::inspect
