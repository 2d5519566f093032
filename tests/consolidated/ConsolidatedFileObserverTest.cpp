// What an observer of a consolidated file is told where no run of the tool can be made to show it.

#include "consolidated/ConsolidatedFile.h"
#include "consolidated/OutputFiles.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

class LossCodes final : public RunObserver {
 public:
  void onLoss(std::string_view code, const std::string& /*message*/) override {
    codes_.emplace_back(code);
  }

  const std::vector<std::string>& codes() const { return codes_; }

 private:
  std::vector<std::string> codes_;
};

// A dump that makes the file short while it is copied.
class CuttingOutput final : public OutputFiles {
 public:
  explicit CuttingOutput(std::string path) : path_(std::move(path)) {}

  StdioFile openConsolidatedFile(const std::string& /*path*/) override { return nullptr; }

  StdioFile openDump(const std::string& /*path*/) override {
    cookie_io_functions_t functions{};
    functions.write = [](void* self, const char* /*bytes*/, std::size_t size) {
      std::filesystem::resize_file(static_cast<CuttingOutput*>(self)->path_, 1);
      return static_cast<ssize_t>(size);
    };
    return StdioFile(fopencookie(this, "w", functions));
  }

 private:
  std::string path_;
};

TEST(ConsolidatedFileObserver, IsToldOfADumpThatEndsEarly) {
  const TemporaryFolder folder;
  constexpr std::size_t large = std::size_t{4} << 20;
  const std::string path =
      folder.write("file", container({{SectionKind::Dwarf, std::string(large, 'd')}}));
  LossCodes losses;
  CuttingOutput output(path);
  ConsolidatedFile file(losses, output);
  file.openOrCreate(path, false, true);
  file.dumpDwarf(folder.path("out"));
  EXPECT_EQ(losses.codes(), std::vector<std::string>{"dump-short"});
}

}  // namespace
}  // namespace consolidator
