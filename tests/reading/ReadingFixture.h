#pragma once

#include "consolidated/File.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace consolidated {

using consolidator::container;
using consolidator::entry;
using consolidator::header;
using consolidator::kernelRecord;
using consolidator::text;
using consolidator::u32;

/// Shows a fault where a comparison fails.
inline std::string describe(const std::optional<Fault>& fault) {
  if (!fault) return "none";
  const std::string section = fault->section ? std::to_string(*fault->section) : "none";
  return std::string(fault->name()) + " section " + section + " at " +
         std::to_string(fault->offset);
}

/// Opens bytes that stay as long as the test.
class ReadingFixture : public testing::Test {
 protected:
  using Names = std::vector<std::string>;

  /// The bytes must be those of a consolidated file.
  const File& read(std::string bytes) {
    bytes_ = std::move(bytes);
    Result<File> file = File::fromBytes(bytes_);
    EXPECT_TRUE(file);
    file_.emplace(std::move(*file));
    return *file_;
  }

  /// A file whose only section holds kernel records, which begin at offset 40.
  const File& readRecords(const std::string& records) {
    return read(container({{consolidator::SectionKind::KernelRecords, records}}));
  }

  static constexpr std::uint64_t recordsStart = 40;

  static Names names(const Kernels& kernels) {
    Names names;
    for (const Kernel& kernel : kernels) names.emplace_back(kernel.name().view());
    return names;
  }

  Names names() const { return names(file_->kernels()); }

  /// The fault of the file in words.
  std::string fault() const { return describe(file_->fault()); }

 private:
  std::string bytes_;
  std::optional<File> file_;
};

}  // namespace consolidated
