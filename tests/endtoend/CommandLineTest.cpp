#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "endtoend/UsageText.h"

#include <string>
#include <vector>

namespace consolidator {
namespace {

class CommandLineTest : public ExecutableTest {};

// Names of an option that takes a list of input files.
struct ListOption {
  std::string shortName;
  std::string longName;
};

const std::vector<ListOption>& listOptions() {
  static const std::vector<ListOption> options{{"-h", "--hierarchy"}, {"-k", "--kernel"},
                                               {"-s", "--hls"},       {"-x", "--aux"},
                                               {"-l", "--ll"},        {"-r", "--ram"}};
  return options;
}

TEST_F(CommandLineTest, NoArgumentsLackAConsolidatedFile) {
  EXPECT_EQ(run({}), printed("Error: A consolidated file must be specified\n" + usageText()));
}

TEST_F(CommandLineTest, ConsolidatedFileIsNeeded) {
  const Outcome expected = printed("Error: A consolidated file must be specified\n" + usageText());
  for (const ListOption& option : listOptions()) {
    EXPECT_EQ(run({option.shortName, "missing"}), expected) << option.shortName;
  }
  EXPECT_EQ(run({"-d", "missing"}), expected);
  EXPECT_EQ(run({"-c", "-p", "name", "-k", "missing"}), expected);
  EXPECT_TRUE(folderHolds({}));
}

TEST_F(CommandLineTest, SomeInputIsNeeded) {
  const Outcome expected = printed("No input meta-data files specified\n" + usageText());
  EXPECT_EQ(run({"-f", "out"}), expected);
  EXPECT_EQ(run({"-a", "-f", "out", "-p", "name"}), expected);
  EXPECT_EQ(run({"-c", "-f", "out"}), expected);
  EXPECT_TRUE(folderHolds({}));
}

TEST_F(CommandLineTest, EveryListOptionIsAnInput) {
  for (const ListOption& option : listOptions()) {
    for (const std::string& name : {option.shortName, option.longName}) {
      EXPECT_EQ(run({"-f", "out", name, "missing"}), silence()) << name;
      EXPECT_TRUE(folderHolds({{"out", emptyFile()}})) << name;
      remove("out");
    }
  }
}

TEST_F(CommandLineTest, DwarfAloneIsAnInput) {
  for (const std::string name : {"-d", "--DWARF"}) {
    EXPECT_EQ(run({"-f", "out", name, "missing"}), silence()) << name;
    EXPECT_TRUE(folderHolds({{"out", emptyFile()}})) << name;
    remove("out");
  }
}

TEST_F(CommandLineTest, ListOptionsMayBeRepeated) {
  for (const ListOption& option : listOptions()) {
    EXPECT_EQ(run({"-f", "out", option.shortName, "a", option.longName, "b"}), silence())
        << option.shortName;
  }
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CommandLineTest, HierarchyFilesKeepTheOrderOfTheCommandLine) {
  write("a", "first:");
  write("b", "second:");
  ASSERT_EQ(run({"-h", "b", "-f", "out", "--hierarchy", "a"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(kernelJson("second", "Unknown") + ", " + kernelJson("first", "Unknown")));
}

TEST_F(CommandLineTest, LongNamesDoWhatShortNamesDo) {
  write("a", "k: type: c");
  write("dwarf", "DW");
  ASSERT_EQ(run({"-a", "-f", "short", "-p", "name", "-d", "dwarf", "-h", "a"}), silence());
  ASSERT_EQ(run({"--add", "--consolidated_file", "long", "--project", "name", "--DWARF", "dwarf",
                 "--hierarchy", "a"}),
            silence());
  EXPECT_EQ(read("long"), read("short"));
  EXPECT_EQ(read("short"),
            container({projectSection("name"), dwarfSection("DW"),
                       jsonSection(kernelJson("k", "C")), recordsSection({kernelRecord("k", 1)})}));

  EXPECT_EQ(run({"-f", "short", "-u", "dumped"}), silence());
  EXPECT_EQ(run({"-f", "short", "--dump-dwarf", "dumped too"}), silence());
  EXPECT_EQ(read("dumped"), "DW");
  EXPECT_EQ(read("dumped too"), "DW");
  EXPECT_EQ(run({"-f", "short", "-j", "json"}), silence());
  EXPECT_EQ(run({"-f", "short", "--dump-json", "json too"}), silence());
  EXPECT_EQ(read("json"), jsonSection(kernelJson("k", "C")).bytes);
  EXPECT_EQ(read("json too"), read("json"));

  EXPECT_EQ(run({"-c", "-f", "short", "-h", "missing"}), silence());
  EXPECT_EQ(run({"--create", "-f", "long", "-h", "missing"}), silence());
  EXPECT_EQ(read("short"), emptyFile());
  EXPECT_EQ(read("long"), emptyFile());
}

TEST_F(CommandLineTest, LongNamesMayBeCutWhereTheyStayUnambiguous) {
  write("a", "k:");
  ASSERT_EQ(run({"--ad", "--cons", "out", "--p", "name", "--D", "missing", "--hi", "a", "--k", "b",
                 "--hl", "c", "--au", "d", "--l", "e", "--r", "f"}),
            silence());
  const std::string saved =
      container({projectSection("name"), jsonSection(kernelJson("k", "Unknown")),
                 recordsSection({kernelRecord("k", 3)})});
  EXPECT_TRUE(folderHolds({{"a", "k:"}, {"out", saved}}));
  EXPECT_EQ(run({"--he"}), printed(usageText()));
}

TEST_F(CommandLineTest, AmbiguousPrefixIsAnError) {
  EXPECT_EQ(run({"--h", "a"}),
            printed("Unknown option: option '--h' is ambiguous and matches '--help', "
                    "'--hierarchy', and '--hls'\n"));
  EXPECT_EQ(run({"--dump", "a"}),
            printed("Unknown option: option '--dump' is ambiguous and matches "
                    "'--dump-dwarf', and '--dump-json'\n"));
}

TEST_F(CommandLineTest, ValuesMayStickToTheirOption) {
  write("a", "k:");
  const std::string saved =
      container({projectSection("name"), jsonSection(kernelJson("k", "Unknown")),
                 recordsSection({kernelRecord("k", 3)})});
  EXPECT_EQ(run({"-cfout", "-pname", "-ha"}), silence());
  EXPECT_TRUE(folderHolds({{"a", "k:"}, {"out", saved}}));
  EXPECT_EQ(run({"--create", "--consolidated_file=out", "--proj=name", "--hierarchy=a"}),
            silence());
  EXPECT_TRUE(folderHolds({{"a", "k:"}, {"out", saved}}));
}

TEST_F(CommandLineTest, StickyValueMayBeginWithADash) {
  EXPECT_EQ(run({"--consolidated_file=-out", "-hmissing"}), silence());
  EXPECT_TRUE(folderHolds({{"-out", emptyFile()}}));
}

TEST_F(CommandLineTest, DoubleDashEndsTheOptions) {
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "--"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
  EXPECT_EQ(run({"--", "--version"}),
            printed("Unknown option: too many positional options have been specified on the "
                    "command line\n"));
}

TEST_F(CommandLineTest, AddWithCreateIsRefused) {
  const Outcome expected = printed("Error: Cannot specify both add and create\n" + usageText());
  EXPECT_EQ(run({"-a", "-c"}), expected);
  EXPECT_EQ(run({"-ca"}), expected);
  EXPECT_EQ(run({"--create", "--add"}), expected);
}

TEST_F(CommandLineTest, AddWithCreateLooksAtNothingElse) {
  const Outcome expected = printed("Error: Cannot specify both add and create\n" + usageText());
  write("old", "kept");
  EXPECT_EQ(run({"-a", "-c", "--version"}), expected);
  EXPECT_EQ(run({"-a", "-c", "--help"}), expected);
  EXPECT_EQ(run({"-a", "-c", "-f", "old", "-h", "missing"}), expected);
  EXPECT_EQ(run({"-a", "-c", "-f", "old", "-j", "json"}), expected);
  EXPECT_TRUE(folderHolds({{"old", "kept"}}));
}

TEST_F(CommandLineTest, AddIsTheDefault) {
  write("a", "first:");
  write("b", "second:");
  ASSERT_EQ(run({"-f", "out", "-h", "a"}), silence());
  const std::string both = container(
      {jsonSection(kernelJson("first", "Unknown") + ", " + kernelJson("second", "Unknown")),
       recordsSection({kernelRecord("first", 3), kernelRecord("second", 3)})});
  EXPECT_EQ(run({"-f", "out", "-h", "b"}), silence());
  EXPECT_EQ(read("out"), both);
  EXPECT_EQ(run({"-a", "-f", "out", "-h", "b"}), silence());
  EXPECT_EQ(read("out"), both);
}

TEST_F(CommandLineTest, EmptyConsolidatedFileIsNone) {
  EXPECT_EQ(run({"-f", "", "-h", "missing"}),
            printed("Error: A consolidated file must be specified\n" + usageText()));
}

TEST_F(CommandLineTest, EmptyDwarfFileNameIsNoInput) {
  EXPECT_EQ(run({"-f", "out", "-d", ""}),
            printed("No input meta-data files specified\n" + usageText()));
}

TEST_F(CommandLineTest, EmptyNameInAListIsAnInput) {
  for (const ListOption& option : listOptions()) {
    EXPECT_EQ(run({"-f", "out", option.shortName, ""}), silence()) << option.shortName;
  }
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CommandLineTest, EmptyProjectIsNone) {
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", ""}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

}  // namespace
}  // namespace consolidator
