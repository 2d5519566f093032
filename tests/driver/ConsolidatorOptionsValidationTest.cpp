#include "driver/Arguments.h"
#include "driver/ConsolidatorOptions.h"
#include "support/ChildRun.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

struct Validation {
  bool result;
  std::string out;

  friend bool operator==(const Validation&, const Validation&) = default;
};

std::ostream& operator<<(std::ostream& out, const Validation& validation) {
  return out << validation.result << ' ' << validation.out;
}

Validation validated(const std::vector<std::string>& words) {
  const Arguments arguments(words);
  const ConsolidatorOptions options(arguments.count(), arguments.values());
  const StreamCapture capture;
  const bool result = options.validate();
  EXPECT_EQ(capture.err(), "");
  return {result, capture.out()};
}

const Validation valid{true, ""};
const Validation withoutFile{false, "Error: A consolidated file must be specified\n"};
const Validation withoutInput{false, "No input meta-data files specified\n"};

TEST(ConsolidatorOptionsValidation, VersionAndHelpNeedNothingElse) {
  EXPECT_EQ(validated({"--version"}), valid);
  EXPECT_EQ(validated({"--help"}), valid);
  EXPECT_EQ(validated({"--help", "-k", "in"}), valid);
}

TEST(ConsolidatorOptionsValidation, ADumpNeedsNeitherFileNorInput) {
  EXPECT_EQ(validated({"--dump-json", "out"}), valid);
  EXPECT_EQ(validated({"--dump-dwarf", "out"}), valid);
  EXPECT_EQ(validated({"--dump-dwarf", "", "--dump-json", "out"}), valid);
}

TEST(ConsolidatorOptionsValidation, ADumpToAnEmptyPathDoesNotCount) {
  EXPECT_EQ(validated({"--dump-json", ""}), withoutFile);
  EXPECT_EQ(validated({"-f", "file", "--dump-json", ""}), withoutInput);
  EXPECT_EQ(validated({"-f", "file", "--dump-json", "", "-h", "in"}), valid);
}

TEST(ConsolidatorOptionsValidation, AConsolidatedFileMustBeNamed) {
  EXPECT_EQ(validated({}), withoutFile);
  EXPECT_EQ(validated({"-k", "in"}), withoutFile);
  EXPECT_EQ(validated({"-f", "", "-k", "in"}), withoutFile);
  EXPECT_EQ(validated({"-c", "-p", "name"}), withoutFile);
}

TEST(ConsolidatorOptionsValidation, AnInputMustBeNamed) {
  EXPECT_EQ(validated({"-f", "file"}), withoutInput);
  EXPECT_EQ(validated({"-f", "file", "-c", "-p", "name"}), withoutInput);
  EXPECT_EQ(validated({"-f", "file", "-d", ""}), withoutInput) << "an empty path is no DWARF file";
}

TEST(ConsolidatorOptionsValidation, ADwarfFileIsAnInput) {
  EXPECT_EQ(validated({"-f", "file", "-d", "dwarf"}), valid);
}

// What a process prints and returns that does no more than to parse these words.
ChildResult parsedInChild(const std::vector<std::string>& words) {
  return runInChild([&] {
    const Arguments arguments(words);
    const ConsolidatorOptions options(arguments.count(), arguments.values());
    std::cout << "went on";
  });
}

ChildResult endedWith(const std::string& message) { return {0, message + "\n", ""}; }

TEST(ConsolidatorOptionsErrors, ARepeatedTextOrSwitchEndsTheProcessWithStatusZero) {
  const std::vector<std::pair<const char*, const char*>> texts = {{"-u", "--dump-dwarf"},
                                                                  {"-j", "--dump-json"},
                                                                  {"-d", "--DWARF"},
                                                                  {"-f", "--consolidated_file"},
                                                                  {"-p", "--project"}};
  for (const auto& [shortName, longName] : texts) {
    const ChildResult expected =
        endedWith("Unsupported multiple occurrences of : " + std::string(longName));
    EXPECT_EQ(parsedInChild({shortName, "a", shortName, "b"}), expected);
    EXPECT_EQ(parsedInChild({longName, "a", shortName, "a"}), expected);
  }
  const std::vector<std::pair<const char*, const char*>> switches = {
      {"-a", "--add"}, {"-c", "--create"}, {"-v", "--version"}, {"--help", "--help"}};
  for (const auto& [shortName, longName] : switches) {
    EXPECT_EQ(parsedInChild({shortName, longName}),
              endedWith("Unsupported multiple occurrences of : " + std::string(longName)));
  }
}

TEST(ConsolidatorOptionsErrors, ARepetitionComesBeforeAddTogetherWithCreate) {
  EXPECT_EQ(parsedInChild({"-a", "-c", "-c"}),
            endedWith("Unsupported multiple occurrences of : --create"));
}

TEST(ConsolidatorOptionsErrors, AnUnknownOptionEndsTheProcessWithStatusZero) {
  EXPECT_EQ(parsedInChild({"--nothing"}),
            endedWith("Unknown option: unrecognised option '--nothing'"));
  EXPECT_EQ(parsedInChild({"-q"}), endedWith("Unknown option: unrecognised option '-q'"));
  EXPECT_EQ(parsedInChild({"--dwarf", "in"}),
            endedWith("Unknown option: unrecognised option '--dwarf'"))
      << "names are case-sensitive";
  EXPECT_EQ(parsedInChild({"--consolidated-file", "f"}),
            endedWith("Unknown option: unrecognised option '--consolidated-file'"));
}

TEST(ConsolidatorOptionsErrors, ABareWordIsRejected) {
  const ChildResult expected = endedWith(
      "Unknown option: too many positional options have been specified on the command line");
  EXPECT_EQ(parsedInChild({"file"}), expected);
  EXPECT_EQ(parsedInChild({"-f", "file", "more"}), expected);
  EXPECT_EQ(parsedInChild({"--", "-f"}), expected);
  EXPECT_EQ(parsedInChild({""}), expected);
}

TEST(ConsolidatorOptionsErrors, AMissingValueIsRejected) {
  EXPECT_EQ(parsedInChild({"-f"}), endedWith("Unknown option: the required argument for option "
                                             "'--consolidated_file' is missing"));
  EXPECT_EQ(parsedInChild({"--hierarchy"}),
            endedWith("Unknown option: the required argument for option '--hierarchy' is missing"));
}

TEST(ConsolidatorOptionsErrors, ASwitchTakesNoValue) {
  EXPECT_EQ(parsedInChild({"--add=yes"}),
            endedWith("Unknown option: option '--add' does not take any arguments"));
}

TEST(ConsolidatorOptionsErrors, AnAmbiguousPrefixIsRejected) {
  EXPECT_EQ(parsedInChild({"--dump", "out"}),
            endedWith("Unknown option: option '--dump' is ambiguous and matches '--dump-dwarf', "
                      "and '--dump-json'"));
}

TEST(ConsolidatorOptionsErrors, AnErrorWinsOverHelpAndVersion) {
  EXPECT_EQ(parsedInChild({"--help", "--version", "--nothing"}),
            endedWith("Unknown option: unrecognised option '--nothing'"));
}

}  // namespace
}  // namespace consolidator
