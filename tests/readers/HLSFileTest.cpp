#include "model/Describe.h"
#include "readers/HLSFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::string_view refused = "refused";

// What comes out of a file: its record in a form to compare, or "refused".
std::string readText(std::string_view text, const char* fileName = "k.dbg") {
  const StreamCapture capture;
  HLSFile reader(fileName, text);
  const bool isAccepted = reader.parse();
  EXPECT_EQ(capture.out() + capture.err(), "");
  EXPECT_EQ(reader.kernels().size(), isAccepted ? 1U : 0U);
  return isAccepted ? describe(reader.kernels().front()) : std::string(refused);
}

struct Position {
  std::string_view condition;
  std::string_view file;
  std::uint32_t line;
};

struct Local {
  std::string_view name;
  std::string_view rtlName;
};

// The record of a kernel named k.
std::string hlsKernel(std::initializer_list<Position> positions,
                      std::initializer_list<Local> locals = {}, std::string_view name = "k") {
  KernelRecord record;
  record.name = name;
  for (const Position& position : positions) {
    BreakableCondition condition(ConditionKind::SourceLine, position.condition);
    condition.file = position.file;
    condition.line = position.line;
    record.breakableConditions.append(condition);
  }
  for (const Local& local : locals) record.variables.append({local.name, local.rtlName, "int"});
  return describe(record);
}

// The names of the conditions of a file with these RTL lines, each of which gets a position.
std::string conditionOf(std::string_view rtlLine) {
  return readText(std::string(rtlLine) + "\nlocal v\nat f.c:1\nend\n");
}

TEST(HLSFile, ReadsTheExampleOfItsFormat) {
  EXPECT_EQ(readText("# comment; blank lines and lines that begin with a space or a tab are too\n"
                     "Begin Function vadd\n"
                     "RTL vadd fsm (state == 3)\n"
                     "local sum\n"
                     "at vadd.cpp:12\n"
                     "reg: sum_next[31:0]\n"
                     "last sum_reg[31:0] vadd\n"
                     "End Function vadd\n",
                     "build/vadd.dbg"),
            hlsKernel({{"(state == 3)", "vadd.cpp", 12}}, {{"sum", "sum_reg"}}, "vadd"));
}

TEST(HLSFile, AFileOfCommentsAndBlankLinesYieldsAKernelWithItsNameOnly) {
  for (const std::string_view text :
       {""sv, "\n"sv, "\n\n\n"sv, "# comment"sv, "# a\n\n \n\t\n#"sv, "\0\n"sv, "\0RTL\n \n"sv}) {
    EXPECT_EQ(readText(text), hlsKernel({})) << text;
  }
}

TEST(HLSFile, ALineWithLeadingWhiteSpaceIsIgnoredEvenWithAKeyword) {
  EXPECT_EQ(readText(" Begin Function f\n\tEnd Function f\n RTL a b c\n\tlocal v\n nonsense\n"),
            hlsKernel({}));
}

TEST(HLSFile, OnlySpacesTabsAndZeroBytesMakeALineIgnorable) {
  for (const std::string_view text : {"\r\n"sv, "\v\n"sv, "\f"sv, "\x01\n"sv}) {
    EXPECT_EQ(readText(text), refused) << testing::PrintToString(text);
  }
  EXPECT_EQ(readText("\rRTL x y name\n\vlocal v\nat f.c:1\nend r\n"),
            hlsKernel({{"name", "f.c", 1}}, {{"v", "r"}}));
}

TEST(HLSFile, RefusesABeginWithoutAnEnd) {
  EXPECT_EQ(readText("Begin Function f\n"), refused);
  EXPECT_EQ(readText("Begin Function f\nBegin Function g\nEnd Function g\n"), refused);
  EXPECT_EQ(readText("Begin Function"), refused) << "without a name";
}

TEST(HLSFile, RefusesAnEndWithoutAnOpenScope) {
  EXPECT_EQ(readText("End Function f\n"), refused);
  EXPECT_EQ(readText("End Function f\nBegin Function f\n"), refused);
}

