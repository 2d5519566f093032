// Runs the tool and its explanation side by side.

#include "inspect/InspectRun.h"
#include "inspect/run/RunInputs.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <rapidjson/document.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;
using CommandLine = std::vector<std::string>;

// Sizes and times of all that is in a folder, and of the folder.
std::map<std::string, std::tuple<ino_t, off_t, time_t, long>> stampsIn(const std::string& folder) {
  std::map<std::string, std::tuple<ino_t, off_t, time_t, long>> found;
  const auto note = [&](const std::string& path) {
    struct stat status {};

    lstat(path.c_str(), &status);
    found[path] = {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  };
  note(folder);
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    note(entry.path().string());
  }
  return found;
}

// Expects that the explanation tells the status and the output of the run and touches nothing.
void expectSameRun(const CommandLine& words) {
  const TemporaryFolder folder;
  writeRunInputs(folder);
  CommandLine explain{"explain", "--format=json", "--"};
  explain.insert(explain.end(), words.begin(), words.end());
  const auto before = stampsIn(folder.path("."));
  const Outcome explained = startInspect(explain, folder.path("")).outcome();
  EXPECT_EQ(stampsIn(folder.path(".")), before);
  CommandLine line{"consolidator"};
  line.insert(line.end(), words.begin(), words.end());
  const Outcome real = ExecutableRun(CONSOLIDATOR_EXECUTABLE, line, folder.path("")).outcome();

  rapidjson::Document document;
  document.Parse(explained.out.c_str());
  ASSERT_TRUE(document.IsObject()) << explained;
  EXPECT_EQ(explained.status, 0);
  EXPECT_EQ(document["status"].GetInt(), real.status);
  EXPECT_EQ(document["stdout"].GetString(), std::string(real.out.c_str()));
  EXPECT_EQ(document["stderr"].GetString(), real.err);
}

std::string joinedWords(const CommandLine& words) {
  std::string text;
  for (const std::string& word : words) text += "[" + word + "] ";
  return text;
}

TEST(ExplainExecutable, TellsWhatTheRunPrints) {
  const std::vector<CommandLine> lines{
      {},
      {"--help"},
      {"--version"},
      {"-a", "-c"},
      {"-q"},
      {"-f", "made", "-f", "made"},
      {"-f", "made"},
      {"-k", "xml"},
      {"-f", "made", "-h", "h", "-p", "other"},
      {"-f", "newer", "-h", "h"},
      {"-f", "newer", "-j", "dump"},
      {"-f", "folder", "-h", "h"},
      {"-f", "missing/file", "-h", "h"},
      {"-f", "missing", "-j", "dump"},
      {"-f", "made", "-j", "/dev/stdout"},
      {"-f", "made", "-u", "/dev/stderr"},
      {"-f", "made", "-h", "refused.h", "-k", "refused.xml", "-x", "refused.aux"},
      {"-c", "-f", "made", "-k", "made"},
      {"-f", "dangling", "-k", "nowhere"},
      {"-f", "", "-h", "h"},
      {"-f", "[a,b]", "-h", "{}", "--", "h"},
  };
  for (const CommandLine& words : lines) {
    SCOPED_TRACE(joinedWords(words));
    expectSameRun(words);
  }
}

TEST(ExplainExecutable, TellsWhatAnyRunPrints) {
  const CommandLine files{
      "h",          "refused.h", "x.dbg", "xml",     "refused.xml", "refused.aux", "ll", "made",
      "newer",      "foreign",   "empty", "folder",  "dangling",    "link",        "",   "missing",
      "folder/new", "./made",    "made/", "nowhere", "h/file",      "/dev/null"};
  const CommandLine inputs{"-d", "-h", "-k", "-s", "-x", "-l", "-r"};
  const CommandLine others{"-a", "-c",        "--create", "--help", "-v",     "--",         "stray",
                           "-q", "--dump-js", "-u",       "-p",     "-pname", "--project=x"};
  std::mt19937 random(20240607);
  const auto pick = [&](const CommandLine& from) { return from[random() % from.size()]; };
  for (int round = 0; round < 500; ++round) {
    CommandLine words;
    if (random() % 10 > 0) words.insert(words.end(), {"-f", pick(files)});
    for (auto left = random() % 5; left > 0; --left) {
      words.insert(words.end(), {pick(inputs), pick(files)});
    }
    if (random() % 3 == 0) words.push_back(pick(others));
    if (random() % 3 == 0) words.push_back(pick(files));
    SCOPED_TRACE(joinedWords(words));
    expectSameRun(words);
  }
}

TEST(ExplainExecutable, TellsThatAFileCanOnlyBeAddedTo) {
  const TemporaryFolder folder;
  folder.write("h", "k:\n");
  const int file = ::open(folder.write("made", header(0)).c_str(), O_RDONLY | O_CLOEXEC);
  unsigned long flags = FS_APPEND_FL;
  const bool isSet = ::ioctl(file, FS_IOC_SETFLAGS, &flags) == 0;
  const Outcome explained =
      startInspect({"explain", "--", "-f", "made", "-h", "h"}, folder.path("")).outcome();
  const Outcome real = ExecutableRun(CONSOLIDATOR_EXECUTABLE,
                                     {"consolidator", "-f", "made", "-h", "h"}, folder.path(""))
                           .outcome();
  flags = 0;
  static_cast<void>(::ioctl(file, FS_IOC_SETFLAGS, &flags));
  ::close(file);
  if (!isSet) GTEST_SKIP() << "files cannot be made to be added to alone here";
  EXPECT_EQ(real, (Outcome{1, "", "Unable to open made\n"}));
  EXPECT_NE(explained.out.find("Unable to open made\nStatus: 1"), std::string::npos) << explained;
}

