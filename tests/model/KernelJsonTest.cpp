#include "model/KernelJson.h"
#include "model/SourceLine.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {
namespace {

KernelRecord kernelNamed(std::string_view name) {
  KernelRecord kernel;
  kernel.name = name;
  return kernel;
}

// The JSON of a kernel "k" of which only the parts that are given hold something.
class ExpectedJson {
 public:
  ExpectedJson& paths(const std::string& text) { return set(paths_, text); }

  ExpectedJson& type(const std::string& text) { return set(type_, text); }

  ExpectedJson& arguments(const std::string& text) { return set(arguments_, text); }

  ExpectedJson& variables(const std::string& text) { return set(variables_, text); }

  ExpectedJson& conditions(const std::string& text) { return set(conditions_, text); }

  std::string text() const {
    return R"({ "Name" : "k", "Instance Paths" : [ )" + paths_ + R"( ], "Type" : ")" + type_ +
           R"(", "Arguments" : [ )" + arguments_ + R"(], "Variables" : [ )" + variables_ +
           R"(], "Breakable Conditions" : [)" + conditions_ + "] }";
  }

 private:
  ExpectedJson& set(std::string& part, const std::string& text) {
    part = text;
    return *this;
  }

  std::string paths_;
  std::string type_ = "Unknown";
  std::string arguments_;
  std::string variables_;
  std::string conditions_;
};

TEST(KernelJson, RendersAnEmptyList) {
  KernelList kernels;
  EXPECT_EQ(json(kernels), R"({  "Kernels" : [  ] })");
}

TEST(KernelJson, RendersAKernelWithNothingButAName) {
  EXPECT_EQ(json(kernelNamed("k")),
            "{ \"Name\" : \"k\", \"Instance Paths\" : [  ], \"Type\" : "
            "\"Unknown\", \"Arguments\" : [ ], \"Variables\" : [ ], \"Breakable "
            "Conditions\" : [] }");
}

TEST(KernelJson, RendersTheDocumentOfOneKernel) {
  KernelRecord kernel = kernelNamed("k1");
  kernel.addInstancePath("top/k1_1");
  kernel.type = KernelType::HLS;
  kernel.addArgument("a", "p", "int*");
  kernel.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  KernelList kernels;
  kernels.append(kernel);
  EXPECT_EQ(json(kernels),
            "{  \"Kernels\" : [ "
            "{ \"Name\" : \"k1\", \"Instance Paths\" : [ \"top/k1_1/inst\" ], \"Type\" : \"HLS\", "
            "\"Arguments\" : [ [ \"a\", \"p\", \"int*\", 64]], \"Variables\" : [ ], \"Breakable "
            "Conditions\" : [{ \"Start\":true, \"Cond\":\"== 1'b1 $i/bq_start\"}] }"
            " ] }");
}

TEST(KernelJson, SeparatesKernels) {
  KernelList kernels;
  for (const char* name : {"b", "a", "b"}) kernels.append(kernelNamed(name));
  const std::string rest =
      R"(, "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ ], "Variables" : [ ], )"
      R"("Breakable Conditions" : [] })";
  EXPECT_EQ(json(kernels), R"({  "Kernels" : [ { "Name" : "b")" + rest + R"(, { "Name" : "a")" +
                               rest + R"(, { "Name" : "b")" + rest + " ] }");
}

TEST(KernelJson, SeparatesTheElementsOfEveryList) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addInstancePath("p");
  kernel.addInstancePath("q");
  kernel.addArgument("a", "b", "char");
  kernel.addArgument("c", "d", "int");
  kernel.addVariable("e", "f", "long");
  kernel.addVariable("g", "h", "char*");
  kernel.setLogicLocation("r", 1, 1, 2);
  kernel.setLogicLocation("s", 0, 3, 4);
  kernel.addBreakableCondition(ConditionKind::Stop, "x");
  kernel.addBreakableCondition(sourceLine("y", 12, "a.c"));
  kernel.addBRAM("m");
  kernel.addBRAM("m");
  EXPECT_EQ(json(kernel),
            "{ \"Name\" : \"k\", \"Instance Paths\" : [ \"p/inst\", \"q/inst\" ], "
            "\"Type\" : \"Unknown\", "
            "\"Arguments\" : [ [ \"a\", \"b\", \"char\", 8], [ \"c\", \"d\", \"int\", 32]], "
            "\"Variables\" : [ [ \"e\", \"f\", \"long\", 32], [ \"g\", \"h\", \"char*\", 64]], "
            "\"Hardware Variables\" : [ "
            "{ \"RTLName\" : \"r\", \"Logic Locations\" : [ [ 0, 0], [ 1, 2]] } , "
            "{ \"RTLName\" : \"s\", \"Logic Locations\" : [ [ 3, 4]] } ], "
            "\"Breakable Conditions\" : [{ \"Stop\":true, \"Cond\":\"x\"}, "
            "{ \"File\":\"a.c\", \"Line\":12, \"Cond\":\"y\"}], "
            "\"BRAMs\" : [ \"m\", \"m\"] }");
}

