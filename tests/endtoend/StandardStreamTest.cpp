// Runs whose standard streams are closed, full or read by nobody: messages are lost then, and
// nothing else changes.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "endtoend/TimedRun.h"
#include "endtoend/UsageText.h"

#include <string>

namespace consolidator {
namespace {

class StandardStreamTest : public ExecutableTest {
 protected:
  void SetUp() override {
    write("h", "k:");
    write("bad.xml", "<project>");
  }

  // Expects that a run which is redirected in this way creates a file and reports an input often
  // enough for the file to be shorter than the messages.
  void expectFile(const std::string& redirections, const std::string& complaint) const {
    SCOPED_TRACE(redirections);
    std::string inputs;
    for (int i = 0; i < reports_; ++i) inputs += "-k bad.xml ";
    EXPECT_EQ(runScript(timed + "-c -f out -h h -p p " + inputs + redirections),
              complained(complaint));
    EXPECT_TRUE(folderHolds(
        {{"h", "k:"},
         {"bad.xml", "<project>"},
         {"out", container({projectSection("p"), jsonSection(kernelJson("k", "Unknown")),
                            recordsSection({kernelRecord("k", 3)})})}}));
  }

  // What a run prints that reports an input so often.
  static std::string complaint() {
    std::string text;
    for (int i = 0; i < reports_; ++i) text += "Could not parse kernel file\n";
    return text;
  }

 private:
  static constexpr int reports_ = 30;
};

// A file that takes the number of a closed stream would be sent the messages.
TEST_F(StandardStreamTest, NoMessageEntersAFileWhenStreamsAreClosed) {
  expectFile("<&-", complaint());
  expectFile(">&-", complaint());
  expectFile("<&- >&-", complaint());
  for (const std::string others : {"", "<&- ", ">&- ", "<&- >&- "}) expectFile(others + "2>&-", "");
}

TEST_F(StandardStreamTest, NoDumpIsMixedWithMessagesWhenStreamsAreClosed) {
  const std::string newer = container({jsonSection("")}, 2, 0);
  write("newer", newer);
  write("out", container({jsonSection("")}));
  EXPECT_EQ(runScript(timed + "-f newer --dump-json json <&- >&- 2>&-"), failed(""));
  EXPECT_EQ(read("newer"), newer);
  EXPECT_EQ(runScript(timed + "-f out --dump-json json <&- >&- 2>&-"), silence());
  EXPECT_EQ(read("json"), emptyJson());
}

TEST_F(StandardStreamTest, AClosedStreamIsNoFileOfADump) {
  write("out", container({jsonSection("")}));
  EXPECT_EQ(runScript(timed + "-f out --dump-json /dev/stdout >&-"), silence());
  EXPECT_EQ(runScript(timed + "-f out --dump-json /dev/stderr 2>&-"), silence());
  EXPECT_EQ(runScript(timed + "-f /dev/stdin --dump-json json <&-"),
            failed("Unable to open /dev/stdin\n"));
}

TEST_F(StandardStreamTest, FullStreamsChangeNoStatus) {
  for (const std::string stream : {">/dev/full", ">&-"}) {
    EXPECT_EQ(runScript(timed + "--help " + stream), silence());
    EXPECT_EQ(runScript(timed + "--version " + stream), silence());
    EXPECT_EQ(runScript(timed + "--nonsense " + stream), silence());
    EXPECT_EQ(runScript(timed + "-a -c " + stream), silence());
    EXPECT_EQ(runScript(timed + "-f missing/out -h h 2" + stream), failed(""));
    expectFile("2" + stream, "");
  }
  expectFile(">/dev/full", complaint());
}

TEST_F(StandardStreamTest, StreamsThatNobodyReadsChangeNoStatus) {
  ASSERT_EQ(runScript("mkfifo pipe"), silence());
  const std::string unread = "exec 3<>pipe 4>pipe 3<&-; ";
  EXPECT_EQ(runScript(unread + timed + "--help >&4"), silence());
  EXPECT_EQ(runScript(unread + timed + "--version >&4"), silence());
  EXPECT_EQ(runScript(unread + timed + "-f missing/out -h h 2>&4"), failed(""));
  EXPECT_EQ(runScript(unread + timed + "-c -f out -h missing -k bad.xml 2>&4"), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(StandardStreamTest, APipeMayBeLeftInTheMiddleOfADump) {
  write("out", container({dwarfSection(std::string(1'000'000, 'd'))}));
  EXPECT_EQ(runScript("mkfifo pipe; head -c 3 pipe & " + timed +
                      "-f out --dump-dwarf pipe; "
                      "status=$?; wait; exit $status"),
            printed("ddd"));
}

}  // namespace
}  // namespace consolidator
