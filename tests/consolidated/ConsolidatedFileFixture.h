#pragma once

#include "consolidated/ConsolidatedFile.h"
#include "consolidated/Samples.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// A consolidated file and a folder with the file "file" to open.
class ConsolidatedFileFixture : public testing::Test {
 protected:
  using Table = std::vector<SectionEntry>;
  using Names = std::vector<std::string>;

  /// Opens a file with these bytes as a run in add mode does.
  void open(std::string_view bytes) {
    file_.openOrCreate(folder_.write("file", bytes), false, false);
  }

  /// Opens a file with these bytes as a dump does.
  void openForDump(std::string_view bytes) {
    file_.openOrCreate(folder_.write("file", bytes), false, true);
  }

  /// Reads these bytes into the model; the result of the reading.
  bool readModel(std::string_view bytes) {
    return file_.readExisting(folder_.write("file", bytes));
  }

  /// Saves and closes; what the file holds then.
  std::string saved() {
    file_.save();
    file_.close();
    return folder_.read("file");
  }

  /// What a run in add mode without any input makes of these bytes.
  std::string rewritten(std::string_view bytes) {
    open(bytes);
    return saved();
  }

  Names kernelNames() const {
    Names names;
    for (const KernelRecord& kernel : file_.kernels()) names.push_back(kernel.name);
    return names;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("file");
  ConsolidatedFile file_;
};

}  // namespace consolidator
