// Every option that names a file is given the consolidated file itself, under its own name and
// under others. A run that adds or creates has emptied the file before it reads any input, and a
// dump empties it before it copies anything.

#include "endtoend/ExecutableTest.h"
#include "endtoend/TimedRun.h"
#include "endtoend/VaddBuild.h"

#include <string>

namespace consolidator {
namespace {

class FileItselfTest : public ExecutableTest {
 protected:
  // Expects the same of a run with "-f vadd.out", where vadd.out holds `before`, an option and each
  // name of the file in turn. `after` is what the file holds then.
  void expectWithEachName(const std::string& options, const Outcome& outcome,
                          const std::string& before, const std::string& after) const {
    for (const std::string name : {"vadd.out", "./vadd.out", "vadd.lnk", "vadd.sym"}) {
      SCOPED_TRACE(options + name);
      write("vadd.out", before);
      ASSERT_EQ(runScript("ln vadd.out vadd.lnk; ln -s vadd.out vadd.sym"), silence());
      EXPECT_EQ(runScript("exec " + foretold + "-f vadd.out " + options + name), outcome);
      EXPECT_EQ(runScript("test -L vadd.sym && rm vadd.sym"), silence());
      EXPECT_TRUE(folderHolds({{"vadd.out", after}, {"vadd.lnk", after}}));
      remove("vadd.out");
      remove("vadd.lnk");
    }
  }
};

TEST_F(FileItselfTest, AsAnInputIsEmpty) {
  for (const InputOption& option : inputOptions()) {
    expectWithEachName(option.name + " ", complained(option.complaint), VaddKernel().file(),
                       option.readEmpty);
  }
}

TEST_F(FileItselfTest, AsTheFileOfADumpIsEmptied) {
  for (const std::string option : {"--dump-dwarf ", "--dump-json "}) {
    expectWithEachName(option, silence(),
                       container({dwarfSection("debug"), jsonSection(VaddKernel().json())}), "");
  }
}

TEST_F(FileItselfTest, IsAddedToUnderItsOtherNames) {
  const InputOption hierarchy = hierarchyOption();
  for (const std::string link : {"ln", "ln -s"}) {
    write("vadd.out", VaddKernel().file());
    write("h", hierarchy.text);
    EXPECT_EQ(runScript(link + " vadd.out other; exec " + foretold + "-f other -h h"), silence());
    remove("other");
    EXPECT_TRUE(folderHolds({{"h", hierarchy.text}, {"vadd.out", hierarchy.read}}));
  }
}

}  // namespace
}  // namespace consolidator