TEST(ExplainExecutable, IsStrictWhereItIsAskedTo) {
  const TemporaryFolder folder;
  writeRunInputs(folder);
  const auto status = [&](CommandLine words) {
    words.insert(words.begin(), "explain");
    return startInspect(words, folder.path("")).outcome().status;
  };
  EXPECT_EQ(status({"--", "-f", "new", "-h", "missing"}), 0);
  EXPECT_EQ(status({"--strict", "--", "-f", "new", "-h", "missing"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-f", "new", "-h", "refused.h"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-f", "folder", "-h", "h"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-f", "new"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-q"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-f", "foreign", "-h", "h"}), 1);
  EXPECT_EQ(status({"--strict", "--", "-f", "new", "-h", "h", "-h", "empty", "-r", "empty"}), 0);
  EXPECT_EQ(status({"--strict=nothing", "--", "-f", "new", "-h", "h", "-h", "empty"}), 1);
  EXPECT_EQ(status({"--strict=nothing", "--", "-f", "new", "-h", "h", "-r", "empty"}), 0);
  EXPECT_EQ(startInspect({"explain", "--strict=all", "--", "-q"}, folder.path("")).outcome(),
            (Outcome{2, "",
                     said("explain: --strict: it cannot be strict about \"all\" (see "
                          "\"consolidator-inspect explain --help\")")}));
}

TEST(ExplainExecutable, WantsTwoDashesBeforeTheCommandLine) {
  for (const CommandLine& words :
       std::vector<CommandLine>{{"-f", "x", "-h", "y"}, {"-h"}, {"-c", "--"}, {}}) {
    CommandLine line{"explain"};
    line.insert(line.end(), words.begin(), words.end());
    EXPECT_EQ(startInspect(line, "/").outcome(),
              (Outcome{2, "",
                       "consolidator-inspect: explain: the command line of consolidator has to "
                       "follow \"--\" (see \"consolidator-inspect explain --help\")\n"}))
        << joinedWords(words);
  }
}

TEST(ExplainExecutable, ShowsItsHelpWithoutTheOptionsOfTheTool) {
  const Outcome outcome = startInspect({"explain", "--help"}, "/").outcome();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("--strict [=nothing]"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("explain [OPTIONS] -- -f FILE"), std::string::npos) << outcome.out;
}

// A link leads to a link, and so on; the last one names a file that is missing.
TEST(ExplainExecutable, FollowsAsManyLinksAsTheSystem) {
  for (const int count : {1, 39, 40, 41}) {
    const TemporaryFolder folder;
    folder.write("h", "k:\n");
    std::string target = "new";
    for (int i = 1; i <= count; ++i) {
      const std::string link = "link" + std::to_string(i);
      fs::create_symlink(target, folder.path(link));
      target = link;
    }
    const CommandLine words{"-f", target, "-h", "h"};
    CommandLine explain{"explain", "--"};
    CommandLine line{"consolidator"};
    explain.insert(explain.end(), words.begin(), words.end());
    line.insert(line.end(), words.begin(), words.end());
    const Outcome explained = startInspect(explain, folder.path("")).outcome();
    const Outcome real = ExecutableRun(CONSOLIDATOR_EXECUTABLE, line, folder.path("")).outcome();
    EXPECT_EQ(real.status, count <= 40 ? 0 : 1) << count;
    EXPECT_EQ(folder.holds("new"), count <= 40) << count;
    EXPECT_NE(explained.out.find("Status: " + std::to_string(real.status) + "\n"),
              std::string::npos)
        << count << explained;
  }
}

TEST(ExplainExecutable, TellsWhatARunIntoAPipePrints) {
  const TemporaryFolder folder;
  folder.write("h", "k:\n");
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  const std::string options = " -f pipe -h h";
  // Without and with a program that reads the pipe.
  for (const std::string start : {"", "exec 3<>pipe; "}) {
    const auto outcomeOf = [&](const std::string& command) {
      return startInspectScript(start + command, folder.path("")).outcome();
    };
    const Outcome real = outcomeOf("$CONSOLIDATOR" + options);
    const Outcome explained = outcomeOf("$INSPECT explain --" + options);
    EXPECT_EQ(explained.status, 0);
    EXPECT_NE(explained.out.find("Status: " + std::to_string(real.status) + "\n"),
              std::string::npos)
        << explained << real;
    for (const std::string& line : {real.out, real.err}) {
      EXPECT_NE(explained.out.find(line.substr(0, line.find('\n'))), std::string::npos)
          << explained << real;
    }
  }
}

TEST(ExplainExecutable, NamesDoubtfulNetsInItsDocument) {
  const TemporaryFolder folder;
  folder.write("h", "k:\n type: hls\n instance path: /t/k_1\n instance path: /t/k_10\n");
  folder.write("k.dbg", "RTL a b c\nlocal i\nat k.c:1\nend i_r\n");
  folder.write("ll", "Bit 1 0x2 3 d 4 Net=t/k_10/i_r\n");
  const Outcome explained = startInspect({"explain", "--format=json", "--", "-f", "new", "-h", "h",
                                          "-s", "k.dbg", "-l", "ll"},
                                         folder.path(""))
                                .outcome();
  EXPECT_NE(explained.out.find(R"("doubtful":[{"kernel":"k","instance":"/t/k_1",)"
                               R"("net":"/t/k_10/i_r","count":1,"first_line":1}])"),
            std::string::npos)
      << explained;
}

}  // namespace
}  // namespace consolidator::inspect
