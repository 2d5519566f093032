// What a process says of its command line, where, and with which status.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "endtoend/UsageText.h"

#include <string>

namespace consolidator {
namespace {

class CommandLineTest : public ExecutableTest {};

TEST_F(CommandLineTest, VersionIsTwoLines) {
  EXPECT_EQ(run({"--version"}),
            printed("Consolidated version: 1.1\nSupported hierarchy version: 1\n"));
}

TEST_F(CommandLineTest, UsageNamesTheProgramAsItWasStarted) {
  for (const std::string name : {"./some folder/tool", "/opt/tool", "%s", ""}) {
    EXPECT_EQ(start({"--help"}, name).outcome(), printed(usageText(name)));
  }
}

// Build flows count on standard output and status 0.
TEST_F(CommandLineTest, ErrorsGoToStandardOutputAndEndWithStatusZero) {
  write("old", "kept");
  EXPECT_EQ(run({}), printed("Error: A consolidated file must be specified\n" + usageText()));
  EXPECT_EQ(run({"-f", "old"}), printed("No input meta-data files specified\n" + usageText()));
  EXPECT_EQ(run({"-ca", "-f", "old", "-h", "missing"}),
            printed("Error: Cannot specify both add and create\n" + usageText()));
  EXPECT_EQ(run({"-f", "old", "-f", "old", "-h", "missing"}),
            printed("Unsupported multiple occurrences of : --consolidated_file\n"));
  EXPECT_EQ(run({"-c", "-f", "old", "-h", "missing", "--bogus"}),
            printed("Unknown option: unrecognised option '--bogus'\n"));
  EXPECT_TRUE(folderHolds({{"old", "kept"}}));
}

TEST_F(CommandLineTest, LongNamesDoWhatShortNamesDo) {
  write("a", "k: type: c");
  write("dwarf", "DW");
  ASSERT_EQ(run({"-a", "-f", "short", "-p", "name", "-d", "dwarf", "-h", "a"}), silence());
  ASSERT_EQ(run({"--add", "--consolidated_file=long", "--project", "name", "--DWARF", "dwarf",
                 "--hierarchy", "a"}),
            silence());
  EXPECT_EQ(run({"-f", "short", "-u", "dumped"}), silence());
  EXPECT_EQ(run({"-f", "short", "--dump-json", "json"}), silence());
  const Section json = jsonSection(kernelJson("k", "C"));
  const std::string file = container(
      {projectSection("name"), dwarfSection("DW"), json, recordsSection({kernelRecord("k", 1)})});
  EXPECT_TRUE(folderHolds({{"a", "k: type: c"},
                           {"dwarf", "DW"},
                           {"short", file},
                           {"long", file},
                           {"dumped", "DW"},
                           {"json", json.bytes}}));
}

}  // namespace
}  // namespace consolidator
