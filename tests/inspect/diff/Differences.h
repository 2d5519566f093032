#pragma once

#include "consolidated/File.h"
#include "inspect/diff/FileComparison.h"
#include "model/KernelRecord.h"
#include "support/Bytes.h"
#include "support/PlainRecords.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Collects changes in words: "k: argument a changed", and without kernel "project added".
class Differences : public ChangeSink {
 public:
  void take(const Change& change) override {
    std::string line = change.kernel ? std::string(*change.kernel) + ": " : "";
    line += nameOf(change.subject);
    if (change.name) line.append(" ").append(*change.name);
    lines.push_back(line + (change.isAddition()  ? " added"
                            : change.isRemoval() ? " removed"
                                                 : " changed"));
  }

  std::vector<std::string> lines;
};

/// What came out of comparing two files.
struct Compared {
  ComparisonResult result;
  std::vector<std::string> changes;
};

/// Compares files with these bytes, which must be consolidated files.
inline Compared compared(std::string_view before, std::string_view after,
                         const ComparisonOptions& options = {}) {
  const auto fileBefore = consolidated::File::fromBytes(before);
  const auto fileAfter = consolidated::File::fromBytes(after);
  EXPECT_TRUE(fileBefore && fileAfter);
  Differences differences;
  const auto result = FileComparison(*fileBefore, *fileAfter, options).report(differences);
  EXPECT_EQ(result.changes, differences.lines.size());
  return {result, differences.lines};
}

/// A file whose only section holds these kernels, as they are.
inline std::string fileOf(const std::vector<KernelRecord>& kernels) {
  std::string records = u32(static_cast<std::uint32_t>(kernels.size()));
  for (const KernelRecord& kernel : kernels) records += PlainRecordWriter::kernel(kernel);
  return container({{SectionKind::KernelRecords, records}});
}

/// The same bytes with something after the last section, so that they are compared in full.
inline std::string withTrailingByte(std::string file) { return file += '\0'; }

}  // namespace consolidator::inspect
