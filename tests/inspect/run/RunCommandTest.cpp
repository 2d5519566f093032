#include "inspect/InspectRun.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class RunCommandTest : public testing::Test {
 protected:
  RunCommandTest() {
    folder_.write("h", "k:\n type: hls\n instance path: /t/k_1\n");
    folder_.write("other.h", "m:\n type: c\n");
    folder_.write("refused.xml", "<project>\n <kernel\n");
    folder_.write("made", container({{SectionKind::ProjectName, "name"},
                                     {SectionKind::Dwarf, "dwarf"},
                                     {SectionKind::Json, emptyJson()}}));
  }

  // Runs with the tool's options, of which words of the form "@name" are files in the folder;
  // the folder's name is left out of what is printed.
  Outcome run(const Words& words, Words own = {}) const {
    own.insert(own.begin(), "run");
    own.emplace_back("--");
    for (const std::string& word : words) {
      own.push_back(word.starts_with('@') ? folder_.path(word.substr(1)) : word);
    }
    Outcome outcome = inspect(own);
    for (std::string* text : {&outcome.out, &outcome.err}) {
      for (std::size_t at = 0; (at = text->find(folder_.path(""), at)) != std::string::npos;) {
        text->erase(at, folder_.path("").size());
      }
    }
    return outcome;
  }

  // Expects that a file and its folder are untouched by a run that ends with this status and says
  // this.
  void expectNothing(int status, const std::string& message, const Words& words,
                     const std::string& file = "made") const {
    const std::string before = folder_.read(file);
    const auto count = fileCount();
    EXPECT_EQ(run(words), (Outcome{status, "", message}));
    EXPECT_EQ(folder_.read(file), before);
    EXPECT_EQ(fileCount(), count);
  }

  std::ptrdiff_t fileCount() const {
    return std::distance(fs::directory_iterator(folder_.path("")), fs::directory_iterator());
  }

  // The tool's run with the same options on another file.
  void runTool(const Words& words) const {
    Words line{"consolidator"};
    line.insert(line.end(), words.begin(), words.end());
    EXPECT_EQ(ExecutableRun(CONSOLIDATOR_EXECUTABLE, line, folder_.path("")).outcome().status, 0);
  }

  TemporaryFolder folder_;
};

TEST_F(RunCommandTest, MakesTheFileThatTheToolMakes) {
  EXPECT_EQ(run({"-f", "@new", "-p", "name", "-h", "@h"}),
            holds("new: written, 298 bytes; 1 input used\n"));
  runTool({"-f", "tool", "-p", "name", "-h", "h"});
  EXPECT_EQ(folder_.read("new"), folder_.read("tool"));
}

TEST_F(RunCommandTest, AddsWhatTheToolAdds) {
  folder_.write("tool", folder_.read("made"));
  EXPECT_EQ(run({"-f", "@made", "-h", "@h", "-h", "@other.h"}).status, 0);
  runTool({"-f", "tool", "-h", "h", "-h", "other.h"});
  EXPECT_EQ(folder_.read("made"), folder_.read("tool"));
}

TEST_F(RunCommandTest, LeavesNothingElse) {
  const auto count = fileCount();
  EXPECT_EQ(run({"-f", "@made", "-h", "@h"}).status, 0);
  EXPECT_EQ(fileCount(), count);
}

TEST_F(RunCommandTest, NamesFileAndReasonOfAnInputThatIsMissing) {
  expectNothing(1, said("missing: skipped: No such file or directory") + said("made: not changed"),
                {"-f", "@made", "-h", "@missing"});
  expectNothing(1, said("missing: skipped: No such file or directory") + said("new: not made"),
                {"-f", "@new", "-h", "@missing"});
}

