#include "inspect/explain/ExplainedRun.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/NamedPipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace consolidator::inspect {
namespace {

using LineNumbers = std::vector<std::uint64_t>;

const std::string pathsThatBeginAlike =
    "k:\n type: hls\n instance path: /t/k_1\n instance path: /t/k_10\n";

// LineNumbers of a debug file that a variable needs around itself.
std::string inFunction(const std::string& lines) { return "RTL a b c\n" + lines; }

std::string bitOf(const std::string& net) { return "Bit 1 0x2 3 d 4 Net=" + net + "\n"; }

const std::set<std::string> dwarfRefusals{"a pipe, whose size cannot be known",
                                          "a file of 2 GiB or more",
                                          "a file that cannot be read to its end"};

class ExplainedRunTest : public testing::Test {
 protected:
  ExplainedInput explainInput(const std::string& option, const std::string& text) {
    folder_.write("k.dbg", inFunction("local i\nat k.c:1\nend i_r\n"));
    const std::string input = folder_.write(option == "-s" ? "x.dbg" : "input", text);
    std::vector<std::string> words{"-c", "-f", folder_.path("new")};
    if (option == "-l" || option == "-r") {
      words.insert(words.end(),
                   {"-h", folder_.write("h", pathsThatBeginAlike), "-s", folder_.path("k.dbg")});
    }
    words.insert(words.end(), {option, input});
    explanation_ = explainRun(words);
    return explanation_.inputs.back();
  }

  // What is ignored for a reason; no lines if nothing is.
  LineNumbers ignored(const std::string& option, const std::string& text,
                      const std::string& reason) {
    for (const IgnoredLines& lines : explainInput(option, text).ignored) {
      if (lines.reason == reason) return lines.firstLines;
    }
    return {};
  }

  // "line: reason" of an input that is refused.
  std::string refusal(const std::string& option, const std::string& text) {
    const ExplainedInput input = explainInput(option, text);
    if (input.outcome != InputOutcome::Refused) return "not refused";
    return std::to_string(input.line.value_or(0)) + ": " + input.reason.value_or("");
  }

  void expectRefusedDwarf(const std::string& path, const std::string& reason) {
    const ExplainedInput input = explainRun({"-f", folder_.path("new"), "-d", path}).inputs.at(0);
    EXPECT_EQ(input.outcome, InputOutcome::Refused);
    EXPECT_EQ(input.reason, reason);
    EXPECT_TRUE(dwarfRefusals.contains(reason));
  }