TEST(KernelJson, NamesEveryType) {
  const std::pair<std::uint32_t, const char*> types[] = {
      {0, "OpenCL"}, {1, "C"},       {2, "RTL"},     {3, "Unknown"},
      {4, "HLS"},    {5, "Unknown"}, {7, "Unknown"}, {0xFFFFFFFFU, "Unknown"}};
  for (const auto& [number, name] : types) {
    KernelRecord kernel = kernelNamed("k");
    kernel.type = static_cast<KernelType>(number);
    EXPECT_EQ(json(kernel), ExpectedJson().type(name).text()) << number;
  }
}

TEST(KernelJson, EndsPathsByTheTypesOfTheArguments) {
  const std::pair<const char*, const char*> suffixes[] = {
      {"int", "/inst"},          {"double", "/U0"},  {"float", "/U0"},
      {"const double *", "/U0"}, {"float4", "/U0"},  {"Double", "/inst"},
      {"FLOAT", "/inst"},        {"doubl", "/inst"}, {"", "/inst"}};
  for (const auto& [type, suffix] : suffixes) {
    KernelRecord kernel = kernelNamed("k");
    kernel.addInstancePath("p");
    kernel.addInstancePath("q");
    kernel.addArgument("a", "", "int");
    kernel.addArgument("b", "", type);
    kernel.addArgument("c", "", "int");
    EXPECT_EQ(kernel.instanceSuffix(), suffix) << type;
    const std::string start = R"({ "Name" : "k", "Instance Paths" : [ "p)" + std::string(suffix) +
                              R"(", "q)" + suffix + R"(" ], "Type")";
    EXPECT_EQ(json(kernel).substr(0, start.size()), start) << type;
    EXPECT_EQ(kernel.instancePaths[0], "p") << type;
  }
}

TEST(KernelJson, EndsPathsWithoutLookingAtTheVariables) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addInstancePath("p");
  kernel.addVariable("v", "w", "double");
  EXPECT_EQ(json(kernel),
            ExpectedJson().paths(R"("p/inst")").variables(R"([ "v", "w", "double", 32])").text());
}

TEST(KernelJson, EndsPathsWithoutLookingAtOtherArgumentTexts) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addInstancePath("");
  kernel.addArgument("float", "double", "int");
  EXPECT_EQ(
      json(kernel),
      ExpectedJson().paths(R"("/inst")").arguments(R"([ "float", "double", "int", 32])").text());
}

TEST(KernelJson, RendersAnInstanceWithoutBits) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addVariable("v", "w", "int");
  kernel.variables.find("v")->instanceBits = {{}};
  EXPECT_EQ(json(kernel),
            ExpectedJson()
                .variables(R"([ "v", "w", "int", 32, [ { "Instance" : 0, "Bits" : []}]])")
                .text());
}

TEST(KernelJson, NumbersInstancesByTheirPosition) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addArgument("a", "b", "char");
  kernel.arguments.find("a")->instanceBits = {{{1, 2}, {3, 4}}, {}, {{0, 4294967295U}}};
  EXPECT_EQ(json(kernel), ExpectedJson()
                              .arguments(R"([ "a", "b", "char", 8, [ )"
                                         R"({ "Instance" : 0, "Bits" : [{ 1, 2}, { 3, 4}]}, )"
                                         R"({ "Instance" : 1, "Bits" : []}, )"
                                         R"({ "Instance" : 2, "Bits" : [{ 0, 4294967295}]}]])")
                              .text());
}

TEST(KernelJson, RendersAHardwareVariableWithoutLocations) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addHardwareVariable(HardwareVariable("r"));
  EXPECT_EQ(json(kernel),
            R"({ "Name" : "k", "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ ], )"
            R"("Variables" : [ ], "Hardware Variables" : [ )"
            R"({ "RTLName" : "r", "Logic Locations" : [ ] } ], "Breakable Conditions" : [] })");
}

