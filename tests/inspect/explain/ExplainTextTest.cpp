#include "inspect/explain/ExplainText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace consolidator::inspect {
namespace {

ExplainedInput explainedInput(InputKind kind, InputOutcome outcome) {
  ExplainedInput input;
  input.path = "path";
  input.kind = kind;
  input.outcome = outcome;
  return input;
}

TEST(ExplainText, TellsAnEmptyRunInThreeLines) {
  EXPECT_EQ(explainText(Explanation()),
            "Sections before: none\n"
            "Sections after: none\n"
            "Status: 0\n");
}

TEST(ExplainText, TellsAllThatThereIs) {
  Explanation explanation;
  explanation.inputs = {explainedInput(InputKind::LogicLocations, InputOutcome::Used),
                        explainedInput(InputKind::KernelXml, InputOutcome::Refused)};
  ExplainedInput& used = explanation.inputs[0];
  used.gave = {{"k", "kernel", std::nullopt, 1, std::nullopt},
               {"k", "hardware_variable", std::nullopt, 2, std::nullopt}};
  used.dropped = {{"k", "variable", "v", 1, "known"}};
  used.ignored = {{"a line of another kind", 7, {1, 2, 3, 4, 5, 6, 7}}, {"a bit", 1, {9}}};
  used.doubtful = {{"k", "/t/k_1", "/t/k_10/r", 1, 8}};
  explanation.inputs[1].reason = "a fault";
  explanation.inputs[1].line = 3;
  explanation.neverFound = {{"k", "/t/k_1", "v", "v_r", "t/k_1/v_s"},
                            {"k", "/t/k_1", "w", "w_r", std::nullopt}};
  explanation.losses = {{"damaged", "the file is damaged"}};
  explanation.before = {{0, consolidated::SectionKind::ProjectName, 40, 4}};
  explanation.after = {{0, consolidated::SectionKind::Json, 64, 16}};
  explanation.out = "printed\n";
  explanation.err = "said\nmore";
  explanation.status = 1;
  EXPECT_EQ(explainText(explanation),
            "path (ll): used\n"
            "  gave kernel k\n"
            "  gave 2 x hardware variable of kernel k\n"
            "  dropped variable v of kernel k: known\n"
            "  ignored 7 x a line of another kind (lines 1, 2, 3, 4, 5, ...)\n"
            "  ignored 1 x a bit (line 9)\n"
            "  doubtful /t/k_10/r taken for instance /t/k_1 of kernel k (line 8)\n"
            "path (kernel): refused: a fault (line 3)\n"
            "Never found:\n"
            "  v of kernel k in /t/k_1: no net of register v_r; closest: t/k_1/v_s\n"
            "  w of kernel k in /t/k_1: no net of register w_r\n"
            "Losses:\n"
            "  the file is damaged [damaged]\n"
            "Sections before:\n"
            "  project name at 0x28, 4 bytes\n"
            "Sections after:\n"
            "  json at 0x40, 16 bytes\n"
            "Standard output:\n"
            "  printed\n"
            "Standard error:\n"
            "  said\n"
            "  more\n"
            "Status: 1\n");
}

TEST(ExplainText, CountsWhatItDoesNotList) {
  Explanation explanation;
  explanation.inputs = {explainedInput(InputKind::Hierarchy, InputOutcome::Used)};
  explanation.inputs[0].gave.resize(23, {"k", "kernel", std::nullopt, 1, std::nullopt});
  explanation.isNeverFoundLimited = true;
  explanation.isClosestLimited = true;
  const std::string text = explainText(explanation);
  EXPECT_NE(text.find("    ... and 3 more\n"), std::string::npos) << text;
  EXPECT_NE(text.find("  There are more than were looked for.\n"), std::string::npos) << text;
  EXPECT_NE(text.find("  Not all nets were compared with these.\n"), std::string::npos) << text;
}

TEST(ExplainText, ShowsControlCharactersOfNamesHarmless) {
  Explanation explanation;
  explanation.inputs = {explainedInput(InputKind::Hierarchy, InputOutcome::Skipped)};
  explanation.inputs[0].path = "a\x1B[2Jb";
  explanation.neverFound = {{"\x1B", "\x1B", "\x1B", "\x1B", "\x1B"}};
  explanation.losses = {{"damaged", "\x1B"}};
  explanation.err = "\x1B";
  EXPECT_EQ(explainText(explanation).find('\x1B'), std::string::npos);
}

}  // namespace
}  // namespace consolidator::inspect
