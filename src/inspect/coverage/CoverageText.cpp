#include "inspect/coverage/CoverageText.h"

#include "inspect/output/Numbered.h"
#include "inspect/output/Paint.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>

#include <string>

namespace consolidator::inspect {

namespace {

std::string shareOf(const CoverageCounts& counts) {
  const std::uint64_t located = counts[CoverageState::WithoutGap];
  if (counts.total() == 0) return "none";
  return fmt::format("{} of {} ({} %)", located, counts.total(),
                     Percent::of(located, counts.total()).text());
}

Paint paintFor(CoverageState state) {
  if (state == CoverageState::WithoutGap) return Paint::Good;
  return state == CoverageState::None ? Paint::Bad : Paint::Doubtful;
}

std::string bitsText(const BitCoverage& coverage) {
  const std::string bits = numbered(coverage.bits, "bit");
  switch (coverage.state) {
    case CoverageState::None:
      return "no location";
    case CoverageState::Doubtful:
      return fmt::format("{} up to {}, doubtful", bits, coverage.highest);
    case CoverageState::WithGap:
      return fmt::format("{} up to {}, with a gap", bits, coverage.highest);
    case CoverageState::WithoutGap:
      break;
  }
  return bits;
}

}  // namespace

void CoverageText::writeHeading(std::string_view text) const {
  console_->out.write(painted(Paint::Heading, text, console_->hasColour));
  console_->out.put('\n');
}

void CoverageText::add(const CoveredKernel& kernel) {
  writeHeading(fmt::format("Kernel {}", plain(kernel.kernel.name().view())));
  if (!kernel.listsNames) console_->out.write("  too many instances and names to list each pair\n");
  if (!kernel.coverage.isAll()) {
    console_->out.write("  some registers may belong to more instances than are counted\n");
  }
  std::uint32_t instance = 0;
  for (const consolidated::Text& path : kernel.kernel.instancePaths()) {
    if (instance == kernel.coverage.instances()) break;
    console_->out.write(fmt::format("  {}\n", plain(path.view())));
    writeNames(kernel, VariableKind::Argument, instance);
    writeNames(kernel, VariableKind::Variable, instance);
    ++instance;
  }
  if (instance == 0) console_->out.write("  no instances\n");
  writeConditions(kernel.conditions);
}

void CoverageText::writeNames(const CoveredKernel& kernel, VariableKind kind,
                              std::uint32_t instance) const {
  console_->out.write(
      fmt::format("    {}s: {}\n", nameOf(kind), shareOf(kernel.coverage.counts(kind, instance))));
  if (!kernel.listsNames) return;
  const auto write = [&](const CoveredName& name, const BitCoverage& coverage) {
    const std::string bits =
        painted(paintFor(coverage.state), bitsText(coverage), console_->hasColour);
    console_->out.write(
        fmt::format("      {} ({}): {}\n", plain(name.name), plain(name.registerName), bits));
  };
  kernel.coverage.forEach(kind, instance, write);
}

void CoverageText::writeConditions(const ConditionCounts& conditions) const {
  std::string text = fmt::format("  conditions: {}, {} well-formed; {} for source lines",
                                 conditions.total, conditions.wellFormed, conditions.sourceLines);
  if (dwarf_ == LineTableState::Read && conditions.sourceLines > 0) {
    text += fmt::format(", {} of them in the line tables", conditions.inLineTable);
  }
  console_->out.write(text + '\n');
}

void CoverageText::add(const CoverageSummary& summary) {
  writeHeading("Total");
  for (const VariableKind kind : {VariableKind::Argument, VariableKind::Variable}) {
    console_->out.write(fmt::format("  {}s: {}\n", nameOf(kind), shareOf(summary.counts(kind))));
  }
  console_->out.write(fmt::format(
      "  DWARF: {}\n"
      "  Bits missing at the top of a register are not seen: its width is not stored.\n",
      nameOf(dwarf_)));
}

void CoverageText::beginLosses() { writeHeading("Lost locations"); }

void CoverageText::add(const CoverageLoss& loss) {
  const std::string after = loss.after ? bitsText(*loss.after) : "gone";
  console_->out.write(fmt::format("  {} {} {} ({}) in {}: {} before, {}\n", plain(loss.kernel),
                                  nameOf(loss.kind), plain(loss.name), plain(loss.registerName),
                                  plain(loss.instance), bitsText(loss.before),
                                  painted(Paint::Bad, after, console_->hasColour)));
}

void CoverageText::endLosses(const CoverageLosses::Outcome& outcome) {
  console_->out.write(fmt::format("  {} in all\n", outcome.losses));
  if (outcome.notCompared == 0) return;
  console_->out.write(fmt::format("  not compared: {} with too many instances and names\n",
                                  numbered(outcome.notCompared, "kernel")));
}

}  // namespace consolidator::inspect