TEST(KernelJson, RendersEveryKindOfCondition) {
  const std::pair<std::uint32_t, const char*> kinds[] = {
      {0, R"({ "Start":true, "Cond":"c"})"},
      {1, R"({ "Stop":true, "Cond":"c"})"},
      {2, R"({ "File":"a.c", "Line":4294967295, "Cond":"c"})"},
      {3, R"({ "Error":1, "Cond":"c"})"},
      {9, R"({ "Error":1, "Cond":"c"})"},
      {0xFFFFFFFFU, R"({ "Error":1, "Cond":"c"})"}};
  for (const auto& [kind, text] : kinds) {
    BreakableCondition condition = sourceLine("c", 4294967295U, "a.c");
    condition.kind = static_cast<ConditionKind>(kind);
    KernelRecord kernel = kernelNamed("k");
    kernel.addBreakableCondition(condition);
    EXPECT_EQ(json(kernel), ExpectedJson().conditions(text).text()) << kind;
  }
}

TEST(KernelJson, RendersAConditionOfKindErrorAsOneOfAnUnknownKind) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addBreakableCondition(ConditionKind::Error, "c");
  EXPECT_EQ(json(kernel), ExpectedJson().conditions(R"({ "Error":1, "Cond":"c"})").text());
}

TEST(KernelJson, RendersASourceLineWithoutFile) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addBreakableCondition(ConditionKind::SourceLine, "");
  EXPECT_EQ(json(kernel), ExpectedJson().conditions(R"({ "File":"", "Line":0, "Cond":""})").text());
}

// This has to stay: consumers take the bytes between the fragments as they are.
TEST(KernelJson, EscapesNothing) {
  const std::string text("\"\\\n\t\0\x01\xFF</", 9);
  KernelRecord kernel = kernelNamed(text);
  kernel.addInstancePath(text);
  kernel.addArgument(text, text, text);
  kernel.addVariable(text, text, text);
  kernel.addHardwareVariable(HardwareVariable(text));
  kernel.addBreakableCondition(sourceLine(text, 1, text));
  kernel.addBRAM(text);
  const std::string quoted = "\"" + text + "\"";
  const std::string variable = "[ " + quoted + ", " + quoted + ", " + quoted + ", 32]";
  EXPECT_EQ(json(kernel), "{ \"Name\" : " + quoted + ", \"Instance Paths\" : [ \"" + text +
                              "/inst\" ], \"Type\" : \"Unknown\", \"Arguments\" : [ " + variable +
                              "], \"Variables\" : [ " + variable +
                              "], \"Hardware Variables\" : [ { \"RTLName\" : " + quoted +
                              ", \"Logic Locations\" : [ ] } ], \"Breakable Conditions\" : [{ "
                              "\"File\":" +
                              quoted + ", \"Line\":1, \"Cond\":" + quoted + "}], \"BRAMs\" : [ " +
                              quoted + "] }");
}

TEST(KernelJson, RendersOneKernelWithItsConditionsAsTheyAre) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addBreakableCondition(ConditionKind::Start, "(1'b1 == 1'b1)");
  kernel.addBreakableCondition(ConditionKind::Start, "(a == 1)");
  EXPECT_EQ(json(kernel), ExpectedJson()
                              .conditions(R"-({ "Start":true, "Cond":"(1'b1 == 1'b1)"}, )-"
                                          R"-({ "Start":true, "Cond":"(a == 1)"})-")
                              .text());
}

TEST(KernelJson, PreparesTheConditionsOfEveryKernelInTheListItself) {
  KernelList kernels;
  for (const char* name : {"k", "k"}) {
    KernelRecord kernel = kernelNamed(name);
    kernel.addBreakableCondition(ConditionKind::Start, "(1'b1 == 1'b1)");
    kernel.addBreakableCondition(ConditionKind::Stop, "(a == 1)");
    kernels.append(kernel);
  }
  const std::string once =
      ExpectedJson().conditions(R"({ "Stop":true, "Cond":"== 1 $i/a"})").text();
  EXPECT_EQ(json(kernels), "{  \"Kernels\" : [ " + once + ", " + once + " ] }");
  for (const KernelRecord& kernel : kernels) {
    ASSERT_EQ(kernel.breakableConditions.size(), 1U);
    EXPECT_EQ(kernel.breakableConditions[0].condition, "== 1 $i/a");
  }
  // Rendering again prepares again, and so swaps the operands back.
  const std::string twice =
      ExpectedJson().conditions(R"({ "Stop":true, "Cond":"== $i/a 1"})").text();
  EXPECT_EQ(json(kernels), "{  \"Kernels\" : [ " + twice + ", " + twice + " ] }");
  EXPECT_EQ(json(kernels), "{  \"Kernels\" : [ " + once + ", " + once + " ] }");
}

TEST(KernelJson, RendersEmptyConditionsWhenAllAreTriviallyTrue) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addBreakableCondition(ConditionKind::Start, "(1'b1 == 1'b1)");
  KernelList kernels;
  kernels.append(kernel);
  EXPECT_EQ(json(kernels), "{  \"Kernels\" : [ " + ExpectedJson().text() + " ] }");
}

}  // namespace
}  // namespace consolidator
