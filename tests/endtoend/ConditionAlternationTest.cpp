#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Conditions = std::vector<std::string_view>;

// A kernel "k" whose conditions all are start conditions.
std::string record(const Conditions& conditions) {
  std::string bytes = text("k") + u32(0) + u32(4) + u32(0) + u32(0) + u32(0) +
                      u32(static_cast<std::uint32_t>(conditions.size()));
  for (const std::string_view condition : conditions) bytes += u32(0) + text(condition);
  return bytes + u32(0);
}

Section records(const Conditions& conditions) { return recordsSection({record(conditions)}); }

Section json(const Conditions& conditions) {
  std::string text =
      R"({ "Name" : "k", "Instance Paths" : [  ], "Type" : "HLS", "Arguments" : [ ], )"
      R"("Variables" : [ ], "Breakable Conditions" : [)";
  std::string_view separator;
  for (const std::string_view condition : conditions) {
    text.append(separator).append(R"({ "Start":true, "Cond":")").append(condition).append("\"}");
    separator = ", ";
  }
  return jsonSection(text + "] }");
}

// Every save prepares the stored conditions once more.
class ConditionAlternationTest : public ExecutableTest {
 protected:
  void save() const { EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence()); }

  // Expects that the file "out" holds these conditions, in its JSON text and in its records.
  void expectConditions(const Conditions& conditions) const {
    EXPECT_TRUE(folderHolds({{"out", container({json(conditions), records(conditions)})}}));
  }
};

TEST_F(ConditionAlternationTest, OperandsOfAComparisonChangePlacesOnEverySave) {
  write("out", container({jsonSection(""), records({"== $i/bq_start 1'b1"})}));
  for (int i = 0; i < 2; ++i) {
    save();
    expectConditions({"== 1'b1 $i/bq_start"});
    save();
    expectConditions({"== $i/bq_start 1'b1"});
  }
}

TEST_F(ConditionAlternationTest, ConditionsOfReadersAreBroughtIntoPrefixForm) {
  write("out", container({jsonSection(""), records({"(x == 1'b1)", "(a & b)", "(a == 1 && b == 0)",
                                                    "flag", "x==1", "(x == 1", "x == f)"})}));
  save();
  expectConditions({"== 1'b1 $i/x", "& $i/b $i/a", "== 0 && $i/b == 1 $i/a", "$i/flag", "$i/x==1",
                    "== 1 $i/x", "== $i/f $i/x"});
}

TEST_F(ConditionAlternationTest, TriviallyTrueConditionsAreGoneForGood) {
  write("out", container({jsonSection(""), records({"(1'b1 == 1'b1)", "(1'b1 == 1'b1)", "(x == 1)",
                                                    "(1'b1 == 1'b1)"})}));
  save();
  expectConditions({"== 1 $i/x"});
  save();
  expectConditions({"== $i/x 1"});
}

TEST_F(ConditionAlternationTest, OnlyTheExactTextIsTriviallyTrue) {
  write("out", container({jsonSection(""), records({"(1'b1 == 1'b1) ", "1'b1 == 1'b1"})}));
  save();
  expectConditions({"== 1'b1) 1'b1", "== 1'b1 1'b1"});
}

TEST_F(ConditionAlternationTest, MalformedConditionsKeepTheirQualifiedText) {
  write("out", container({jsonSection(""), records({"", "&&", "a ==", "! a b", "(", " a\t|"})}));
  save();
  expectConditions({"", "&& ", "$i/a == ", "! $i/b $i/a", "", "$i/a | "});
}

TEST_F(ConditionAlternationTest, KindLineAndFileStay) {
  const auto recordWith = [](std::string_view condition) {
    return text("k") + u32(0) + u32(4) + u32(0) + u32(0) + u32(0) + u32(1) + u32(2) +
           text(condition) + u32(12) + text("k.c") + u32(0);
  };
  const auto jsonWith = [](const std::string& condition) {
    return jsonSection(
        R"({ "Name" : "k", "Instance Paths" : [  ], "Type" : "HLS", "Arguments" : [ ], )"
        R"("Variables" : [ ], "Breakable Conditions" : [{ "File":"k.c", "Line":12, "Cond":")" +
        condition + "\"}] }");
  };
  write("out", container({jsonSection(""), recordsSection({recordWith("(a != 1)")})}));
  save();
  EXPECT_EQ(read("out"),
            container({jsonWith("!= 1 $i/a"), recordsSection({recordWith("!= 1 $i/a")})}));
  save();
  EXPECT_EQ(read("out"),
            container({jsonWith("!= $i/a 1"), recordsSection({recordWith("!= $i/a 1")})}));
}

TEST_F(ConditionAlternationTest, ADumpPreparesNothing) {
  const std::string stored = container({json({"a == 1"}), records({"a == 1"})});
  write("out", stored);
  EXPECT_EQ(run({"-f", "out", "-j", "json"}), silence());
  EXPECT_TRUE(folderHolds({{"out", stored}, {"json", json({"a == 1"}).bytes}}));
}

TEST_F(ConditionAlternationTest, SeveralJsonSectionsPrepareOneAfterTheOther) {
  write("out", container({jsonSection(""), jsonSection(""), records({"a == 1"})}));
  save();
  EXPECT_TRUE(folderHolds(
      {{"out", container({json({"== 1 $i/a"}), json({"== $i/a 1"}), records({"== $i/a 1"})})}}));
}

TEST_F(ConditionAlternationTest, RecordsBeforeTheJsonTextAreWrittenUnprepared) {
  write("out", container({records({"a == 1"}), jsonSection("")}));
  for (int i = 0; i < 2; ++i) {
    save();
    EXPECT_TRUE(folderHolds({{"out", container({records({"a == 1"}), json({"== 1 $i/a"})})}}));
  }
}

}  // namespace
}  // namespace consolidator