TEST_F(RunCommandTest, NamesFileAndLineAndReasonOfAnInputThatIsBroken) {
  const std::string before = folder_.read("made");
  const Outcome outcome = run({"-f", "@made", "-h", "@h", "-k", "@refused.xml"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("consolidator-inspect: refused.xml:2: refused: "), std::string::npos)
      << outcome;
  EXPECT_NE(outcome.err.find("unclosed token"), std::string::npos) << outcome;
  EXPECT_EQ(folder_.read("made"), before);
}

TEST_F(RunCommandTest, DoesWhatIsAllowed) {
  EXPECT_EQ(run({"-f", "@made", "-h", "@h", "-h", "@missing"}, {"--allow", "skipped"}).status, 0);
  EXPECT_EQ(run({"-f", "@made", "-k", "@refused.xml"}, {"--allow=skipped"}).status, 1);
  EXPECT_EQ(run({"-f", "@made", "-k", "@refused.xml"}, {"--allow=skipped,refused"}),
            (Outcome{0, "made: written, 327 bytes; 0 inputs used, 1 without effect\n",
                     said("Could not parse kernel file")}));
}

TEST_F(RunCommandTest, RefusesCodesThatDoNotExist) {
  EXPECT_EQ(run({"-f", "@made"}, {"--allow", "skiped"}).err,
            said("run: --allow: there is no code \"skiped\" (see \"consolidator-inspect run "
                 "--help\")"));
}

TEST_F(RunCommandTest, KeepsTheFileOfAnotherProject) {
  expectNothing(1,
                said("Error: consolidated file made has meta-data for project name, not specified "
                     "project other") +
                    said("made: refused: the file belongs to another project and is emptied "
                         "[project-differs]") +
                    said("made: consolidator ends with status 1") + said("made: not changed"),
                {"-f", "@made", "-p", "other", "-h", "@h"});
}

TEST_F(RunCommandTest, KeepsTheFileOfANewerVersion) {
  folder_.write("newer", header(0, 2, 3));
  const std::string before = folder_.read("newer");
  EXPECT_EQ(run({"-f", "@newer", "-h", "@h"}, {"--allow=version-unsupported"}).status, 1);
  EXPECT_EQ(folder_.read("newer"), before);
}

TEST_F(RunCommandTest, KeepsADamagedFileUnlessTheLossIsAllowed) {
  const std::string whole = fullContainer();
  const std::string damaged = whole.substr(0, whole.size() - 5);
  folder_.write("damaged", damaged);
  folder_.write("tool", damaged);
  EXPECT_EQ(run({"-f", "@damaged", "-h", "@h"}).status, 1);
  EXPECT_EQ(folder_.read("damaged"), damaged);
  const Outcome allowed =
      run({"-f", "@damaged", "-h", "@h"},
          {"--allow=damaged,condition-decays,condition-removed,duplicate-condition"});
  runTool({"-f", "tool", "-h", "h"});
  EXPECT_EQ(folder_.read("damaged"), allowed.status == 0 ? folder_.read("tool") : damaged);
}

TEST_F(RunCommandTest, DoesNotMakeAFileThatIsNotSound) {
  const std::string foreign = "abcd" + container({}).substr(4);
  folder_.write("foreign", foreign);
  const Outcome outcome = run({"-f", "@foreign", "-h", "@h"}, {"--allow=foreign-magic"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(
      outcome.err.starts_with("consolidator-inspect: foreign: the result would not be sound: "))
      << outcome.err;
  EXPECT_EQ(folder_.read("foreign"), foreign);
}

TEST_F(RunCommandTest, RefusesAnInputThatIsTheFile) {
  fs::create_symlink("made", folder_.path("link"));
  const std::string why = "is the consolidated file itself, which is no input of its own";
  expectNothing(2, said("made: " + why), {"-f", "@link", "-k", "@made"});
  expectNothing(2, said("link: " + why), {"-f", "@made", "-h", "@h", "-l", "@link"});
  expectNothing(2, said("./new: " + why), {"-f", "@new", "-d", "@./new"});
}

TEST_F(RunCommandTest, FollowsSymbolicLinks) {
  fs::create_symlink("made", folder_.path("link"));
  fs::create_symlink("new", folder_.path("dangling"));
  EXPECT_EQ(run({"-f", "@link", "-h", "@h"}).status, 0);
  EXPECT_EQ(run({"-f", "@dangling", "-h", "@h"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
  EXPECT_TRUE(fs::is_symlink(folder_.path("dangling")));
  EXPECT_TRUE(folder_.holds("new"));
}

TEST_F(RunCommandTest, RefusesFilesThatCannotBeReplaced) {
  fs::create_hard_link(folder_.path("made"), folder_.path("twin"));
  expectNothing(2, said("twin: has several names (hard links), of which one alone would change"),
                {"-f", "@twin", "-h", "@h"});
  fs::create_directory(folder_.path("below"));
  expectNothing(2, said("below: is no regular file"), {"-f", "@below", "-h", "@h"});
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(run({"-f", "@pipe", "-h", "@h"}), (Outcome{2, "", said("pipe: is no regular file")}));
  EXPECT_EQ(run({"-f", "/dev/full", "-h", "@h"}),
            (Outcome{2, "", said("/dev/full: is no regular file")}));
  expectNothing(2, said("nowhere/new: cannot be locked: No such file or directory"),
                {"-f", "@nowhere/new", "-h", "@h"});
}

TEST_F(RunCommandTest, KeepsOwnerAndMode) {
  const std::string path = folder_.path("made");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const bool isRoot = ::getuid() == 0;
  if (isRoot) {
    ASSERT_EQ(::chown(path.c_str(), 1234, 1235), 0);
  }
  EXPECT_EQ(run({"-f", "@made", "-h", "@h"}).status, 0);

  struct stat now {};

  ASSERT_EQ(::stat(path.c_str(), &now), 0);
  EXPECT_EQ(now.st_mode & 07777U, 0640U);
  if (!isRoot) GTEST_SKIP() << "owners are for root to give";
  EXPECT_EQ(now.st_uid, 1234U);
  EXPECT_EQ(now.st_gid, 1235U);
}

TEST_F(RunCommandTest, RefusesAFileWhoseOwnerCannotBeKept) {
  if (::getuid() != 0) GTEST_SKIP() << "owners are for root to give";
  const std::string before = folder_.read("made");
  fs::permissions(folder_.path(""), fs::perms::all);
  fs::permissions(folder_.path("made"), fs::perms(0666));
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    if (::setgid(nobody) != 0 || ::setuid(nobody) != 0) ::_exit(99);
    const Outcome outcome = run({"-f", "@made", "-h", "@h"});
    const bool isRight = outcome.err == said(
                                            "made: has an owner, a mode or attributes that a new "
                                            "file cannot be given");
    ::_exit(isRight ? outcome.status : 98);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 2);
  EXPECT_EQ(folder_.read("made"), before);
}

TEST_F(RunCommandTest, LeavesAnEqualFileAloneIfAskedTo) {
  ASSERT_EQ(run({"-f", "@made", "-h", "@h"}).status, 0);

  struct stat before {};

  struct stat after {};

  const std::string path = folder_.path("made");
  ASSERT_EQ(::stat(path.c_str(), &before), 0);
  const Words words{"-f", "@made", "-h", "@h"};
  EXPECT_EQ(run(words, {"--keep-if-equal"}),
            holds("made: left alone, since it would be equal; 0 inputs used, 1 without effect\n"));
  ASSERT_EQ(::stat(path.c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  ASSERT_EQ(run(words).status, 0);
  ASSERT_EQ(::stat(path.c_str(), &after), 0);
  EXPECT_NE(after.st_ino, before.st_ino);
  EXPECT_EQ(run({"-f", "@made", "-h", "@other.h"}, {"--keep-if-equal"}).out,
            "made: written, 484 bytes; 1 input used\n");
}

TEST_F(RunCommandTest, PrintsNoSummaryIfAskedTo) {
  EXPECT_EQ(run({"-f", "@new", "-h", "@h"}, {"--quiet"}), holds(""));
}

TEST_F(RunCommandTest, Dumps) {
  folder_.write("dump", "old");
  EXPECT_EQ(run({"-f", "@made", "-u", "@dump"}), holds("dump: 5 bytes dumped from made\n"));
  EXPECT_EQ(folder_.read("dump"), "dwarf");
  EXPECT_EQ(run({"-f", "@made", "-j", "@dump"}), holds("dump: 22 bytes dumped from made\n"));
  EXPECT_EQ(folder_.read("dump"), emptyJson());
}

TEST_F(RunCommandTest, KeepsADumpThatWouldBeEmptyOrShort) {
  folder_.write("dump", "old");
  folder_.write("bare", container({{SectionKind::ProjectName, "name"}}));
  expectNothing(1, said("bare: refused: the file has no such section [dump-empty]"),
                {"-f", "@bare", "-u", "@dump"}, "dump");
  folder_.write("hollow", container({{SectionKind::Dwarf, ""}}));
  expectNothing(1, said("hollow: the section is empty"), {"-f", "@hollow", "-u", "@dump"}, "dump");
  const std::string whole = folder_.read("made");
  folder_.write("short", whole.substr(0, whole.size() - 1));
  expectNothing(1, said("short: refused: the section lies outside the file [dump-empty]"),
                {"-f", "@short", "-j", "@dump"}, "dump");
  EXPECT_EQ(run({"-f", "@bare", "-u", "@dump"}, {"--allow=dump-empty"}).status, 0);
  EXPECT_EQ(folder_.read("dump"), "");
}

TEST_F(RunCommandTest, RefusesDumpsThatTheToolCannotMake) {
  expectNothing(2, said("made: the dump would empty the file that it is to read"),
                {"-f", "@made", "-u", "@made"});
  expectNothing(1,
                said("made: refused: b is not written, since DWARF is "
                     "dumped [dump-not-written]"),
                {"-f", "@made", "-u", "@a", "-j", "@b"});
  expectNothing(2, said("nowhere/dump: No such file or directory"),
                {"-f", "@made", "-u", "@nowhere/dump"});
  expectNothing(2, said("/dev/full: No space left on device"), {"-f", "@made", "-u", "/dev/full"});
  expectNothing(1,
                said("Unable to open missing") + said("missing: consolidator ends with status 1"),
                {"-f", "@missing", "-u", "@dump"});
}

TEST_F(RunCommandTest, AnswersAsTheToolDoes) {
  EXPECT_EQ(run({"--version"}), holds("Consolidated version: 1.1\n"
                                      "Supported hierarchy version: 1\n"));
  EXPECT_EQ(run({"--help"}).status, 0);
  EXPECT_TRUE(run({"--help"}).out.starts_with("Usage: consolidator [options]"));
}

TEST_F(RunCommandTest, FailsWhereAnAnswerStandsForTheWork) {
  const std::string why = said("consolidator answers this command line with its usage");
  EXPECT_EQ(run({"-q"}), (Outcome{1, "Unknown option: unrecognised option '-q'\n", why}));
  EXPECT_EQ(run({"-f", "@made"}).status, 1);
  EXPECT_EQ(run({"-f", "@new", "-h", "@h", "--help"}).status, 1);
  EXPECT_EQ(run({"-f", "@new", "-h", "@h", "--version"}).status, 1);
  EXPECT_FALSE(folder_.holds("new"));
  EXPECT_EQ(run({"-f", "@made", "-j", "", "-h", "@h"}).status, 1);
  EXPECT_EQ(run({}, {"--format=xml"}).status, 2);
}

TEST_F(RunCommandTest, WritesTheDocumentOfExplainAndWhatCameOfIt) {
  const auto parsed = [&](const Words& words) {
    rapidjson::Document document;
    document.Parse(run(words, {"--format=json"}).out.c_str());
    return document;
  };
  const auto done = parsed({"-f", "@new", "-h", "@h"});
  ASSERT_TRUE(done.IsObject());
  EXPECT_EQ(done.MemberBegin()->value, "consolidator-run/1");
  EXPECT_EQ(done["inputs"][0]["outcome"], "used");
  EXPECT_TRUE(done["done"].GetBool());
  EXPECT_TRUE(done["reason"].IsNull());
  EXPECT_TRUE(parsed({"--version"})["done"].GetBool());
  const auto failed = parsed({"-f", "@new", "-h", "@missing"});
  ASSERT_TRUE(failed.IsObject());
  EXPECT_FALSE(failed["done"].GetBool());
  EXPECT_EQ(failed["reason"], "missing: skipped: No such file or directory");
  const auto refused = parsed({"-f", "@new", "-h", "@new"});
  ASSERT_TRUE(refused.IsObject());
  EXPECT_EQ(refused["error"]["code"], "usage");
}

// So much is written to the disk while the run goes on.
TEST_F(RunCommandTest, WritesLargeFilesAsTheToolDoes) {
  std::string dwarf(20'000'000, 'd');
  for (std::size_t i = 0; i < dwarf.size(); i += 1000) dwarf[i] = static_cast<char>(i / 1000);
  folder_.write("dwarf", dwarf);
  EXPECT_EQ(run({"-f", "@new", "-d", "@dwarf", "-h", "@h"}).status, 0);
  runTool({"-f", "wanted", "-d", "dwarf", "-h", "h"});
  EXPECT_TRUE(folder_.read("new") == folder_.read("wanted"));
}

TEST_F(RunCommandTest, LeavesTheOldFileWhereThereIsNoRoomForTheNewOne) {
  const auto onLimit = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit limit{100, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  const std::string old = folder_.read("made");
  const auto count = fileCount();
  const int status = run({"-f", "@made", "-h", "@h"}).status;
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  static_cast<void>(std::signal(SIGXFSZ, onLimit));
  EXPECT_EQ(status, 2);
  EXPECT_EQ(folder_.read("made"), old);
  EXPECT_EQ(fileCount(), count);
}

}  // namespace
}  // namespace consolidator::inspect
