#include "readers/InputFile.h"
#include "support/PiecewisePipe.h"
#include "support/StreamCapture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace consolidator {
namespace {

// The least that a reader is: every word is a kernel, and "stop" is an error.
class WordReader : public InputFile {
 public:
  using InputFile::InputFile;

  ~WordReader() override { ++destroyed; }

  bool parse() override {
    std::string word;
    while (stream_ >> word) {
      if (word == "stop") return false;
      kernels_.emplace_back().name = word;
    }
    return true;
  }

  const char* fileName() const { return fileName_; }

  static inline int destroyed = 0;
};

static_assert(std::is_abstract_v<InputFile>);
static_assert(std::has_virtual_destructor_v<InputFile>);
static_assert(!std::is_copy_constructible_v<InputFile> && !std::is_copy_assignable_v<InputFile>);

TEST(InputFile, AnOpenFileIsValidAndEmptyUntilItIsParsed) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", "a b");
  WordReader reader(path.c_str());
  EXPECT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.kernels().empty());
  EXPECT_EQ(reader.version(), -1.0F);
  EXPECT_TRUE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 2U);
  EXPECT_EQ(reader.kernels()[0].name, "a");
  EXPECT_EQ(reader.kernels()[1].name, "b");
}

TEST(InputFile, AMissingFileIsNotValidAndPrintsNothing) {
  const TemporaryFolder folder;
  const StreamCapture capture;
  const std::string path = folder.path("missing");
  const WordReader reader(path.c_str());
  EXPECT_FALSE(reader.isValid());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST(InputFile, ADirectoryOrAnEmptyNameIsNotValid) {
  const TemporaryFolder folder;
  EXPECT_FALSE(WordReader(folder.path("").c_str()).isValid());
  EXPECT_FALSE(WordReader("").isValid());
}

TEST(InputFile, AFileThatIsNotOpenReadsAsEmpty) {
  WordReader reader("");
  EXPECT_TRUE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
}

TEST(InputFile, AnEmptyFileIsValid) {
  const TemporaryFolder folder;
  EXPECT_TRUE(WordReader(folder.write("file", "").c_str()).isValid());
}

TEST(InputFile, APipeIsAsGoodAsAFile) {
  const PiecewisePipe pipe({"first sec", "ond"});
  WordReader reader(pipe.path().c_str());
  EXPECT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 2U);
  EXPECT_EQ(reader.kernels()[1].name, "second");
}

TEST(InputFile, KeepsTheCallersNameWithoutCopyingIt) {
  const char* const name = "a name that messages show";
  EXPECT_EQ(WordReader(name).fileName(), name);
  EXPECT_EQ(WordReader(name, "text").fileName(), name);
}

TEST(InputFile, KeepsItsRecordsWhenParsingFails) {
  WordReader reader("text", "a stop b");
  EXPECT_FALSE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 1U);
}

TEST(InputFile, IsDestroyedThroughItsBase) {
  WordReader::destroyed = 0;
  std::unique_ptr<InputFile> reader = std::make_unique<WordReader>("text", "a");
  reader.reset();
  EXPECT_EQ(WordReader::destroyed, 1);
}

}  // namespace
}  // namespace consolidator
