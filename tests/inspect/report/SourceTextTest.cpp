#include "inspect/report/SourceText.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace consolidator::inspect {
namespace {

using Texts = std::vector<std::string>;

Texts linesIn(const std::string& text) {
  const SourceText source(text);
  Texts lines;
  for (std::size_t line = 0; line < source.size(); ++line) lines.emplace_back(source[line]);
  return lines;
}

TEST(SourceTextTest, HasTheLinesOfAText) {
  EXPECT_EQ(linesIn("one\ntwo\n\nfour"), (Texts{"one", "two", "", "four"}));
  EXPECT_EQ(linesIn("one\n"), Texts{"one"});
  EXPECT_EQ(linesIn("\n\n"), (Texts{"", ""}));
  EXPECT_EQ(linesIn(""), Texts{});
}

TEST(SourceTextTest, TakesOneCarriageReturnAsPartOfTheEnd) {
  EXPECT_EQ(linesIn("one\r\n\rtwo\r\r\nthree\r"), (Texts{"one", "\rtwo\r", "three"}));
  EXPECT_EQ(linesIn("\r\n"), Texts{""});
}

TEST(SourceTextTest, TakesFourBytesForEachLineBesideTheText) {
  const std::size_t lines = 100'000;
  std::string text(lines, '\n');
  const AllocationGauge gauge;
  EXPECT_EQ(SourceText(std::move(text)).size(), lines);
  EXPECT_LE(gauge.total(), 4 * (lines + 1));
}

}  // namespace
}  // namespace consolidator::inspect
