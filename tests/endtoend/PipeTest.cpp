// Every option that names a file is given pipes. Inputs are read once and forward, so pipes will
// do, except for the DWARF file, whose size has to be known. The consolidated file is read and
// written in any order, which no pipe can offer; all that must not happen is that a run waits.

#include "endtoend/ExecutableTest.h"
#include "endtoend/TimedRun.h"
#include "endtoend/VaddBuild.h"

#include <string>

namespace consolidator {
namespace {

class PipeTest : public ExecutableTest {
 protected:
  void SetUp() override {
    write("vadd.out", VaddKernel().file());
    write("h", hierarchyOption().text);
    ASSERT_EQ(runScript("mkfifo pipe vadd.fif"), silence());
  }

  // Expects that a run adds nothing to what there is but these files.
  void expectNothingBut(Files beside) const {
    beside.insert({{"vadd.out", VaddKernel().file()}, {"h", hierarchyOption().text}});
    beside.insert({{"pipe|", ""}, {"vadd.fif|", ""}});
    EXPECT_TRUE(folderHolds(beside));
  }
};

// Runs the executable while `writer` is under way, which is ended together with it.
std::string beside(const std::string& other, const std::string& options) {
  return other + " & " + timed + options + "; status=$?; kill $! 2>/dev/null; exit $status";
}

std::string whole(const InputOption& option) { return option.name + " vadd.fif"; }

TEST_F(PipeTest, AsAnInputGivesItsText) {
  for (const InputOption& option : inputOptions()) {
    SCOPED_TRACE(option.name);
    write("vadd.out", VaddKernel().file());
    write("text", option.text);
    EXPECT_EQ(runScript(beside("cat text >vadd.fif", "-f vadd.out " + whole(option))), silence());
    expectNothingBut(
        {{"text", option.text}, {"vadd.out", option.seeks ? VaddKernel().file() : option.read}});
  }
}

// Kernel XML is opened twice.
TEST_F(PipeTest, WhoseWriterIsSlowAsAnInputGivesItsText) {
  const std::string slowly = "(head -c 20 text; sleep 0.1; tail -c +21 text) >vadd.fif";
  for (const InputOption& option : inputOptions()) {
    if (option.seeks) continue;
    SCOPED_TRACE(option.name);
    write("vadd.out", VaddKernel().file());
    write("text", option.text);
    EXPECT_EQ(runScript(beside(slowly, "-f vadd.out " + whole(option))), silence());
    EXPECT_EQ(read("vadd.out"), option.read);
  }
}

TEST_F(PipeTest, AsStandardInputIsReadOnce) {
  EXPECT_EQ(runScript("echo '<project/>' | " + timed + "-f vadd.out -k /dev/stdin -k /dev/stdin"),
            complained("Could not parse kernel file\n"));
  expectNothingBut({});
}

TEST_F(PipeTest, ThatIsEmptyAsAnInputIsAnEmptyInput) {
  for (const InputOption& option : inputOptions()) {
    SCOPED_TRACE(option.name);
    write("vadd.out", VaddKernel().file());
    EXPECT_EQ(runScript(beside(": >vadd.fif", "-f vadd.out " + whole(option))),
              complained(option.complaint));
    expectNothingBut({{"vadd.out", option.readEmpty}});
  }
}

TEST_F(PipeTest, TakesADump) {
  const std::string json = jsonText(VaddKernel().json()) + '\0';
  EXPECT_EQ(runScript("cat pipe >json & " + timed + "-f vadd.out --dump-json pipe; wait"),
            silence());
  expectNothingBut({{"json", json}});
  remove("json");
  EXPECT_EQ(runScript(timed + "-f vadd.out --dump-json /dev/stdout"), printed(json));
  EXPECT_EQ(runScript(timed + "-f vadd.out --dump-dwarf /dev/stdout"), silence());
  expectNothingBut({});
}

TEST_F(PipeTest, AsTheConsolidatedFileGivesItsHeaderAlone) {
  const std::string dump = " >&3; exec " + timed + "-f pipe --dump-json json";
  EXPECT_EQ(runScript("exec 3<>pipe; cat vadd.out" + dump), silence());
  expectNothingBut({{"json", ""}});
  remove("json");
  write("newer", container({}, 2, 3));
  EXPECT_EQ(runScript("exec 3<>pipe; cat newer" + dump),
            failed("Error: consolidated file pipe is version 2.3 and only versions up to 1.1 are "
                   "supported.\n"));
  expectNothingBut({{"newer", container({}, 2, 3)}});
}

TEST_F(PipeTest, WithoutAWriterAsTheConsolidatedFileIsEmpty) {
  EXPECT_EQ(runScript("exec " + timed + "-f pipe --dump-json json"), silence());
  expectNothingBut({{"json", ""}});
}

TEST_F(PipeTest, WhoseWriterIsIdleAsTheConsolidatedFileIsEmpty) {
  EXPECT_EQ(runScript("exec 3<>pipe; exec " + timed + "-f pipe --dump-json json"), silence());
  expectNothingBut({{"json", ""}});
}

TEST_F(PipeTest, WithoutAReaderAsTheConsolidatedFileIsRefused) {
  EXPECT_EQ(runScript("exec " + timed + "-c -f pipe -h h"), failed("Unable to open pipe\n"));
  EXPECT_EQ(runScript("exec " + timed + "-f pipe -h h"), failed("Unable to open pipe\n"));
  EXPECT_EQ(runScript(beside("cat vadd.out >pipe", "-f pipe -h h")),
            failed("Unable to open pipe\n"));
  expectNothingBut({});
}

// What stands first in the file is written last.
TEST_F(PipeTest, WithAReaderAsTheConsolidatedFileIsGivenNothing) {
  for (const std::string mode : {"-a", "-c"}) {
    const std::string options = mode + " -h h -f ";
    EXPECT_EQ(runScript("exec 3<>pipe; " + timed + options + "pipe && ! read -t 0 -u 3"),
              silence());
    EXPECT_EQ(runScript("exec " + timed + options + "/dev/stdout"), silence());
  }
  expectNothingBut({});
}

}  // namespace
}  // namespace consolidator
