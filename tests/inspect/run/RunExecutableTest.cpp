// What goes wrong around a run: kills, full disks, other processes.

#include "inspect/InspectRun.h"
#include "inspect/run/RunInputs.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

std::string kernel(const std::string& name) {
  return name + ":\n type: hls\n instance path: /t/" + name + "_1\n";
}

std::string manyKernels(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += kernel("kernel_" + std::to_string(i));
  return text;
}

Outcome runTool(const Words& words, const TemporaryFolder& folder) {
  Words line{"consolidator"};
  line.insert(line.end(), words.begin(), words.end());
  return ExecutableRun(CONSOLIDATOR_EXECUTABLE, line, folder.path("")).outcome();
}

pid_t startRun(const TemporaryFolder& folder, const std::string& input) {
  const pid_t process = ::fork();
  if (process != 0) return process;
  if (::chdir(folder.path("").c_str()) == 0) {
    ::execl(CONSOLIDATOR_INSPECT_EXECUTABLE, "consolidator-inspect", "run", "--quiet", "--", "-f",
            "file", "-h", input.c_str(), nullptr);
  }
  ::_exit(127);
}

std::ptrdiff_t countFiles(const TemporaryFolder& folder) {
  return std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator());
}

TEST(RunExecutable, LeavesTheOldFileOrTheNewOneWheneverItIsKilled) {
  const TemporaryFolder folder;
  folder.write("h", manyKernels(20'000));
  folder.write("more", kernel("one_more"));
  ASSERT_EQ(runTool({"-f", "file", "-h", "h"}, folder).status, 0);
  const std::string old = folder.read("file");
  const auto start = Clock::now();
  int status = -1;
  ASSERT_GT(::waitpid(startRun(folder, "more"), &status, 0), 0);
  ASSERT_EQ(status, 0);
  auto whole = Clock::now() - start;
  const std::string made = folder.read("file");
  const auto files = countFiles(folder);
  ASSERT_NE(made, old);
  constexpr int moments = 50;
  int killed = 0;
  for (int i = 0; killed < moments; ++i) {
    folder.write("file", old);
    const pid_t process = startRun(folder, "more");
    std::this_thread::sleep_for(whole * (i % moments) / moments);
    ::kill(process, SIGKILL);
    ASSERT_EQ(::waitpid(process, &status, 0), process);
    if (WIFSIGNALED(status)) {
      ++killed;
    } else {
      whole -= whole / 10;  // the first run took longer than usual
    }
    const std::string left = folder.read("file");
    EXPECT_TRUE(left == old || left == made) << "at moment " << i << ": " << left.size();
  }
  ASSERT_GT(::waitpid(startRun(folder, "more"), &status, 0), 0);
  EXPECT_EQ(folder.read("file"), made);
  EXPECT_EQ(countFiles(folder), files) << "something is left";
}

TEST(RunExecutable, LeavesTheOldFileWhereTheDiskIsFull) {
  const TemporaryFolder folder;
  folder.write("h", manyKernels(2000));
  folder.write("more", kernel("one_more"));
  ASSERT_EQ(runTool({"-f", "file", "-h", "h"}, folder).status, 0);
  const std::string script =
      "mkdir -p disk\n"
      "exec unshare --map-root-user --mount bash -c '"
      "mount -t tmpfs -o size=$SIZE none disk || exit 77\n"
      "cp file disk || exit\n"
      "$INSPECT run --quiet -- -f disk/file -h more\n"
      "status=$?\n"
      "cmp file disk/file > differs\n"
      "ls -A disk\n"
      "exit $status'";
  const auto runWithRoom = [&](std::size_t bytes) {
    const std::size_t size = folder.read("file").size() + bytes;
    return startInspectScript("export INSPECT SIZE=" + std::to_string(size) + "\n" + script,
                              folder.path(""))
        .outcome();
  };
  const Outcome ample = runWithRoom(1'000'000);
  if (ample.status == 77 || ample.err.starts_with("unshare: ")) {
    GTEST_SKIP() << "no disk can be mounted here: " << ample.err;
  }
  EXPECT_EQ(ample, holds("file\n"));
  EXPECT_NE(folder.read("differs"), "");
  for (const std::size_t room : {0U, 4096U, 50'000U, 200'000U}) {
    EXPECT_EQ(runWithRoom(room),
              (Outcome{2, "file\n", said("disk/file: No space left on device")}));
    EXPECT_EQ(folder.read("differs"), "") << "with " << room << " bytes left";
  }
}

TEST(RunExecutable, LeavesTheOldFileWhereFilesMayNotGrow) {
  const TemporaryFolder folder;
  folder.write("h", manyKernels(2000));
  folder.write("more", kernel("one_more"));
  ASSERT_EQ(runTool({"-f", "file", "-h", "h"}, folder).status, 0);
  const std::string old = folder.read("file");
  for (const int blocks : {0, 1, 7, 100}) {
    const std::string limit = "ulimit -f " + std::to_string(blocks);
    EXPECT_EQ(
        startInspectScript(limit + "; $INSPECT run -- -f file -h more", folder.path("")).outcome(),
        (Outcome{2, "", said("file: File too large")}));
    EXPECT_EQ(folder.read("file"), old);
  }
  EXPECT_EQ(countFiles(folder), 3);
}

TEST(RunExecutable, RunsOnOneFileWaitForOneAnother) {
  const TemporaryFolder folder;
  constexpr int runs = 12;
  for (int i = 0; i < runs; ++i) {
    const std::string name = "kernel_" + std::to_string(i);
    startRun(folder, folder.write(name, kernel(name)));
  }
  for (int i = 0; i < runs; ++i) {
    int status = -1;
    EXPECT_GT(::wait(&status), 0);
    EXPECT_EQ(status, 0);
  }
  const Outcome verified = startInspect({"verify", "--strict", "file"}, folder.path("")).outcome();
  EXPECT_EQ(verified.status, 0) << verified;
  for (int i = 0; i < runs; ++i) {
    EXPECT_EQ(startInspect({"find", "file", "kernel_" + std::to_string(i)}, folder.path(""))
                  .outcome()
                  .status,
              0);
  }
  EXPECT_EQ(countFiles(folder), runs + 1);
}

TEST(RunExecutable, LeavesAFileThatIsReplacedMeanwhile) {
  const TemporaryFolder folder;
  folder.write("h", kernel("k"));
  ASSERT_EQ(runTool({"-f", "file", "-h", "h"}, folder).status, 0);
  folder.write("other", "theirs");
  const Outcome outcome = startInspectScript(
                              "mkfifo pipe\n"
                              "$INSPECT run -- -f file -h pipe &\n"
                              "exec 3> pipe\n"  // which waits until the run reads it
                              "mv other file\n"
                              "cat h >&3\n"
                              "exec 3>&-\n"
                              "wait $!\n",
                              folder.path(""))
                              .outcome();
  EXPECT_EQ(outcome, (Outcome{1, "", said("file: was changed by somebody else meanwhile")}));
  EXPECT_EQ(folder.read("file"), "theirs");
}

TEST(RunExecutable, ReadsInputsOnce) {
  const TemporaryFolder folder;
  folder.write("h", kernel("k"));
  EXPECT_EQ(
      startInspectScript("$INSPECT run -- -f file -h <(cat h)", folder.path("")).outcome().status,
      0);
  ASSERT_EQ(runTool({"-f", "tool", "-h", "h"}, folder).status, 0);
  EXPECT_EQ(folder.read("file"), folder.read("tool"));
}

TEST(RunExecutable, DumpsToStandardOutput) {
  const TemporaryFolder folder;
  folder.write("made", container({{SectionKind::Dwarf, "dwarf"}}));
  const auto dump = [&](const std::string& script) {
    return startInspectScript("$INSPECT run " + script, folder.path("")).outcome();
  };
  EXPECT_EQ(dump("-- -f made -u /dev/stdout"), holds("dwarf"));
  EXPECT_EQ(dump("-- -f made -u /dev/stdout > out; cat out"), holds("dwarf"));
  EXPECT_EQ(dump("-- -f made -u /dev/stdout > /dev/full").status, 2);
  EXPECT_NE(dump("--format=json -- -f made -u /dev/stdout").out.find("\"stdout\":\"dwarf\""),
            std::string::npos);
}

TEST(RunExecutable, DumpsToStandardError) {
  const TemporaryFolder folder;
  folder.write("made", container({{SectionKind::Dwarf, std::string("d\n\0\1", 4)}}));
  const auto dump = [&](const std::string& script) {
    return startInspectScript("$INSPECT run --quiet -- -f made -u /dev/stderr " + script,
                              folder.path(""))
        .outcome();
  };
  EXPECT_EQ(dump("").err, std::string("d\n\0\1", 4));
  EXPECT_EQ(dump("2> out; cat out"), holds(std::string("d\n\0\1", 4)));
  EXPECT_EQ(dump("2> /dev/full").status, 2);
}

TEST(RunExecutable, NoticesThatItsSummaryCannotBeWritten) {
  const TemporaryFolder folder;
  folder.write("h", kernel("k"));
  EXPECT_EQ(
      startInspectScript("$INSPECT run -- -f file -h h > /dev/full", folder.path("")).outcome(),
      (Outcome{2, "", said("standard output: No space left on device")}));
  EXPECT_TRUE(folder.holds("file"));
}

const Words& consolidatedFiles() {
  static const Words names{"made", "newer", "foreign", "empty", "nowhere", "new"};
  return names;
}

// What is done is what the tool does; what is not done changes nothing.
TEST(RunExecutable, DoesWhatTheToolDoesOrNothing) {
  const Words files{"h",    "refused.h", "x.dbg", "xml",    "refused.xml", "ll",      "made",
                    "link", "newer",     "empty", "folder", "dangling",    "foreign", "new"};
  const Words inputs{"-d", "-h", "-h", "-k", "-s", "-x", "-l", "-r"};
  const Words others{"-a", "-c", "-v", "-q", "-p", "-pname", "--project=x", "-u"};
  const std::string allowed =
      "--allow=skipped,refused,damaged,foreign-magic,dwarf-differs,locations-differ,"
      "condition-decays,duplicate-condition,condition-removed";
  std::mt19937 random(20240608);
  const auto pick = [&](const Words& from) { return from[random() % from.size()]; };
  int done = 0;
  for (int round = 0; round < 300; ++round) {
    Words words{"-f", random() % 5 == 0 ? pick(files) : pick({"made", "new", "link", "empty"})};
    for (auto left = random() % 4 + 1; left > 0; --left) {
      words.insert(words.end(), {pick(inputs), pick(files)});
    }
    if (random() % 3 == 0) words.push_back(pick(others));
    if (random() % 5 == 0) words.push_back(pick(files));
    const TemporaryFolder real;
    const TemporaryFolder safe;
    const TemporaryFolder before;
    for (const TemporaryFolder* folder : {&real, &safe, &before}) writeRunInputs(*folder);
    Words line{"run", allowed, "--"};
    line.insert(line.end(), words.begin(), words.end());
    const Outcome outcome = startInspect(line, safe.path("")).outcome();
    EXPECT_GE(outcome.status, 0);
    EXPECT_LE(outcome.status, 2);
    if (outcome.status == 0) {
      ++done;
      EXPECT_EQ(runTool(words, real).status, 0);
    }
    for (const std::string& name : consolidatedFiles()) {
      EXPECT_EQ(safe.read(name), (outcome.status == 0 ? real : before).read(name)) << name;
      EXPECT_EQ(safe.holds(name), (outcome.status == 0 ? real : before).holds(name)) << name;
    }
    if (::testing::Test::HasFailure()) {
      for (const std::string& word : words) ADD_FAILURE() << word;
      break;
    }
  }
  EXPECT_GT(done, 50);
}

}  // namespace
}  // namespace consolidator::inspect
