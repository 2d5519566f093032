#include "endtoend/ExecutableTest.h"

#include <string>
#include <vector>

namespace consolidator {
namespace {

// Errors on the command line go to standard output and end the run with status 0, deliberately:
// build flows count on both.
class CommandLineErrorTest : public ExecutableTest {
 protected:
  // Expects the message for each of the command lines, and that nothing was done.
  void expectMessage(const std::string& message, const std::vector<Arguments>& commandLines) {
    write("old", "kept");
    for (const Arguments& arguments : commandLines) {
      EXPECT_EQ(run(arguments), printed(message + "\n")) << testing::PrintToString(arguments);
    }
    EXPECT_TRUE(folderHolds({{"old", "kept"}}));
  }
};

TEST_F(CommandLineErrorTest, SingleValuesMayNotBeRepeated) {
  const std::string message = "Unsupported multiple occurrences of : ";
  expectMessage(message + "--consolidated_file", {{"-f", "old", "-f", "old", "-h", "a"},
                                                  {"-f", "old", "--consolidated_file", "b"},
                                                  {"--cons=a", "--consol=b"}});
  expectMessage(message + "--dump-dwarf", {{"-u", "a", "-u", "a"}, {"-ua", "--dump-dwarf=b"}});
  expectMessage(message + "--dump-json", {{"-j", "a", "-j", "a"}, {"-ja", "--dump-json=b"}});
  expectMessage(message + "--DWARF", {{"-d", "a", "-d", "a"}, {"-da", "--DWARF=b"}});
  expectMessage(message + "--project", {{"-p", "a", "-p", "a"}, {"-pa", "--project=b"}});
}

TEST_F(CommandLineErrorTest, SwitchesMayNotBeRepeated) {
  const std::string message = "Unsupported multiple occurrences of : ";
  expectMessage(message + "--add", {{"-a", "-a"}, {"-aa"}, {"-a", "--add"}});
  expectMessage(message + "--create", {{"-c", "-c"}, {"-cc"}, {"-c", "--create"}});
  expectMessage(message + "--version", {{"-v", "-v"}, {"-vv"}, {"-v", "--version"}});
  expectMessage(message + "--help", {{"--help", "--help"}});
}

TEST_F(CommandLineErrorTest, RepetitionWinsOverAddWithCreate) {
  expectMessage("Unsupported multiple occurrences of : --add", {{"-a", "-c", "-a"}});
}

TEST_F(CommandLineErrorTest, RejectsUnknownOptions) {
  const std::string message = "Unknown option: unrecognised option ";
  expectMessage(message + "'--bogus'", {{"--bogus"}, {"--bogus", "a"}, {"--help", "--bogus"}});
  expectMessage(message + "'-z'", {{"-z"}, {"-f", "old", "-h", "a", "-z"}});
}

// Placeholders of the library's messages: it would replace them for ever.
TEST_F(CommandLineErrorTest, ShowsNamesOfPlaceholdersAsTheyAre) {
  const std::string message = "Unknown option: unrecognised option ";
  for (const std::string name : {"%canonical_option%", "%original_token%", "%value%"}) {
    for (const std::string start : {"--", "-", "-a"}) {
      expectMessage(message + "'" + start + name + "'", {{start + name}, {start + name, "a"}});
    }
  }
  expectMessage(
      "Unknown option: option '--d=%canonical_option%' is ambiguous and matches '--dump-dwarf', "
      "and '--dump-json'",
      {{"--d=%canonical_option%"}});
  expectMessage(
      "Unknown option: the argument for option '--%option%' should follow immediately after the "
      "equal sign",
      {{"--%option%="}});
  expectMessage("Unsupported multiple occurrences of : --consolidated_file",
                {{"-f", "%canonical_option%", "-f%option%"}});
}

TEST_F(CommandLineErrorTest, NamesAreSpelledExactly) {
  const std::string message = "Unknown option: unrecognised option ";
  expectMessage(message + "'--dwarf'", {{"--dwarf", "a"}});
  expectMessage(message + "'--consolidated-file'", {{"--consolidated-file", "old"}});
  expectMessage(message + "'--Help'", {{"--Help"}});
  expectMessage(message + "'-F'", {{"-F", "old"}});
}

TEST_F(CommandLineErrorTest, RejectsMissingValues) {
  const auto message = [](const std::string& name) {
    return "Unknown option: the required argument for option '" + name + "' is missing";
  };
  expectMessage(message("--consolidated_file"),
                {{"-f"}, {"--consolidated_file"}, {"-h", "a", "-f"}});
  expectMessage(message("--dump-dwarf"), {{"-u"}, {"--dump-dwarf"}});
  expectMessage(message("--dump-json"), {{"-j"}, {"--dump-json"}});
  expectMessage(message("--DWARF"), {{"-d"}, {"--DWARF"}});
  expectMessage(message("--hierarchy"), {{"-h"}, {"--hierarchy"}, {"-f", "old", "-h"}});
  expectMessage(message("--kernel"), {{"-k"}, {"--kernel"}});
  expectMessage(message("--hls"), {{"-s"}, {"--hls"}});
  expectMessage(message("--aux"), {{"-x"}, {"--aux"}});
  expectMessage(message("--ll"), {{"-l"}, {"--ll"}});
  expectMessage(message("--ram"), {{"-r"}, {"--ram"}});
  expectMessage(message("--project"), {{"-p"}, {"--project"}});
}

TEST_F(CommandLineErrorTest, AShortOptionIsNoValue) {
  expectMessage("Unknown option: the required argument for option '--consolidated_file' is missing",
                {{"-f", "-h", "a"}, {"-f", "-v"}});
}

TEST_F(CommandLineErrorTest, RejectsAnEmptyValueBehindAnEqualSign) {
  expectMessage(
      "Unknown option: the argument for option '--dump-json' should follow immediately after the "
      "equal sign",
      {{"-f", "old", "-h", "a", "--dump-json="}});
}

TEST_F(CommandLineErrorTest, RejectsValuesOfSwitches) {
  for (const std::string name : {"--add", "--create", "--help", "--version"}) {
    expectMessage("Unknown option: option '" + name + "' does not take any arguments",
                  {{name + "=1"}});
  }
}

TEST_F(CommandLineErrorTest, RejectsBareWords) {
  expectMessage(
      "Unknown option: too many positional options have been specified on the command line",
      {{"old"},
       {"old", "-h", "a"},
       {"-h", "a", "old"},
       {"-f", "old", "-h", "a", "b"},
       {""},
       {"-"},
       {"--", "old"},
       {"--version", "old"}});
}

}  // namespace
}  // namespace consolidator
