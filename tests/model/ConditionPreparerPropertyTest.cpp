#include "model/ConditionPreparer.h"
#include "model/TwoStackConditionText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

constexpr std::array operands = {"a"sv,    "b"sv,   "bq_start"sv, "$i/x"sv, "1'b1"sv, "1'b0"sv,
                                 "0"sv,    "42"sv,  "Z9"sv,       "$"sv,    "x)"sv,   "1)"sv,
                                 "a\0b"sv, "9\0"sv, "m[3]"sv,     "q=="sv,  "$i/\0"sv};
constexpr std::array operators = {"=="sv, "&&"sv,  "||"sv, "!="sv, "&"sv,   "("sv,        ")"sv,
                                  "(a"sv, "((1"sv, "_x"sv, "\0"sv, "\0a"sv, "\xC3\xA9"sv, "@"sv};
constexpr std::array blanks = {" "sv, " "sv, " "sv, "  "sv, "\t"sv, "\n"sv, "\r\n"sv, "\v \f"sv};
constexpr std::string_view characters = "ab10$()=&| \t\0"sv;

class ConditionGenerator {
 public:
  explicit ConditionGenerator(unsigned seed) : random_(seed) {}

  // An expression with a fault now and then, wrapped in parentheses more or less well.
  std::string expression() {
    std::string text = chance(60) ? "(" : "";
    if (chance(5)) text += oneOf(blanks);
    const std::size_t count = random_() % 12;
    bool operandNext = !chance(10);
    for (std::size_t i = 0; i < count; ++i) {
      text += operandNext ? oneOf(operands) : oneOf(operators);
      if (!chance(2)) text += oneOf(blanks);
      operandNext = operandNext == chance(10);
    }
    if (chance(60)) text += ")";
    if (chance(5)) text += oneOf(blanks);
    return text;
  }

  std::string noise() {
    std::string text(random_() % 24, '\0');
    for (char& character : text) character = characters[random_() % characters.size()];
    return text;
  }

 private:
  bool chance(unsigned percent) { return random_() % 100 < percent; }

  template <std::size_t size>
  std::string_view oneOf(const std::array<std::string_view, size>& choices) {
    return choices[random_() % size];
  }

  std::mt19937 random_;
};

TEST(ConditionPreparerProperty, AgreesWithTwoStacksOnExpressions) {
  ConditionGenerator generator(20240103);
  for (int i = 0; i < 100'000; ++i) {
    const std::string text = generator.expression();
    ASSERT_EQ(ConditionPreparer().prepare(text), prepareWithTwoStacks(text))
        << testing::PrintToString(text);
  }
}

TEST(ConditionPreparerProperty, AgreesWithTwoStacksOnNoise) {
  ConditionGenerator generator(20240104);
  for (int i = 0; i < 100'000; ++i) {
    const std::string text = generator.noise();
    ASSERT_EQ(ConditionPreparer().prepare(text), prepareWithTwoStacks(text))
        << testing::PrintToString(text);
  }
}

// The expressions must reach both outcomes often, or the comparison says little.
TEST(ConditionPreparerProperty, GeneratesWellFormedAndMalformedExpressions) {
  ConditionGenerator generator(20240103);
  int malformed = 0;
  for (int i = 0; i < 10'000; ++i) {
    const std::string prepared = prepareWithTwoStacks(generator.expression());
    if (prepared.empty() || prepared.back() == ' ') ++malformed;
  }
  EXPECT_GT(malformed, 2'000);
  EXPECT_LT(malformed, 8'000);
}

}  // namespace
}  // namespace consolidator
