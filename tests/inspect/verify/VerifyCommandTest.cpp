#include "inspect/InspectRun.h"
#include "inspect/verify/VerifyFixture.h"
#include "support/TemporaryFolder.h"

#include <rapidjson/document.h>

namespace consolidator::inspect {
namespace {

Outcome fails(std::string out) { return {1, std::move(out), {}}; }

std::string soundFile() { return container(plainSections()); }

// A file with 25 warnings of a kind.
std::string fileOfUnnamedTypes() {
  std::vector<KernelRecord> kernels;
  for (int i = 0; i < 25; ++i) {
    kernels.push_back(plainKernel("k" + std::to_string(i)));
    kernels.back().type = static_cast<KernelType>(7);
  }
  return container(plainSections(kernels));
}

std::size_t lines(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

rapidjson::Document parsed(const std::string& text) {
  rapidjson::Document document;
  document.Parse(text.data(), text.size());
  EXPECT_FALSE(document.HasParseError()) << text;
  return document;
}

TEST(VerifyCommandTest, SaysThatAFileIsSound) {
  EXPECT_EQ(inspectBytes(soundFile(), {"verify", "FILE"}), holds("FILE: sound\n"));
}

TEST(VerifyCommandTest, TellsWhatIsWrongAndWhere) {
  KernelRecord kernel = plainKernel("k\x1B");
  kernel.instancePaths.clear();
  const std::vector<Section> sections = plainSections({kernel});
  const std::string file = container(sections) + "more";
  const auto offset = [](std::uint64_t position) {
    std::ostringstream text;
    text << std::hex << position;
    return text.str();
  };
  const std::uint64_t record = offsetOfSection(sections, 3) + 4;
  EXPECT_EQ(inspectBytes(file, {"verify", "FILE"}),
            holds("FILE:0x" + offset(file.size() - 4) +
                  ": warning: 4 bytes at the end that belong to nothing [trailing-bytes]\n"
                  "FILE:0x" +
                  offset(record + 5) +
                  ": warning: the kernel's name holds a character that breaks the JSON text "
                  "(kernel \"k\\x1B\") [text-breaks-json]\n"
                  "FILE:0x" +
                  offset(record) +
                  ": warning: the kernel has no instance path (kernel \"k\\x1B\") [no-instance]\n"
                  "FILE: sound\n"));
}

TEST(VerifyCommandTest, ListsNotesOnRequest) {
  const std::string file = container({{SectionKind::Json, emptyJson()}});
  EXPECT_EQ(inspectBytes(file, {"verify", "FILE"}),
            holds("FILE: warning: the file holds no kernel [no-kernels]\nFILE: sound\n"));
  EXPECT_EQ(inspectBytes(file, {"verify", "--notes", "FILE"}),
            holds("FILE: warning: the file holds no kernel [no-kernels]\n"
                  "FILE: note: the file holds no DWARF [no-dwarf]\n"
                  "FILE: note: no bit has a location [no-location]\n"
                  "FILE: sound\n"));
}

TEST(VerifyCommandTest, ListsTwentyFindingsOfACode) {
  const Outcome some = inspectBytes(fileOfUnnamedTypes(), {"verify", "FILE"});
  EXPECT_EQ(some.status, 0);
  EXPECT_EQ(lines(some.out), 20U + 2);
  EXPECT_TRUE(
      some.out.ends_with("FILE: warning: 5 more, which --all lists [unknown-type]\nFILE: sound\n"));
  const Outcome all = inspectBytes(fileOfUnnamedTypes(), {"verify", "--all", "FILE"});
  EXPECT_EQ(lines(all.out), 25U + 1);
}

TEST(VerifyCommandTest, ListsAllInTheOrderOfTheirOffsets) {
  const Outcome outcome =
      inspectBytes(fileOfUnnamedTypes(), {"verify", "--all", "--format=json", "FILE"});
  const auto document = parsed(outcome.out);
  const auto& file = document["files"][0];
  EXPECT_EQ(file["counts"]["unknown-type"].GetInt(), 25);
  ASSERT_EQ(file["findings"].Size(), 25U);
  for (rapidjson::SizeType i = 1; i < 25; ++i) {
    EXPECT_LT(file["findings"][i - 1]["offset"].GetInt(), file["findings"][i]["offset"].GetInt());
  }
}

TEST(VerifyCommandTest, CountsWarningsAsErrorsOnRequest) {
  const std::string file = soundFile() + "more";
  EXPECT_EQ(inspectBytes(file, {"verify", "FILE"}).status, 0);
  const Outcome strict = inspectBytes(file, {"verify", "--strict", "FILE"});
  EXPECT_EQ(strict.status, 1);
  EXPECT_NE(strict.out.find(": error: "), std::string::npos);
  EXPECT_TRUE(strict.out.ends_with("FILE: unsound\n"));
  EXPECT_EQ(inspectBytes(soundFile(), {"verify", "--strict", "FILE"}).status, 0);
}

TEST(VerifyCommandTest, CountsChosenCodesAsErrors) {
  const std::string file = container({{SectionKind::Json, emptyJson()}});
  EXPECT_EQ(inspectBytes(file, {"verify", "--strict=gap,unnamed-kernel", "FILE"}).status, 0);
  EXPECT_EQ(inspectBytes(file, {"verify", "--strict=gap,no-kernels", "FILE"}).status, 1);
  EXPECT_EQ(inspectBytes(file, {"verify", "--strict=no-dwarf", "FILE"}),
            fails("FILE: warning: the file holds no kernel [no-kernels]\n"
                  "FILE: error: the file holds no DWARF [no-dwarf]\nFILE: unsound\n"));
}

TEST(VerifyCommandTest, RequiresWhatIsNamed) {
  EXPECT_EQ(inspectBytes(soundFile(), {"verify", "--require",
                                       "kernels,instances,dwarf,locations,project=proj", "FILE"}),
            holds("FILE: sound\n"));
  EXPECT_EQ(inspectBytes(soundFile(), {"verify", "--require=project=x", "FILE"}),
            fails("FILE: error: the project is not the required one [missing-project]\n"
                  "FILE: unsound\n"));
  const std::string file = container({{SectionKind::Json, emptyJson()}});
  EXPECT_EQ(inspectBytes(file, {"verify", "--require", "dwarf", "--require=kernels", "FILE"}),
            fails("FILE: warning: the file holds no kernel [no-kernels]\n"
                  "FILE: error: kernels are required, and there is none [missing-kernels]\n"
                  "FILE: error: DWARF is required, and there is none [missing-dwarf]\n"
                  "FILE: unsound\n"));
}

TEST(VerifyCommandTest, RefusesWordsThatItDoesNotKnow) {
  for (const std::string word :
       {"--strict=gaps", "--strict=gap,,no-dwarf", "--require=kernel", "--require="}) {
    const Outcome outcome = inspectBytes(soundFile(), {"verify", word, "FILE"});
    EXPECT_EQ(outcome.status, 2) << word;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(lines(outcome.err), 1U);
  }
  EXPECT_EQ(inspect({"verify"}).status, 2);
}

TEST(VerifyCommandTest, PrintsNothingOnRequest) {
  EXPECT_EQ(inspectBytes(soundFile(), {"verify", "--quiet", "FILE"}), holds(""));
  EXPECT_EQ(inspectBytes(soundFile().substr(0, 60), {"verify", "--quiet", "FILE"}), fails(""));
  EXPECT_EQ(inspectBytes("short", {"verify", "--quiet", "--format=json", "FILE"}),
            (Outcome{2, "", ""}));
}

TEST(VerifyCommandTest, TellsWhyAFileCannotBeRead) {
  EXPECT_EQ(inspectBytes("short", {"verify", "FILE"}),
            (Outcome{2,
                     "FILE:0x0: error: the file is shorter than the header of 16 bytes "
                     "[short-header]\nFILE: unreadable\n",
                     ""}));
  EXPECT_EQ(inspectBytes(std::string(20, 'x'), {"verify", "FILE"}),
            (Outcome{2,
                     "FILE:0x0: error: the file does not begin with the magic number "
                     "[wrong-magic]\nFILE: unreadable\n",
                     ""}));
  EXPECT_EQ(inspect({"verify", "/nowhere/a"}),
            (Outcome{2,
                     "/nowhere/a: error: No such file or directory [cannot-open]\n"
                     "/nowhere/a: unreadable\n",
                     ""}));
}

TEST(VerifyCommandTest, EndsWithTheHighestStatusOfSeveralFiles) {
  const TemporaryFolder folder;
  folder.write("sound", soundFile());
  folder.write("cut", soundFile().substr(0, 200));
  const auto statusOf = [&](const std::vector<std::string>& names) {
    std::vector<std::string> words{"verify", "--quiet"};
    for (const std::string& name : names) words.push_back(folder.path(name));
    return inspect(words).status;
  };
  EXPECT_EQ(statusOf({"sound", "sound"}), 0);
  EXPECT_EQ(statusOf({"cut", "sound"}), 1);
  EXPECT_EQ(statusOf({"none", "cut", "sound"}), 2);
}

TEST(VerifyCommandTest, WritesOneDocumentForAllFiles) {
  const TemporaryFolder folder;
  KernelRecord kernel = plainKernel("krnl");
  kernel.brams = {"r\xFF"};
  const std::string file = container(plainSections({kernel}));
  folder.write("a", file);
  const std::string a = folder.path("a");
  const std::string missing = folder.path("none");
  EXPECT_EQ(
      inspect({"verify", "--format", "json", a, missing}),
      (Outcome{2,
               "{\"format\":\"consolidator-verify/1\",\"files\":[{\"path\":\"" + a +
                   "\",\"verdict\":\"sound\",\"counts\":{\"text-not-utf8\":1,"
                   "\"json-not-strict\":1},\"findings\":[{\"code\":\"text-not-utf8\","
                   "\"severity\":\"warning\",\"section\":3,\"offset\":" +
                   std::to_string(file.size() - 1) +
                   ",\"kernel\":\"krnl\",\"message\":\"the name of a block RAM is not UTF-8\"},"
                   "{\"code\":\"json-not-strict\",\"severity\":\"note\",\"section\":2,\"offset\":" +
                   std::to_string(file.find('\xFF')) +
                   ",\"kernel\":null,\"message\":\"the JSON text stops being strict JSON, " +
                   std::to_string(file.find('\xFF') - offsetOfSection(plainSections(), 2)) +
                   " bytes into it\"}]},{\"path\":\"" + missing +
                   "\",\"verdict\":\"unreadable\",\"counts\":{\"cannot-open\":1},"
                   "\"findings\":[{\"code\":\"cannot-open\",\"severity\":\"error\","
                   "\"section\":null,\"offset\":null,\"kernel\":null,"
                   "\"message\":\"No such file or directory\"}]}]}\n",
               ""}));
}

TEST(VerifyCommandTest, ReadsAPipe) {
  const TemporaryFolder folder;
  folder.write("a", soundFile());
  EXPECT_EQ(startInspectScript("cat a | $INSPECT verify -", folder.path("")).outcome(),
            holds("-: sound\n"));
}

// Another process takes most of the file away while it is looked at.
TEST(VerifyCommandTest, SaysThatAFileWasCutWhileItWasRead) {
  const TemporaryFolder folder;
  std::vector<KernelRecord> kernels;
  for (int i = 0; i < 20'000; ++i) kernels.push_back(plainKernel("k" + std::to_string(i)));
  folder.write("whole", container(plainSections(kernels)));
  // Where the cut comes too early or too late, the file is just short, or whole; so try again.
  const Outcome outcome = startInspectScript(
                              "for delay in $(seq 1 200); do\n"
                              "  cp whole file\n"
                              "  { sleep 0.00$((delay % 10)); truncate -s 5000 file; } &\n"
                              "  $INSPECT verify --format json file >out 2>err; status=$?\n"
                              "  wait\n"
                              "  test $status = 2 && break\n"
                              "done\n"
                              "cat out; cat err >&2; exit $status",
                              folder.path(""))
                              .outcome();
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, said("file: cut while it was read"));
  const auto document = parsed(outcome.out);
  EXPECT_STREQ(document["files"][0]["verdict"].GetString(), "unreadable");
  EXPECT_EQ(document["files"][0]["counts"]["cut-while-read"].GetInt(), 1);
}

}  // namespace
}  // namespace consolidator::inspect
