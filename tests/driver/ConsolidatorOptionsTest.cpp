#include "driver/Arguments.h"
#include "driver/ConsolidatorOptions.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace consolidator {
namespace {

using Texts = ConsolidatorOptions::Texts;

ConsolidatorOptions parse(const std::vector<std::string>& words) {
  const Arguments arguments(words);
  return {arguments.count(), arguments.values()};
}

TEST(ConsolidatorOptions, AddsByDefaultAndHasNothingElse) {
  const ConsolidatorOptions options = parse({});
  EXPECT_EQ(options.programName(), "consolidator");
  EXPECT_TRUE(options.add());
  EXPECT_FALSE(options.create());
  EXPECT_FALSE(options.bothAddAndCreate());
  EXPECT_EQ(options.dumpDwarfPath(), "");
  EXPECT_EQ(options.dumpJsonPath(), "");
  EXPECT_FALSE(options.dumpRequested());
  EXPECT_EQ(options.dwarfPath(), "");
  EXPECT_FALSE(options.help());
  EXPECT_FALSE(options.version());
  EXPECT_EQ(options.hierarchyFiles(), Texts());
  EXPECT_EQ(options.kernelXmlFiles(), Texts());
  EXPECT_EQ(options.hlsFiles(), Texts());
  EXPECT_EQ(options.auxiliaryFiles(), Texts());
  EXPECT_EQ(options.logicLocationFiles(), Texts());
  EXPECT_EQ(options.ramReportFiles(), Texts());
  EXPECT_EQ(options.consolidatedFilePath(), "");
  EXPECT_EQ(options.project(), "");
}

TEST(ConsolidatorOptions, TakesTheProgramNameAsItWasGiven) {
  const char* const argv[] = {"./some/../path to/tool", nullptr};
  EXPECT_EQ(ConsolidatorOptions(1, argv).programName(), "./some/../path to/tool");
}

TEST(ConsolidatorOptions, AddIsTheDefaultSpelledOut) {
  for (const char* const word : {"-a", "--add"}) {
    const ConsolidatorOptions options = parse({word});
    EXPECT_TRUE(options.add());
    EXPECT_FALSE(options.create());
  }
}

TEST(ConsolidatorOptions, CreateClearsAdd) {
  for (const char* const word : {"-c", "--create"}) {
    const ConsolidatorOptions options = parse({word, "-f", "file", "-h", "hierarchy"});
    EXPECT_TRUE(options.create());
    EXPECT_FALSE(options.add());
    EXPECT_TRUE(options.validate());
  }
}

TEST(ConsolidatorOptions, SwitchesAreGivenByTheirPresence) {
  EXPECT_TRUE(parse({"--help"}).help());
  EXPECT_TRUE(parse({"--version"}).version());
  EXPECT_TRUE(parse({"-v"}).version());
  EXPECT_FALSE(parse({"-v"}).help());
}

// A text option by its names, with what reads it.
struct TextOption {
  const char* longName;
  const char* shortName;
  const std::string& (ConsolidatorOptions::*value)() const;
};

class TextOptionTest : public testing::TestWithParam<TextOption> {};

INSTANTIATE_TEST_SUITE_P(
    ConsolidatorOptions, TextOptionTest,
    testing::Values(TextOption{"--dump-dwarf", "-u", &ConsolidatorOptions::dumpDwarfPath},
                    TextOption{"--dump-json", "-j", &ConsolidatorOptions::dumpJsonPath},
                    TextOption{"--DWARF", "-d", &ConsolidatorOptions::dwarfPath},
                    TextOption{"--consolidated_file", "-f",
                               &ConsolidatorOptions::consolidatedFilePath},
                    TextOption{"--project", "-p", &ConsolidatorOptions::project}),
    [](const auto& option) { return std::string("Short_") + (option.param.shortName + 1); });

TEST_P(TextOptionTest, TakesItsValueSeparateOrSticky) {
  const auto& [longName, shortName, value] = GetParam();
  EXPECT_EQ((parse({longName, "a text"}).*value)(), "a text");
  EXPECT_EQ((parse({longName + std::string("=a=b")}).*value)(), "a=b");
  EXPECT_EQ((parse({shortName, "text"}).*value)(), "text");
  EXPECT_EQ((parse({shortName + std::string("text")}).*value)(), "text");
}

TEST_P(TextOptionTest, TakesAnEmptyValue) {
  const auto& [longName, shortName, value] = GetParam();
  EXPECT_EQ((parse({longName, ""}).*value)(), "");
  EXPECT_EQ((parse({shortName, ""}).*value)(), "");
}

// A list option by its names, with what reads it.
struct ListOption {
  const char* longName;
  const char* shortName;
  const Texts& (ConsolidatorOptions::*values)() const;
};

class ListOptionTest : public testing::TestWithParam<ListOption> {};

INSTANTIATE_TEST_SUITE_P(
    ConsolidatorOptions, ListOptionTest,
    testing::Values(ListOption{"--hierarchy", "-h", &ConsolidatorOptions::hierarchyFiles},
                    ListOption{"--kernel", "-k", &ConsolidatorOptions::kernelXmlFiles},
                    ListOption{"--hls", "-s", &ConsolidatorOptions::hlsFiles},
                    ListOption{"--aux", "-x", &ConsolidatorOptions::auxiliaryFiles},
                    ListOption{"--ll", "-l", &ConsolidatorOptions::logicLocationFiles},
                    ListOption{"--ram", "-r", &ConsolidatorOptions::ramReportFiles}),
    [](const auto& option) { return std::string("Short_") + (option.param.shortName + 1); });

TEST_P(ListOptionTest, EachOccurrenceAppendsInOrder) {
  const auto& [longName, shortName, values] = GetParam();
  EXPECT_EQ((parse({shortName, "b", longName, "a", shortName + std::string("c"),
                    longName + std::string("=b")}).*
             values)(),
            (Texts{"b", "a", "c", "b"}));
}

TEST_P(ListOptionTest, AnEmptyValueIsAnInput) {
  const auto& [longName, shortName, values] = GetParam();
  const ConsolidatorOptions options = parse({"-f", "file", longName, ""});
  EXPECT_EQ((options.*values)(), Texts{""});
  EXPECT_TRUE(options.validate());
}

TEST_P(ListOptionTest, IsAnInputByItself) {
  EXPECT_TRUE(parse({"-f", "file", GetParam().shortName, "input"}).validate());
}

TEST(ConsolidatorOptions, NamesMayBeShortenedWhileTheyAreUnambiguous) {
  const ConsolidatorOptions options = parse({"--cons", "file", "--pro", "name", "--hi", "a", "--D",
                                             "dwarf", "--dump-d", "dump", "--ver"});
  EXPECT_EQ(options.consolidatedFilePath(), "file");
  EXPECT_EQ(options.project(), "name");
  EXPECT_EQ(options.hierarchyFiles(), Texts{"a"});
  EXPECT_EQ(options.dwarfPath(), "dwarf");
  EXPECT_EQ(options.dumpDwarfPath(), "dump");
  EXPECT_TRUE(options.version());
}

TEST(ConsolidatorOptions, ShortSwitchesMayBeGrouped) {
  const ConsolidatorOptions options = parse({"-vcffile"});
  EXPECT_TRUE(options.version());
  EXPECT_TRUE(options.create());
  EXPECT_EQ(options.consolidatedFilePath(), "file");
}

TEST(ConsolidatorOptions, ADoubleDashEndsTheOptions) {
  const ConsolidatorOptions options = parse({"-f", "file", "--"});
  EXPECT_EQ(options.consolidatedFilePath(), "file");
}

TEST(ConsolidatorOptions, ADumpIsRequestedByEitherDumpOptionWhateverItsValue) {
  EXPECT_TRUE(parse({"-u", "out"}).dumpRequested());
  EXPECT_TRUE(parse({"-j", "out"}).dumpRequested());
  EXPECT_TRUE(parse({"-u", ""}).dumpRequested());
  EXPECT_TRUE(parse({"-j", ""}).dumpRequested());
  EXPECT_FALSE(parse({"-d", "in"}).dumpRequested());
}

TEST(ConsolidatorOptions, AddTogetherWithCreateIsRefusedAndNothingElseIsTaken) {
  const StreamCapture capture;
  const ConsolidatorOptions options =
      parse({"-a", "-c", "-f", "file", "-h", "in", "-j", "out", "-p", "name", "--help", "-v"});
  EXPECT_EQ(capture.out(), "Error: Cannot specify both add and create\n");
  EXPECT_TRUE(options.bothAddAndCreate());
  EXPECT_TRUE(options.add());
  EXPECT_FALSE(options.create());
  EXPECT_FALSE(options.help());
  EXPECT_FALSE(options.version());
  EXPECT_FALSE(options.dumpRequested());
  EXPECT_EQ(options.dumpJsonPath(), "");
  EXPECT_EQ(options.consolidatedFilePath(), "");
  EXPECT_EQ(options.project(), "");
  EXPECT_EQ(options.hierarchyFiles(), Texts());
  EXPECT_FALSE(options.validate());
  EXPECT_EQ(capture.out(), "Error: Cannot specify both add and create\n") << "said once";
  EXPECT_EQ(capture.err(), "");
}

TEST(ConsolidatorOptions, ParsingAgainKeepsNothingOfTheTimeBefore) {
  ConsolidatorOptions options =
      parse({"-c", "-u", "a",  "-j", "a",  "-d", "a",  "--help", "-v", "-h", "a",  "-k", "a",
             "-s", "a",  "-x", "a",  "-l", "a",  "-r", "a",      "-f", "a",  "-p", "a"});
  const Arguments fewer({"-h", "b"});
  options.parseCommandLine(fewer.count(), fewer.values());
  EXPECT_TRUE(options.add());
  EXPECT_FALSE(options.create());
  EXPECT_FALSE(options.dumpRequested());
  EXPECT_FALSE(options.help());
  EXPECT_FALSE(options.version());
  EXPECT_EQ(options.hierarchyFiles(), Texts{"b"});
  for (const auto text :
       {&ConsolidatorOptions::dumpDwarfPath, &ConsolidatorOptions::dumpJsonPath,
        &ConsolidatorOptions::dwarfPath, &ConsolidatorOptions::consolidatedFilePath,
        &ConsolidatorOptions::project}) {
    EXPECT_EQ((options.*text)(), "");
  }
  for (const auto list :
       {&ConsolidatorOptions::kernelXmlFiles, &ConsolidatorOptions::hlsFiles,
        &ConsolidatorOptions::auxiliaryFiles, &ConsolidatorOptions::logicLocationFiles,
        &ConsolidatorOptions::ramReportFiles}) {
    EXPECT_EQ((options.*list)(), Texts());
  }
}

TEST(ConsolidatorOptions, PrintsTheWholeUsageText) {
  const ConsolidatorOptions options = parse({});
  const StreamCapture capture;
  options.printUsage();
  EXPECT_EQ(capture.out(), usage);
  EXPECT_EQ(capture.err(), "");
}

TEST(ConsolidatorOptions, TheUsageTextNamesTheProgramAsItWasGiven) {
  const char* const argv[] = {"/path to/tool", nullptr};
  const ConsolidatorOptions options(1, argv);
  const StreamCapture capture;
  options.printUsage();
  EXPECT_EQ(capture.out().substr(0, capture.out().find('\n')),
            "Usage: /path to/tool [options] --consolidated_file filename");
}

}  // namespace
}  // namespace consolidator
