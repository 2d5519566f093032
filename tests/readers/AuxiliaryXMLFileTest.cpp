#include "model/Describe.h"
#include "readers/AuxiliaryXMLFile.h"
#include "readers/KernelWithArguments.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// What comes out of a file: its record in a form to compare, or the message.
std::string read(std::string_view text) {
  const StreamCapture capture;
  AuxiliaryXMLFile reader("a_auxiliary.xml", text);
  const bool isAccepted = reader.parse();
  EXPECT_EQ(capture.out(), "");
  EXPECT_EQ(reader.kernels().size(), isAccepted ? 1U : 0U);
  return isAccepted ? capture.err() + describe(reader.kernels().front()) : capture.err();
}

std::string kernel(std::string_view name, std::initializer_list<Argument> arguments = {}) {
  return describe(kernelWithArguments(name, arguments));
}

// The type of an argument with this word.
std::string typed(std::string_view word) { return read("<ak:arg " + std::string(word) + "\n"); }

constexpr std::string_view malformed = "Malformed auxiliary file: a_auxiliary.xml\n";

TEST(AuxiliaryXMLFile, ReadsNameAndArguments) {
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"vadd\">\n"
                 "  <ak:arg ak:originalName=\"a\"/>\n"
                 "  <ak:arg ak:originalName=\"begin_r\"/>\n"),
            kernel("vadd\"", {{"a\"/", "a\"/", ""}, {"begin_r\"/", "begin_r\"/", ""}}))
      << "the end of a tag is part of the last word";
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"vadd\" >\n"
                 "  <ak:arg ak:originalName=\"a\" />\n"
                 "\t<ak:arg x=\"y\" ak:originalName=\"begin_r\" />\n"
                 "</ak:acceleratorMap>\n"),
            kernel("vadd", {{"a", "a", ""}, {"begin", "begin_r", ""}}));
}

TEST(AuxiliaryXMLFile, AFileWithoutARecognisedLineYieldsAnEmptyRecord) {
  for (const std::string_view text :
       {""sv, "\n"sv, "<?xml version=\"1.0\"?>\n<project>\n</project>"sv, " \t\r\n\v\f"sv}) {
    EXPECT_EQ(read(text), kernel("")) << text;
  }
}

TEST(AuxiliaryXMLFile, ArgumentsNeedNoKernelName) {
  EXPECT_EQ(read("<ak:arg ak:originalName=\"a\""), kernel("", {{"a", "a", ""}}));
}

TEST(AuxiliaryXMLFile, TheNameMayStandAnywhereInTheFile) {
  EXPECT_EQ(read("<ak:arg ak:originalName=\"a\"\n"
                 "<ak:acceleratorMap ak:functionName=\"vadd\"\n"
                 "<ak:arg ak:originalName=\"b\"\n"),
            kernel("vadd", {{"a", "a", ""}, {"b", "b", ""}}));
}

TEST(AuxiliaryXMLFile, ALaterNameReplacesAnEarlierOneButALineWithoutANameDoesNot) {
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"one\"\n"
                 "<ak:acceleratorMap ak:functionName=\"two\"\n"
                 "<ak:acceleratorMap ak:originalName=\"three\"\n"
                 "<ak:acceleratorMap\n"),
            kernel("two"));
}

TEST(AuxiliaryXMLFile, TheFirstNameOfALineEndsIt) {
  EXPECT_EQ(read("<ak:acceleratorMap x=\"y\" ak:functionName=\"one\" ak:functionName=\"two\"\n"),
            kernel("one"));
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"one\" ak:functionName=\n"), kernel("one"));
}

