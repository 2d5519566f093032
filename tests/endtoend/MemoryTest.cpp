#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>

namespace consolidator {
namespace {

// Memory is measured in KiB.
class MemoryTest : public ExecutableTest {
 protected:
  // Puts the executable, "$0" of a script, below a limit; sanitizers ask for more than that before
  // the program starts, so that they go without.
  std::string limited() const {
    const std::string limit = "ulimit -v 400000; ";
    return runScript(limit + "exec \"$0\" --version").status == 0 ? limit : "";
  }

  // The most memory that a run on nothing needs.
  long baseline() const {
    const ExecutableRun run = start({"-f", "baseline", "-h", "missing"});
    EXPECT_EQ(run.outcome(), silence());
    remove("baseline");
    return run.peakMemory();
  }
};

TEST_F(MemoryTest, RunningOutOfMemoryIsOneLineAndStatusOne) {
  if (limited().empty()) GTEST_SKIP() << "cannot run in limited memory";
  const std::string nameOfZeros = u32(900'000'000);
  write("out", header(1) + entry(2, 40, 0) + u32(1) + nameOfZeros);
  ASSERT_EQ(runScript("truncate --size=1G out"), silence());
  EXPECT_EQ(runScript(limited() + "exec \"$0\" -f out -h missing"),
            failed("Error: out of memory\n"));
  remove("out");
}

TEST_F(MemoryTest, StoredLengthsBeyondTheFileAskForNone) {
  constexpr long someMebibytes = 16 * 1024;
  const long allowed = baseline() + someMebibytes;
  const std::string limit = limited();
  const std::string records = header(1) + entry(2, 40, 0);
  const std::string most = u32(0xFFFFFFFE);
  const std::string all = u32(0xFFFFFFFF);
  for (const std::string& bytes : {
           header(0xFFFFFFFF) + entry(3, 0, 0),
           header(1) + entry(0, 40, 0xFFFFFFFE) + "name",
           header(1) + entry(1, 40, 0xFFFFFFFE) + "debug",
           header(1) + entry(1, 40, 0x7FFFFFFF) + "debug",
           records + all,
           records + u32(1) + most + "k",
           records + u32(1) + text("k") + all,
           records + u32(1) + text("k") + u32(1) + all + "path",
           records + u32(1) + text("k") + u32(0) + u32(3) + all,
           records + u32(1) + text("k") + u32(0) + u32(3) + u32(0) + u32(0) + u32(1) + text("r") +
               all,
       }) {
    write("out", bytes);
    for (const std::string arguments : {"-f out -u dwarf", "-f out -j json", "-f out -h missing"}) {
      const ExecutableRun run = startScript(limit + "exec \"$0\" " + arguments);
      EXPECT_EQ(run.outcome(), silence()) << arguments;
      EXPECT_LE(run.peakMemory(), allowed) << arguments;
    }
  }
}

TEST_F(MemoryTest, SavingHoldsTheDwarfOnce) {
  constexpr long size = 64 * 1024;
  constexpr long someMebibytes = 8 * 1024;
  ASSERT_EQ(runScript("truncate --size=64M dwarf"), silence());
  const long allowed = baseline() + size + someMebibytes;
  for (const Arguments& arguments :
       {Arguments{"-f", "out", "-d", "dwarf"}, Arguments{"-f", "out", "-h", "missing"}}) {
    const ExecutableRun run = start(arguments);
    EXPECT_EQ(run.outcome(), silence());
    EXPECT_LE(run.peakMemory(), allowed) << testing::PrintToString(arguments);
  }
}

TEST_F(MemoryTest, ALogicLocationFileOfAnySizeTakesTheSame) {
  constexpr long someMebibytes = 4 * 1024;
  write("h", "vadd: instance path: /top/vadd_1");
  write("vadd.dbg", "RTL a b c\nlocal sum\nat vadd.cpp:12\nlast sum_reg[31:0] vadd\n");
  write("ll", "Bit 1 0x1001 18 die0 0 Net=top/vadd_1/sum_reg[1]\nBit 1 2 3 die0 0 Net=other\n");
  const ExecutableRun small = start({"-f", "small", "-h", "h", "-s", "vadd.dbg", "-l", "ll"});
  ASSERT_EQ(small.outcome(), silence());
  const std::string lines = "yes \"$(cat ll)\" | head -n 800000";
  const std::string line = "head -c 64M /dev/zero; echo; cat ll";
  const std::string blanks = "yes '' | head -c 64M; cat ll";
  for (const std::string& generator : {lines, line, blanks}) {
    const ExecutableRun large =
        startScript("exec \"$0\" -c -f large -h h -s vadd.dbg -l <(" + generator + ")");
    EXPECT_EQ(large.outcome(), silence()) << generator;
    EXPECT_LE(large.peakMemory(), small.peakMemory() + someMebibytes) << generator;
    EXPECT_EQ(read("large"), read("small")) << generator;
  }
}

// Each has the arguments of all before it: 4000 records of them would be eight million arguments.
TEST_F(MemoryTest, KernelsOfOneNameAreNotHeldOneByOne) {
  constexpr long someMebibytes = 16 * 1024;
  std::string document = "<project><platform><device><core>";
  for (int i = 0; i < 4000; ++i) {
    document += "<kernel name='k'><arg name='a" + std::to_string(i) + "'/></kernel>";
  }
  write("kernel.xml", document + "</core></device></platform></project>");
  const long allowed = baseline() + someMebibytes;
  const ExecutableRun run = start({"-f", "out", "-k", "kernel.xml"});
  EXPECT_EQ(run.outcome(), silence());
  EXPECT_LE(run.peakMemory(), allowed);
}

}  // namespace
}  // namespace consolidator