TEST(HLSFile, AnEndClosesTheInnermostScopeWhateverItNames) {
  EXPECT_EQ(readText("Begin Function f\nBegin Function g\nEnd Function f\nEnd Function\n"),
            hlsKernel({}));
}

TEST(HLSFile, ScopesDoNotMatterToFunctions) {
  EXPECT_EQ(readText("RTL a b one\nBegin Function f\nlocal v\nat x.c:1\nend r\nEnd Function f\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}}));
}

TEST(HLSFile, RefusesEveryOtherLine) {
  for (const std::string_view line :
       {"begin Function f"sv, "Begin function f"sv, "Begin"sv, "BeginFunction f"sv, "End"sv,
        "End Functions"sv, "rtl a b c"sv, "RTLx a b c"sv, "Local v"sv, "localv"sv, "reg: r[1:0]"sv,
        "at f.c:1"sv, "x"sv, "Function Begin"sv, "/"sv}) {
    EXPECT_EQ(readText("RTL a b c\n" + std::string(line) + "\n"), refused) << line;
  }
}

TEST(HLSFile, RefusesABlockBeforeAnyRtlLine) {
  EXPECT_EQ(readText("local v\nat f.c:1\nend r\nRTL a b c\n"), refused);
  EXPECT_EQ(readText("Begin Function f\nlocal v\nend r\nEnd Function f\n"), refused);
}

TEST(HLSFile, RefusesAPositionOutsideABlock) {
  EXPECT_EQ(readText("at f.c:1\n"), refused);
  EXPECT_EQ(readText("RTL a b c\nat f.c:1\n"), refused);
}

TEST(HLSFile, AnRtlLineIsNamedByItsWordsFromTheFourthOn) {
  EXPECT_EQ(conditionOf("RTL x y top loop_1"), hlsKernel({{"top loop_1", "f.c", 1}}, {{"v", ""}}));
  EXPECT_EQ(conditionOf("RTL x y  a\t b \v c"), hlsKernel({{"a b c", "f.c", 1}}, {{"v", ""}}));
}

TEST(HLSFile, WhiteSpaceAtTheEndOfAnRtlLineLeavesOneSpace) {
  EXPECT_EQ(conditionOf("RTL x y top loop_1 "),
            hlsKernel({{"top loop_1 ", "f.c", 1}}, {{"v", ""}}));
  EXPECT_EQ(conditionOf("RTL x y top \t \r"), hlsKernel({{"top ", "f.c", 1}}, {{"v", ""}}));
}

TEST(HLSFile, AnRtlLineOfUpToThreeWordsGivesAnEmptyName) {
  for (const std::string_view line : {"RTL"sv, "RTL x"sv, "RTL x y"sv, "RTL x y "sv, "RTL \t"sv}) {
    EXPECT_EQ(conditionOf(line), hlsKernel({{"", "f.c", 1}}, {{"v", ""}})) << line;
  }
}

TEST(HLSFile, FunctionsWithTheSameFirstLineNumberYieldOneConditionAndTheFirstOnesLocals) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:7\nend r\n"
                     "RTL a b two\nlocal w\nat y.c:7\nend s\n"
                     "RTL a b three\nlocal u\nat y.c:8\nat y.c:7\nend t\n"
                     "RTL a b four\nlocal z\nat y.c:9\nat y.c:7\nend q\n"),
            hlsKernel({{"one", "x.c", 7}, {"three", "y.c", 8}, {"four", "y.c", 9}},
                      {{"v", "r"}, {"u", "t"}, {"z", "q"}}));
}

TEST(HLSFile, AFunctionWhoseLocalsAreKnownYieldsAConditionAndNoVariables) {
  EXPECT_EQ(
      readText("RTL a b one\nlocal v\nat x.c:1\nend r\nRTL a b two\nlocal v\nat x.c:2\nend s\n"),
      hlsKernel({{"one", "x.c", 1}, {"two", "x.c", 2}}, {{"v", "r"}}));
}