TEST(AuxiliaryXMLFile, LinesAreRecognisedByTheirExactFirstWord) {
  for (const std::string_view start :
       {"<ak:args"sv, "<ak:arg/>"sv, "ak:arg"sv, "<AK:ARG"sv, "x <ak:arg"sv, "< ak:arg"sv}) {
    EXPECT_EQ(read(std::string(start) + " ak:originalName=\"a\"\n"), kernel("")) << start;
  }
  for (const std::string_view start :
       {"<ak:acceleratorMap>"sv, "<ak:acceleratormap"sv, "<ak:arg>"sv}) {
    EXPECT_EQ(read(std::string(start) + " ak:functionName=\"a\"\n"), kernel("")) << start;
  }
  EXPECT_EQ(read("\v\f\r \t<ak:arg\tak:originalName=\"a\"\r\n"), kernel("", {{"a", "a", ""}}));
}

TEST(AuxiliaryXMLFile, AnAttributeIsOneWordThatBeginsWithItsName) {
  EXPECT_EQ(typed("xak:originalName=\"a\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(typed("ak:originalname=\"a\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(typed("ak:originalName =\"a\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(typed("ak:originalName"), kernel("", {{"", "", ""}}));
}

TEST(AuxiliaryXMLFile, AnArgumentWithoutANameIsAddedOnce) {
  EXPECT_EQ(read("<ak:arg\n<ak:arg x=\"y\"\n<ak:arg ak:busTypeRef=\"x\"\n"),
            kernel("", {{"", "", ""}}));
  EXPECT_EQ(read("<ak:arg ak:busTypeRef=\"x\"\n<ak:arg\n"), kernel("", {{"", "", "int"}}));
}

TEST(AuxiliaryXMLFile, TheFirstLineForANameWins) {
  EXPECT_EQ(read("<ak:arg ak:originalName=\"begin_r\"\n"
                 "<ak:arg ak:originalName=\"begin\" ak:busTypeRef=\"x\"\n"
                 "<ak:arg ak:originalName=\"a\" ak:busTypeRef=\"x\"\n"
                 "<ak:arg ak:originalName=\"a\"\n"),
            kernel("", {{"begin", "begin_r", ""}, {"a", "a", "int"}}));
}

TEST(AuxiliaryXMLFile, TheLastOfEachAttributeOfALineWins) {
  EXPECT_EQ(typed("ak:originalName=\"a\" ak:busTypeRef=\"\"acc_fifo\"\" ak:originalName=\"or_r\" "
                  "ak:busTypeRef=\"x\""),
            kernel("", {{"or", "or_r", "int"}}));
}

TEST(AuxiliaryXMLFile, NamesOfReservedWordsAreRestored) {
  EXPECT_EQ(typed("ak:originalName=\"wire_r\""), kernel("", {{"wire", "wire_r", ""}}));
  EXPECT_EQ(typed("ak:originalName=\"count_r\""), kernel("", {{"count_r", "count_r", ""}}));
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"begin_r\"\n"), kernel("begin_r"))
      << "not that of the kernel";
}

TEST(AuxiliaryXMLFile, ValuesAreCutAtFixedPositions) {
  EXPECT_EQ(typed("ak:originalName='a'"), kernel("", {{"a", "a", ""}}));
  EXPECT_EQ(typed("ak:originalName=abcd"), kernel("", {{"bc", "bc", ""}}));
  EXPECT_EQ(typed("ak:originalName=\"a\"/>"), kernel("", {{"a\"/", "a\"/", ""}}));
  EXPECT_EQ(typed("ak:originalName=\"\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=abcd\n"), kernel("bc"));
}

TEST(AuxiliaryXMLFile, AValueOfOneCharacterIsEmpty) {
  EXPECT_EQ(typed("ak:originalName=\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\"one\"\n<ak:acceleratorMap "
                 "ak:functionName=\"\n"),
            kernel(""));
  EXPECT_EQ(typed("ak:busTypeRef=\""), kernel("", {{"", "", "int"}}));
}

TEST(AuxiliaryXMLFile, AValueWithWhiteSpaceIsTwoWords) {
  EXPECT_EQ(typed("ak:originalName=\"a b\""), kernel("", {{"", "", ""}}));
  EXPECT_EQ(typed("ak:originalName=\"ab cd\""), kernel("", {{"a", "a", ""}}));
}