  TemporaryFolder folder_;
  Explanation explanation_;
};

// So many nets of an instance whose path begins like that of another one.
std::string doubtfulBits(int count) {
  std::string bits;
  for (int i = 0; i < count; ++i) bits += bitOf("t/k_10/" + std::to_string(i) + "/i_r");
  return bits;
}

// The reasons in the second column of a table of the document on what is skipped.
std::set<std::string> listedReasons(const std::string& heading) {
  std::ifstream document(CONSOLIDATOR_DOCUMENTS "/what-is-skipped.md");
  std::string line;
  while (std::getline(document, line) && line != heading) continue;
  std::set<std::string> reasons;
  while (std::getline(document, line) && !line.starts_with('#')) {
    const std::size_t first = line.find('|', 1);
    if (first == std::string::npos) continue;
    std::istringstream column(line.substr(first, line.find('|', first + 1) - first));
    std::string text;
    while (std::getline(column, text, '`') && std::getline(column, text, '`')) reasons.insert(text);
  }
  return reasons;
}

struct ExpectedReason {
  const char* option;
  std::string text;
  const char* reason;
  LineNumbers lines;
};

TEST_F(ExplainedRunTest, NamesTheLinesOfAllThatIsIgnored) {
  const std::string longLine(2048, 'x');
  const std::vector<ExpectedReason> reasons{
      {"-h", "k:\ntype: foo\n", "a type that is not known", {2}},
      {"-h", "k:\ntype: c\ntype: ip\n", "a type that a later one replaces", {3}},
      {"-h", "k:\nversion: x\na:\n", "all that follows a \"version:\" without a number", {2}},
      {"-h", "instance path: /a\n", "content of no kernel", {2}},
      {"-h", "\ntype: c", "content of no kernel", {2}},
      {"-h", "k:\ninstance path:", "an instance path that the end of the file cuts off", {2}},
      {"-h",
       "k:\ninstance path: /a\ninstance path: /a",
       "an instance path that the kernel has already",
       {3}},
      {"-h", "\nkernel\n", "the last character of a kernel's name, which is no \":\"", {2}},
      {"-h", "a:\n:\n", "a kernel without a name", {2}},
      {"-h", ":\nk:\n", "a kernel without a name, whose content goes to the next one", {2}},
      {"-h",
       "instance path: /a\nk:\n",
       "the place before the first kernel, whose content goes to that one",
       {2}},
      {"-h",
       "type: c\nk:\n",
       "the place before the first kernel, whose content goes to that one",
       {2}},
      {"-k", "<project>\n<foo/>\n</project>", "an element that is not known in its place", {2}},
      {"-k",
       "<project xmlns=\"u\" xmlns:a=\"v\"\n b=\"\">\n<platform c=\"\"/>\n</project>",
       "an attribute that is not known in its element",
       {1, 3}},
      {"-k",
       "<project><platform><device><core><kernel/></core></device></platform></project>",
       "a kernel without a name",
       {}},
      {"-s", "RTL a b c\n local i\n", "a line that begins with white space", {2}},
      {"-s", "#\nRTL a b c\nlocal i\nend i_r\n", "a function without a source position", {2}},
      {"-s",
       inFunction("local i\nat k.c:1\nend r\nRTL a b d\nlocal j\nat l.c:1\nend s\n"),
       "a function whose first source line another one has",
       {5}},
      {"-s",
       inFunction("local i\nat k.c:1\nat k.c:2\nend r\n"),
       "a source position after a function's first",
       {4}},
      {"-s",
       inFunction("local i\nat k.c:1\nreg: a:b\nend r\n"),
       "a register that the end of its block replaces",
       {4}},
      {"-s",
       inFunction("local i\nat k.c:1\nlocal j\n"),
       "a line that ends a block in place of its register",
       {4}},
      {"-s",
       inFunction("local i\nat k.c:1\nat k.c:2 more\n"),
       "a line that ends a block in place of its register",
       {4}},
      {"-s",
       inFunction("local i\nat k.c:1\nend\n"),
       "the register of a variable, which its last line does not give",
       {4}},
      {"-s",
       inFunction("local i\nat k.c:1\n"),
       "the register of a variable, which the end of the file cuts off",
       {4}},
      {"-s", std::string("#a\n#b\0c\n", 8), "the rest of a line after a zero byte", {2}},
      {"-x",
       "<ak:arg ak:originalName=\"a\"/>\n",
       "the name of the kernel, which no line gives",
       {2}},
      {"-x", "\n<ak:arg ak:originalName=a/>\n", "the ends of a value that is not in quotes", {2}},
      {"-x", "\n<ak:arg />\n", "the name of an argument, which the line does not give", {2}},
      {"-x",
       "<ak:arg ak:originalName=\"a\" />\n<ak:arg ak:originalName=\"a\" />\n",
       "an argument that the file has already",
       {2}},
      {"-x",
       "<ak:arg ak:originalName=\"a\" ak:originalName=\"b\" />\n",
       "an attribute that a later one of the line replaces",
       {1}},
      {"-x",
       "\n  <a><ak:acceleratorMap ak:functionName=\"a\" />\n",
       "an element that does not begin its line",
       {2}},
      {"-x",
       "<a> <ak:arg ak:originalName=\"a\" />\n",
       "an element that does not begin its line",
       {1}},
      {"-x", std::string("#a\n#b\0c\n", 8), "the rest of a line after a zero byte", {2}},
      {"-x",
       "\n<ak:acceleratorMap x>\n",
       "an \"ak:acceleratorMap\" without \"ak:functionName\"",
       {2}},
      {"-x",
       "<ak:acceleratorMap ak:functionName=\"a\">\n<ak:acceleratorMap ak:functionName=\"b\">\n",
       "the name of the kernel, which a later line replaces",
       {2}},
      {"-l", "\n" + longLine + "\n", "a line over 2047 bytes", {2}},
      {"-l",
       "; c\nBit 1 0x2 3 d 4 Revision Net=t/k_1/i_r\n",
       "a bit on a line with \"Revision\"",
       {2}},
      {"-l", "; c\nBit 1 x\n", "a bit whose numbers cannot be read", {2}},
      {"-l", "; c\nInfo x\n", "a line of another kind", {2}},
      {"-l", "; c\nBit 1 0x2 3 d 4 Ram=1\n", "a bit without a net", {2}},
      {"-l", "; c\n" + bitOf("t/k_1/i_r[268435456]"), "a bit index of 268435456 or more", {2}},
      {"-l", "; c\n" + bitOf("t/k_1/i_r[x]"), "a bit index that is no number", {2}},
      {"-l", "; c\n" + bitOf("other/i_r"), "a net outside every instance", {2}},
      {"-l",
       "; c\n" + bitOf("t/k_1/j_r"),
       "a net inside an instance, but of no known register",
       {2}},
      {"-l",
       "; c\nBit 1 0x100000000 3 d 4 Net=t/k_1/i_r\n",
       "the digits of an address beyond 32 bits",
       {2}},
      {"-l",
       std::string("; c\nBit 1 0x2 3 d 4 Net=t/k_1/i_r\0x\n", 36),
       "the rest of a line after a zero byte",
       {2}},
      {"-l", "; c\n" + doubtfulBits(1001), "a doubtful net that there is no room to list", {1002}},
      {"-l",
       bitOf("t/k_1/i_r") + "Bit 1 0x3 3 d 4 Net=t/k_1/i_r\n",
       "an earlier location of the bit, which the line replaces",
       {2}},
      {"-r", "\n" + longLine + "\n", "a line over 2047 bytes", {2}},
      {"-r", std::string("#a\n#b\0c\n", 8), "the rest of a line after a zero byte", {2}},
      {"-r",
       "\n3. Memory Utilization - Inferred\n",
       "a section before the title with the number 8",
       {2}},
      {"-r",
       "8. Block Ram / URAM Memory Power - Instantiated\n3. Memory Utilization - "
       "Inferred\n|a|RAMB|\n",
       "a block RAM, since RAM reports add nothing",
       {3}},
  };
  std::set<std::string> tested;
  for (const ExpectedReason& reason : reasons) {
    SCOPED_TRACE(reason.reason);
    tested.insert(reason.reason);
    EXPECT_EQ(ignored(reason.option, reason.text, reason.reason), reason.lines) << reason.text;
  }
  EXPECT_EQ(listedReasons("## What has no effect inside an input"), tested);
}

TEST_F(ExplainedRunTest, FindsNothingToIgnoreInPlainInputs) {
  EXPECT_TRUE(explainInput("-h", "# c\nversion: 1.0\n" + pathsThatBeginAlike).ignored.empty());
  EXPECT_TRUE(explainInput("-s", inFunction("local i\nat k.c:1\nend i_r\n")).ignored.empty());
  EXPECT_TRUE(explainInput("-x",
                           "<ak:acceleratorMap ak:functionName=\"k\" >\n"
                           "<ak:arg ak:originalName=\"a\" />\n")
                  .ignored.empty());
  EXPECT_TRUE(explainInput("-l", "; c\nRevision 3\n\n" + bitOf("t/k_1/i_r")).ignored.empty());
}

TEST_F(ExplainedRunTest, NamesTheLineOfARefusal) {
  const std::string longLine(1024, 'x');
  const std::vector<ExpectedReason> reasons{
      {"-h", "k:\nversion: 2\n", "a version above 1", {2}},
      {"-h", "k:\n\ninstance name: x", "an \"instance\" without \"path:\"", {3}},
      {"-s", "#\nfoo\n", "a line of no known kind", {2}},
      {"-s", "#\nlocal i\n", "a \"local\" before any RTL line", {2}},
      {"-s", "#\nEnd Function a\n", "an \"End Function\" without its beginning", {2}},
      {"-s", "Begin Function a\n", "a \"Begin Function\" without its end", {2}},
      {"-s", "\n" + longLine, "a line over 1023 bytes", {2}},
      {"-s", inFunction("local i\n" + longLine), "a line over 1023 bytes", {3}},
      {"-x", "\n" + longLine, "a line over 1023 bytes", {2}},
      {"-x", "\n<ak:arg ak:originalName=\n", "an attribute without a value", {2}},
  };
  std::set<std::string> tested = dwarfRefusals;
  for (const ExpectedReason& reason : reasons) {
    tested.insert(reason.reason);
    EXPECT_EQ(refusal(reason.option, reason.text),
              std::to_string(reason.lines[0]) + ": " + reason.reason);
  }
  EXPECT_EQ(listedReasons("## Inputs that are refused"), tested);
}

TEST_F(ExplainedRunTest, NamesLineAndColumnOfAFaultyDocument) {
  EXPECT_EQ(refusal("-k", "<project>\n<platform></project>"),
            "2: document not well-formed (mismatched tag), column 13");
}

TEST_F(ExplainedRunTest, CallsDwarfUsedThatHasBytes) {
  EXPECT_EQ(explainInput("-d", "bytes").outcome, InputOutcome::Used);
  const ExplainedInput empty = explainInput("-d", "");
  EXPECT_EQ(empty.outcome, InputOutcome::Nothing);
  EXPECT_TRUE(empty.gave.empty());
}

TEST_F(ExplainedRunTest, RefusesDwarfOfAPipe) {
  const NamedPipe pipe;
  pipe.write("bytes");
  expectRefusedDwarf(pipe.path(), "a pipe, whose size cannot be known");
}

TEST_F(ExplainedRunTest, RefusesDwarfOfTwoGibibytes) {
  const std::string file = folder_.write("sparse", "");
  std::filesystem::resize_file(file, std::uintmax_t{1} << 31);
  expectRefusedDwarf(file, "a file of 2 GiB or more");
}

TEST_F(ExplainedRunTest, RefusesDwarfThatIsShorterThanItsSize) {
  const char* const pseudo = "/sys/kernel/mm/transparent_hugepage/enabled";
  if (!std::filesystem::exists(pseudo)) GTEST_SKIP() << "no pseudo file here";
  expectRefusedDwarf(pseudo, "a file that cannot be read to its end");
}

TEST_F(ExplainedRunTest, SaysWhyAnInputIsSkipped) {
  for (const std::string option : {"-d", "-h", "-k", "-s", "-x", "-l", "-r"}) {
    SCOPED_TRACE(option);
    const auto input =
        explainRun({"-f", folder_.path("new"), option, folder_.path("missing")}).inputs.at(0);
    EXPECT_EQ(input.outcome, InputOutcome::Skipped);
    EXPECT_EQ(input.reason, "No such file or directory");
    const auto inFolder =
        explainRun({"-f", folder_.path("new"), option, folder_.path("")}).inputs.at(0);
    EXPECT_EQ(inFolder.reason, "Is a directory");
  }
}

TEST_F(ExplainedRunTest, SaysWhyAnInputHasNoEffect) {
  const std::string file = folder_.write("file", container({{SectionKind::Dwarf, "bytes"}}));
  const std::string xml = folder_.path("xml");
  const std::vector<std::pair<std::vector<std::string>, std::string>> reasons{
      {{"-f", file, "-k", xml, "--help"}, "the run prints its usage"},
      {{"-f", file, "-k", xml, "-v"}, "the run prints its version"},
      {{"-f", folder_.write("new", header(0, 2, 0)), "-k", xml}, "the run ends before its inputs"},
      {{"-f", file, "-k", xml, "-u", folder_.path("out")}, "the run dumps a section"},
      {{"-f", file, "-h", file}, "the consolidated file itself, which is empty by then"},
      {{"-f", file, "-d", folder_.write("same", "bytes")}, "the file has this DWARF already"},
      {{"-f", file, "-d", folder_.write("other", "byteS")}, "the file has DWARF already"},
  };
  std::set<std::string> tested;
  for (const auto& [words, reason] : reasons) {
    tested.insert(reason);
    EXPECT_EQ(explainRun(words).inputs.at(0).reason, reason);
  }
  EXPECT_EQ(listedReasons("## Inputs that are ignored or give nothing"), tested);
}

TEST_F(ExplainedRunTest, FindsTheMisspeltNetOfARegister) {
  explainInput("-l", bitOf("t/k_1/i_r") + bitOf("t/k_10/x") + bitOf("t/k_10/i_q"));
  ASSERT_EQ(explanation_.neverFound.size(), 1U);
  const NeverFound& missing = explanation_.neverFound[0];
  EXPECT_EQ(missing.kernel, "k");
  EXPECT_EQ(missing.instance, "/t/k_10");
  EXPECT_EQ(missing.variable, "i");
  EXPECT_EQ(missing.reg, "i_r");
  EXPECT_EQ(missing.closest, "t/k_10/i_q");
}

TEST_F(ExplainedRunTest, FindsNoNetThatIsTooDifferent) {
  explainInput("-l", bitOf("t/k_1/other"));
  ASSERT_EQ(explanation_.neverFound.size(), 2U);
  EXPECT_EQ(explanation_.neverFound[0].closest, std::nullopt);
}

TEST_F(ExplainedRunTest, NamesDoubtfulNets) {
  const ExplainedInput input =
      explainInput("-l", "; c\n" + bitOf("t/k_10/i_r[0]") + bitOf("t/k_10/i_r[1]"));
  ASSERT_EQ(input.doubtful.size(), 1U);
  EXPECT_EQ(input.doubtful[0].kernel, "k");
  EXPECT_EQ(input.doubtful[0].instance, "/t/k_1");
  EXPECT_EQ(input.doubtful[0].net, "/t/k_10/i_r");
  EXPECT_EQ(input.doubtful[0].count, 2U);
  EXPECT_EQ(input.doubtful[0].firstLine, 2U);
  EXPECT_TRUE(input.ignored.empty());
}

TEST_F(ExplainedRunTest, TellsWhatAMergeDrops) {
  const std::string file =
      folder_.write("file", container({{SectionKind::KernelRecords, fullRecords()}}));
  const std::string other = folder_.write("h", "second:\ntype: hls\n");
  const std::string again = folder_.write("h2", "second:\ntype: c\n");
  const Explanation explanation = explainRun({"-f", file, "-h", again, "-h", other});
  EXPECT_EQ(explanation.inputs[0].outcome, InputOutcome::Nothing);
  ASSERT_EQ(explanation.inputs[0].dropped.size(), 1U);
  EXPECT_EQ(explanation.inputs[0].dropped[0].what, "type");
  EXPECT_EQ(explanation.inputs[0].dropped[0].reason, "the kernel has another type already");
}

TEST_F(ExplainedRunTest, TellsWhatAnInputDropsItself) {
  const auto dropped = [&](const std::string& option, const std::string& text) {
    std::vector<std::string> told;
    for (const GivenItem& item : explainInput(option, text).dropped) {
      told.push_back(item.what + " " + item.name.value_or("") + ": " + item.reason.value_or(""));
    }
    return told;
  };
  using Texts = std::vector<std::string>;
  EXPECT_EQ(dropped("-k",
                    "<project><platform><device><core><kernel name=\"k\"><arg name=\"a\" "
                    "type=\"int\"/><arg name=\"a\" type=\"char\"/></kernel></core></device>"
                    "</platform></project>"),
            Texts{"argument a: the document has an argument of that name already"});
  EXPECT_EQ(dropped("-s", inFunction("local i\nat k.c:1\nend r\nlocal i\nend s\n")),
            Texts{"variable i: the file has a variable of that name already"});
  EXPECT_EQ(dropped("-s", inFunction("local i\nend r\n")),
            Texts{"variable i: a function without a source position"});
}

TEST_F(ExplainedRunTest, NamesTheFirstOfManyAndCountsTheOthers) {
  std::string types = "k:\n";
  std::string arguments;
  for (int i = 0; i < 22; ++i) {
    types += "type: foo\n";
    arguments += "<arg name=\"a\" type=\"t" + std::to_string(i) + "\"/>";
  }
  const ExplainedInput ignoring = explainInput("-h", types);
  ASSERT_EQ(ignoring.ignored.size(), 1U);
  EXPECT_EQ(ignoring.ignored[0].count, 22U);
  EXPECT_EQ(ignoring.ignored[0].firstLines.size(), 20U);

  const ExplainedInput dropping =
      explainInput("-k", "<project><platform><device><core><kernel name=\"k\">" + arguments +
                             "</kernel></core></device></platform></project>");
  ASSERT_EQ(dropping.dropped.size(), 20U + 1U);
  EXPECT_EQ(dropping.dropped[19].name, "a");
  EXPECT_EQ(dropping.dropped[20].name, std::nullopt);
  EXPECT_EQ(dropping.dropped[20].count, 1U);

  std::string kernels;
  for (int i = 0; i < 100'003; ++i) kernels += std::to_string(i) + ":\n";
  const ExplainedInput giving = explainInput("-h", kernels);
  ASSERT_EQ(giving.gave.size(), 100'000U + 1U);
  EXPECT_EQ(giving.gave[99'999].kernel, "99999");
  EXPECT_EQ(giving.gave[100'000].count, 3U);
}

TEST_F(ExplainedRunTest, NamesTheFirstOfManyLosses) {
  const std::string file = folder_.write("file", container({{SectionKind::Json, emptyJson()}}));
  const auto lossesWith = [&](int inputs) {
    std::vector<std::string> words{"-f", file};
    for (int i = 0; i < inputs; ++i) words.insert(words.end(), {"-h", file});
    return explainRun(words).losses;
  };
  ASSERT_EQ(lossesWith(100).size(), 100U);
  EXPECT_NE(lossesWith(100)[99].message, "and more of these");
  for (const int inputs : {101, 103}) {
    ASSERT_EQ(lossesWith(inputs).size(), 101U);
    EXPECT_EQ(lossesWith(inputs)[100].message, "and more of these");
  }
}

TEST_F(ExplainedRunTest, TellsTheSectionsOfAFileThatTheRunDoesNotRead) {
  using Kinds = std::vector<consolidated::SectionKind>;
  const std::string file = folder_.write("file", container({{SectionKind::ProjectName, "name"}}));
  const auto kinds = [](const std::vector<consolidated::Section>& sections) {
    Kinds found;
    for (const consolidated::Section& section : sections) found.push_back(section.kind);
    return found;
  };
  const Kinds stored{consolidated::SectionKind::ProjectName};
  for (const std::string option : {"--version", "--project=p"}) {  // the latter has no inputs
    const Explanation unread = explainRun({option, "-f", file});
    EXPECT_EQ(kinds(unread.before), stored) << option;
    EXPECT_EQ(kinds(unread.after), stored) << option;
  }
  const Explanation created = explainRun({"-c", "-f", file, "-h", folder_.path("missing")});
  EXPECT_EQ(kinds(created.before), stored);
  EXPECT_EQ(kinds(created.after), Kinds{consolidated::SectionKind::Json});
  folder_.write("file", "no consolidated file");
  EXPECT_EQ(kinds(explainRun({"--version", "-f", file}).before), Kinds());
}

TEST_F(ExplainedRunTest, MissesNoRegisterWhoseNetAnotherKernelOfTheNameGot) {
  const std::string variable = text("i") + text("i_r") + text("int") + u32(0);
  const std::string record = text("k") + u32(1) + text("/t/k") + u32(3) + u32(0) + u32(1) +
                             variable + u32(0) + u32(0) + u32(0);
  const std::string bytes = container({{SectionKind::KernelRecords, u32(2) + record + record}});
  const Explanation explanation = explainRun(
      {"-f", folder_.write("file", bytes), "-l", folder_.write("nets", bitOf("t/k/i_r"))});
  EXPECT_EQ(explanation.inputs.at(0).outcome, InputOutcome::Used);
  EXPECT_TRUE(explanation.neverFound.empty());
}

TEST_F(ExplainedRunTest, ReadsTheConsolidatedFileAsAnEmptyInput) {
  const std::string file = folder_.write("file", "k:\n");
  const Explanation existing = explainRun({"-c", "-f", file, "-k", folder_.path("./file")});
  EXPECT_EQ(existing.err, "Could not parse kernel file\n");
  EXPECT_EQ(existing.losses.at(0).code, "input-is-file");
  const Explanation created = explainRun({"-f", folder_.path("new"), "-k", folder_.path("new")});
  EXPECT_EQ(created.err, "Could not parse kernel file\n");
  EXPECT_EQ(created.losses.at(0).code, "input-is-file");
  EXPECT_FALSE(folder_.holds("new"));
  EXPECT_EQ(folder_.read("file"), "k:\n");
}

}  // namespace
}  // namespace consolidator::inspect