TEST(HLSFile, AFunctionWithLocalsButNoPositionYieldsNothing) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nend r[3:0] x\nRTL a b two\n"), hlsKernel({}));
}

TEST(HLSFile, PositionsOfAllBlocksBelongToTheFunctionAndTheFirstOneCounts) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nend r\nlocal w\nat x.c:3\nat y.c:2\nend s\n"),
            hlsKernel({{"one", "x.c", 3}}, {{"v", "r"}, {"w", "s"}}));
}

TEST(HLSFile, TheFirstFunctionThatDeclaresANameWins) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nend first\nlocal v\nend again\n"
                     "RTL a b two\nlocal v\nat x.c:2\nend second\nlocal w\nend third\n"),
            hlsKernel({{"one", "x.c", 1}, {"two", "x.c", 2}}, {{"v", "first"}, {"w", "third"}}));
}

TEST(HLSFile, ABlockMayLackItsName) {
  EXPECT_EQ(readText("RTL a b one\nlocal\nat x.c:1\nend r\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"", "r"}}));
}

TEST(HLSFile, ALineOfTwoWordsWithAColonInTheSecondStaysInTheBlock) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nanything x.c:1\n: :\nend r x.c:2\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}}));
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\t\r\nend r\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}}))
      << "white space at the end is no third word";
}

TEST(HLSFile, ALineOfOneWordOrOfThreeClosesTheBlock) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nx.c:2\nlocal w\nat y.c:2 z\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", ""}, {"w", "y.c:2"}}));
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\n\r\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", ""}}))
      << "a line of white space that does not begin with a space or a tab has no words";
}

TEST(HLSFile, ARegisterLineWithoutAColonClosesTheBlock) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nreg: r[3]\nlocal w\nreg: flag\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}, {"w", "flag"}}));
}

TEST(HLSFile, TheClosingLineOverwritesTheRegisterLines) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nreg: r[7:4]\nat x.c:1\nreg: s[1:0]\nend t[1:0] x\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "t"}}));
  EXPECT_EQ(readText("RTL a b one\nlocal v\nreg: r[7:4]\nat x.c:1\nend\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", ""}}));
}

TEST(HLSFile, TheLineThatClosesABlockIsUsedUp) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nEnd Function f\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "Function"}}));
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nRTL a b two\nlocal w\nlocal u\nat y.c:2 x\n"),
            refused);
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nRTL a b two\nlocal w\nlocal u\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "a"}, {"w", "u"}}));
}

TEST(HLSFile, IgnorableLinesInABlockAreSkipped) {
  EXPECT_EQ(
      readText("RTL a b one\nlocal v\n# c\n\n at y.c:9\n\tend\n\0at y.c:8\nat x.c:1\n#\nend r\n"sv),
      hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}}));
}

TEST(HLSFile, TheEndOfTheFileClosesABlockAsAnEmptyLineWould) {
  for (const std::string_view end : {"\nat x.c:1"sv, "\nat x.c:1\n"sv, "\nat x.c:1\n\n# end\n "sv,
                                     "\nreg: r[1:0]\nat x.c:1"sv}) {
    EXPECT_EQ(readText("RTL a b one\nlocal v" + std::string(end)),
              hlsKernel({{"one", "x.c", 1}}, {{"v", ""}}))
        << end;
  }
  EXPECT_EQ(readText("RTL a b one\nlocal v"), hlsKernel({}));
  EXPECT_EQ(readText("Begin Function f\nRTL a b one\nlocal v\nat x.c:1\n"), refused);
}

TEST(HLSFile, LineNumbersKeepTheir32LowBits) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:4294967298\nend\n"
                     "RTL a b two\nlocal w\nat x.c:2\nend\n"
                     "RTL a b three\nlocal u\nat x.c:9223372036854775808\nend\n"
                     "RTL a b four\nlocal t\nat x.c:9223372036854775807\nend\n"),
            hlsKernel({{"one", "x.c", 2}, {"three", "x.c", 4294967295}}, {{"v", ""}, {"u", ""}}));
}