TEST(AuxiliaryXMLFile, AStreamIsWhatStandsInTwoPairsOfQuotes) {
  EXPECT_EQ(typed("ak:busTypeRef=\"\"acc_fifo\"\""), kernel("", {{"", "", "int*"}}));
  EXPECT_EQ(typed("ak:busTypeRef=\"\"acc_fifo\""), kernel("", {{"", "", "int*"}}));
  EXPECT_EQ(typed("ak:busTypeRef=x\"acc_fifo\""), kernel("", {{"", "", "int*"}}));
}

TEST(AuxiliaryXMLFile, EveryOtherTypeIsAnInt) {
  for (const std::string_view value :
       {"\"acc_fifo\""sv, "acc_fifo"sv, "\"\"register\"\""sv, "\"register\""sv, "\"\"acc_fifo"sv,
        "\"\"acc_fifo\"\"\""sv, "\"\"ACC_FIFO\"\""sv, "\"\"acc_fifo\"\"/>"sv, "\"\"\""sv}) {
    EXPECT_EQ(typed("ak:busTypeRef=" + std::string(value)), kernel("", {{"", "", "int"}})) << value;
  }
}

TEST(AuxiliaryXMLFile, AnAttributeWithoutAValueIsMalformed) {
  EXPECT_EQ(typed("ak:originalName="), malformed);
  EXPECT_EQ(typed("ak:busTypeRef="), malformed);
  EXPECT_EQ(typed("ak:originalName=\"a\" ak:originalName= x"), malformed);
  EXPECT_EQ(typed("ak:busTypeRef= \"x\""), malformed);
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName=\n"), malformed);
  EXPECT_EQ(read("<ak:acceleratorMap ak:functionName= ak:functionName=\"a\""), malformed);
  EXPECT_EQ(read("<ak:arg ak:originalName=\0\"a\"\n"sv), malformed) << "a zero byte ends the line";
}

TEST(AuxiliaryXMLFile, AnAttributeWithoutAValueIsIgnoredWhereItIsNotLookedFor) {
  EXPECT_EQ(typed("ak:functionName="), kernel("", {{"", "", ""}}));
  EXPECT_EQ(read("<ak:acceleratorMap ak:originalName= ak:busTypeRef= ak:functionName=\"a\"\n"),
            kernel("a"));
  EXPECT_EQ(read("ak:originalName=\n<x ak:busTypeRef= ak:functionName=\n"), kernel(""));
}

TEST(AuxiliaryXMLFile, ALineOfTheBoundIsWhole) {
  const std::string name(1023 - "<ak:arg ak:originalName=\"\""sv.size(), 'n');
  const std::string line = "<ak:arg ak:originalName=\"" + name + "\"";
  EXPECT_EQ(read(line + "\n"), kernel("", {{name, name, ""}}));
  EXPECT_EQ(read(line), kernel("", {{name, name, ""}}));
}

TEST(AuxiliaryXMLFile, ALineOverTheBoundIsMalformedWhateverItHolds) {
  for (const std::string_view start : {"<ak:arg "sv, "<!-- "sv, "\n<ak:arg x\n"sv, "\0"sv}) {
    const std::string line = std::string(start) + std::string(1024, 'x');
    EXPECT_EQ(read(line + "\n"), malformed) << start;
    EXPECT_EQ(read(line), malformed) << start;
  }
  EXPECT_EQ(read(std::string(1024, ' ')), malformed);
}

TEST(AuxiliaryXMLFile, ALineEndsAtItsFirstZeroByte) {
  EXPECT_EQ(read("<ak:arg ak:originalName=\"a\"\0 ak:busTypeRef=\"x\"\n<ak:arg\0\n"sv),
            kernel("", {{"a", "a", ""}, {"", "", ""}}));
}

TEST(AuxiliaryXMLFile, AFileThatIsNotOpenIsRefusedSilently) {
  const StreamCapture capture;
  AuxiliaryXMLFile reader("");
  EXPECT_FALSE(reader.isValid());
  EXPECT_FALSE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

}  // namespace
}  // namespace consolidator
