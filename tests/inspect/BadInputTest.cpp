#include "inspect/InspectRun.h"
#include "inspect/output/PlainText.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

/// The built executable against what is no file to look at, and outputs that take nothing.
class BadInputTest : public testing::Test {
 protected:
  Outcome run(const std::vector<std::string>& words) const {
    return startInspect(words, folder_.path("")).outcome();
  }

  Outcome runScript(const std::string& script) const {
    return startInspectScript(script, folder_.path("")).outcome();
  }

  void writeFile() const { folder_.write("file", fullContainer()); }

  TemporaryFolder folder_;
};

bool isPlain(std::string lines) {
  std::erase(lines, '\n');
  return plain(lines) == lines;
}

const std::vector<std::string> commands{"show file", "json file", "find file first", "verify file",
                                        "diff --sections file file"};

TEST_F(BadInputTest, SaysWhyAFileCannotBeOpened) {
  EXPECT_EQ(run({"show", "missing"}), (Outcome{2, "", said("missing: No such file or directory")}));
  EXPECT_EQ(run({"show", "."}), (Outcome{2, "", said(".: Is a directory")}));
  EXPECT_EQ(run({"json", "missing"}).out,
            "{\"format\":\"consolidator-inspect/1\",\"error\":{\"code\":\"cannot-open\","
            "\"message\":\"missing: No such file or directory\"}}\n");
}

TEST_F(BadInputTest, RefusesWhatIsNoConsolidatedFile) {
  folder_.write("text", "a text that is long enough");
  folder_.write("short", "\xD4\xDA\xEF\xBE");
  for (const std::string file : {"text", "short", "/dev/null", "/dev/zero", "-"}) {
    const Outcome outcome = run({"json", file});
    EXPECT_EQ(outcome.status, 2) << file;
    EXPECT_NE(outcome.out.find("\"code\":\"no-consolidated-file\""), std::string::npos) << file;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << file;
  }
}

TEST_F(BadInputTest, SaysWhyNotAllOfAFileIsShown) {
  folder_.write("cut", container({{SectionKind::Json, emptyJson()},
                                  {SectionKind::KernelRecords, u32(2) + kernelRecord("k", 4)}}));
  const std::string why =
      said("cut: not complete: The kernel records go beyond the end of the file.");
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"json", "cut"},
                                             {"show", "--kernel", "k", "cut"},
                                             {"find", "cut", "k"},
                                             {"extract", "cut", "json", "-o", "-"},
                                             {"coverage", "cut"},
                                             {"report", "cut", "-o", "page"},
                                             {"sql", "cut", "-o", "base"}}) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, 1) << words[0];
    EXPECT_EQ(outcome.err, why) << words[0];
  }
  EXPECT_EQ(run({"show", "cut"}).err, "");  // its answer says so
}

TEST_F(BadInputTest, LooksAtAHugeSparseFileAtOnce) {
  folder_.write("huge", header(1) + entry(SectionKind::Dwarf, 40, 5));
  const Outcome outcome = runScript("truncate -s 1T huge && $INSPECT show huge");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("DWARF: 5 bytes at 0x28\n"), std::string::npos);
  EXPECT_EQ(runScript("truncate -s 1T zeros && $INSPECT show zeros").status, 2);
}

TEST_F(BadInputTest, ReadsPipes) {
  writeFile();
  const Outcome whole = run({"json", "file"});
  Outcome piped = runScript("$INSPECT json - < <(cat file)");
  const std::size_t path = piped.out.find("\"path\":\"-\"");
  ASSERT_NE(path, std::string::npos);
  piped.out.replace(path, 10, "\"path\":\"file\"");
  EXPECT_EQ(piped, whole);
  EXPECT_EQ(runScript("$INSPECT json <(cat file) >/dev/null").status, 0);
}

TEST_F(BadInputTest, NeverShowsNamesRaw) {
  const std::string evil = "a\x1B[31m\nb\xFF\xC2\x9B\x7F\xE2\x80\xAE";
  folder_.write(evil,
                container({{SectionKind::ProjectName, evil},
                           {SectionKind::KernelRecords, u32(1) + kernelRecord(evil, 4, {evil})}}));
  folder_.write("other", container({}));
  for (const std::vector<std::string>& words : {std::vector<std::string>{"show", evil},
                                                {"show", "--kernel", evil, evil},
                                                {"show", "--kernel", "none" + evil, evil},
                                                {"find", evil, evil},
                                                {"json", evil},
                                                {"find", "--format=json", evil, evil},
                                                {"json", "missing" + evil},
                                                {"verify", "--notes", evil},
                                                {"verify", "--format=json", evil},
                                                {"diff", "--sections", evil, "other"},
                                                {"diff", "--format=json", evil, "other"},
                                                {"coverage", evil},
                                                {"coverage", "--format=json", evil},
                                                {"show", evil, evil},
                                                {evil},
                                                {"show", "--" + evil},
                                                {"extract", evil, "dwarf", "-o", evil}}) {
    const Outcome outcome = run(words);
    EXPECT_TRUE(isPlain(outcome.out)) << words[0];
    EXPECT_TRUE(isPlain(outcome.err)) << words[0];
    EXPECT_EQ(outcome.err.find('\xFF'), std::string::npos);
    EXPECT_EQ(outcome.out.find('\xFF'), std::string::npos);
    EXPECT_LE(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
  }
}

TEST_F(BadInputTest, NoticesAFullDisk) {
  writeFile();
  std::vector<std::string> all = commands;
  all.insert(all.end(), {"extract file dwarf -o -", "--help", "show --help"});
  for (const std::string& command : all) {
    EXPECT_EQ(runScript("$INSPECT " + command + " >/dev/full"),
              (Outcome{2, "", said("standard output: No space left on device")}))
        << command;
  }
}

TEST_F(BadInputTest, SaysNothingOfAClosedPipe) {
  writeFile();
  for (const std::string& command : commands) {
    EXPECT_EQ(runScript("$INSPECT " + command + " | true").err, "") << command;
  }
  EXPECT_EQ(runScript("$INSPECT show file >&-").status, 2);
}

TEST_F(BadInputTest, RefusesThousandsOfOperands) {
  std::vector<std::string> words{"show"};
  words.resize(2001, "file");
  const Outcome outcome = run(words);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
}

// A file of many kernels that another process cuts at once, again and again.
TEST_F(BadInputTest, ClosesTheDocumentOfAFileThatIsCut) {
  std::string records;
  constexpr std::uint32_t kernels = 30'000;
  for (std::uint32_t i = 0; i < kernels; ++i) records += kernelRecord("kernel", 4, {"/top/a"});
  folder_.write("file", container({{SectionKind::KernelRecords, u32(kernels) + records}}));
  const Outcome outcome = runScript(
      "exec 3< <($INSPECT json file 2>message; echo $? >status); head -c 100 <&3 >begin; "
      "truncate -s 100 file; cat begin - <&3 >document; "
      "while [[ ! -s status ]]; do sleep 0.1; done");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(folder_.read("status"), "2\n");
  EXPECT_EQ(folder_.read("message"), said("file: cut while it was read"));
  rapidjson::Document document;
  const std::string text = folder_.read("document");
  document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
  ASSERT_FALSE(document.HasParseError());
  EXPECT_FALSE(document["complete"].GetBool());
}

}  // namespace
}  // namespace consolidator::inspect