TEST(HLSFile, EqualConditionsCannotArise) {
  EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\nend\nRTL a b one\nlocal w\nat x.c:1\nend\n"),
            hlsKernel({{"one", "x.c", 1}}, {{"v", ""}}));
}

TEST(HLSFile, ALineOfTheBoundIsWhole) {
  const std::string comment = "#" + std::string(1022, 'c');
  EXPECT_EQ(readText(comment + "\n" + comment), hlsKernel({}));
  const std::string rtl = "RTL a b " + std::string(1015, 'n');
  EXPECT_EQ(readText(rtl + "\nlocal v\nat x.c:1\nend r\n"),
            hlsKernel({{rtl.substr(8), "x.c", 1}}, {{"v", "r"}}));
  const std::string closing = "end " + std::string(1019, 'r');
  for (const std::string_view lineEnd : {"\n"sv, ""sv}) {
    EXPECT_EQ(readText("RTL a b one\nlocal v\nat x.c:1\n" + closing + std::string(lineEnd)),
              hlsKernel({{"one", "x.c", 1}}, {{"v", closing.substr(4)}}));
  }
}

TEST(HLSFile, RefusesAnyLineOverTheBound) {
  const std::string start = "RTL a b one\n";
  for (const std::string_view first : {"#"sv, " "sv, "\t"sv, "RTL a b "sv, "\0"sv}) {
    const std::string line = std::string(first) + std::string(1024 - first.size(), 'x');
    EXPECT_EQ(readText(start + line + "\n"), refused) << first;
    EXPECT_EQ(readText(start + line), refused) << first;
    EXPECT_EQ(readText(start + "local v\n" + line + "\nend r\n"), refused) << first;
    EXPECT_EQ(readText(start + "local v\nat x.c:1\n" + line), refused) << first;
  }
}

TEST(HLSFile, TheBoundCountsWhatFollowsAZeroByte) {
  const std::string line = "# c\0"s + std::string(1019, 'x');
  EXPECT_EQ(readText(line + "\n"), hlsKernel({}));
  EXPECT_EQ(readText(line + "x\n"), refused);
}

TEST(HLSFile, ALineEndsAtItsFirstZeroByte) {
  EXPECT_EQ(readText("RTL a b one\0 two\nlocal v\0w\nat x.c:1\0 third\nend r\0s\n"sv),
            hlsKernel({{"one", "x.c", 1}}, {{"v", "r"}}));
}

TEST(HLSFile, AKernelIsNamedForItsFileWithoutFourCharacters) {
  EXPECT_EQ(readText("", "dir/k1.abc"), hlsKernel({}, {}, "k1"));
  EXPECT_EQ(readText("", "k1.abc"), hlsKernel({}, {}, "k1"));
  EXPECT_EQ(readText("", "dir/abcd"), hlsKernel({}, {}, ""));
  EXPECT_EQ(readText("", "abcd"), hlsKernel({}, {}, ""));
  EXPECT_EQ(readText("", "ab"), hlsKernel({}, {}, "ab"));
  EXPECT_EQ(readText("", "dir/abc"), hlsKernel({}, {}, "abc"));
  EXPECT_EQ(readText("", "a/b.dir/kernel.debug"), hlsKernel({}, {}, "kernel.d"));
  EXPECT_EQ(readText("", "/k1.abc"), hlsKernel({}, {}, "k1"));
  EXPECT_EQ(readText("", "dir/"), hlsKernel({}, {}, ""));
}

TEST(HLSFile, AFileThatIsNotOpenIsRefused) {
  HLSFile reader("");
  EXPECT_FALSE(reader.isValid());
  EXPECT_FALSE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
}

}  // namespace
}  // namespace consolidator
