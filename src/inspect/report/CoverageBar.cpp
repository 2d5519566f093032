#include "inspect/report/CoverageBar.h"

#include "inspect/records/BitCoverage.h"
#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>

namespace consolidator::inspect {

namespace {

// From left to right, best first; what is left of the bar has no location.
constexpr std::array shownStates = {CoverageState::WithoutGap, CoverageState::WithGap,
                                    CoverageState::Doubtful};

}  // namespace

std::string wordsOf(const CoverageCounts& counts) {
  if (counts.total() == 0) return "none";
  const std::uint64_t withGap = counts[CoverageState::WithGap];
  const std::uint64_t located = counts[CoverageState::WithoutGap] + withGap;
  std::string words = fmt::format("{} of {} located", grouped(located), grouped(counts.total()));
  if (withGap > 0) words += fmt::format(", {} with gaps", grouped(withGap));
  const std::uint64_t doubtfulOnes = counts[CoverageState::Doubtful];
  if (doubtfulOnes > 0) words += fmt::format(", {} doubtful", grouped(doubtfulOnes));
  return words;
}

void writeCoverageBar(HtmlWriter& html, const CoverageCounts& counts) {
  if (counts.total() == 0) {
    html.add(part::cell, wordsOf(counts));
    return;
  }
  html.add(part::coverageBegin);
  double x = 0;
  for (const CoverageState state : shownStates) {
    if (counts[state] == 0) continue;
    const double width =
        100.0 * static_cast<double>(counts[state]) / static_cast<double>(counts.total());
    html.add(part::coveragePiece, nameOf(state), fmt::format("{:.2f}", x),
             fmt::format("{:.2f}", width));
    x += width;
  }
  html.add(part::coverageEnd, wordsOf(counts));
}

}  // namespace consolidator::inspect
