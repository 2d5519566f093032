#include "inspect/diff/TextChanges.h"

#include "inspect/diff/ItemText.h"
#include "inspect/output/Paint.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace consolidator::inspect {

namespace {

std::string lineOfCounts(std::string_view name, std::uint64_t before, std::uint64_t after) {
  return fmt::format("{:<22}{:>12}{:>12}\n", name, before, after);
}

std::string verdict(const ComparisonResult& result) {
  if (!result.isEqual) return result.isComplete() ? "different" : "different: not complete";
  return result.isComplete() ? "equal" : "equal: the same bytes, but not complete";
}

}  // namespace

void TextChanges::take(const Change& change) {
  writeHeading(change);
  if (!change.isAddition()) writeSide('-', change, change.before);
  if (!change.isRemoval()) writeSide('+', change, change.after);
}

// Kernels may have the same name, which stands at another place then.
void TextChanges::writeHeading(const Change& change) {
  const char* const place = change.kernel ? change.kernel->data() : nullptr;
  if (hasHeading_ && place == headed_) return;
  hasHeading_ = true;
  headed_ = place;
  const std::string heading = change.kernel ? "kernel " + plain(*change.kernel) : "file";
  console_->out.write(painted(Paint::Heading, heading, console_->hasColour));
  console_->out.put('\n');
}

void TextChanges::writeSide(char mark, const Change& change, const ChangeItem& item) {
  const Paint paint = mark == '-' ? Paint::Bad : Paint::Good;
  const std::string list =
      change.subject == Subject::Order ? fmt::format(" of {}", *change.name) : "";
  const std::string start = fmt::format("{} {}{}", mark, nameOf(change.subject), list);
  console_->out.write(painted(paint, start, console_->hasColour));
  console_->out.put(' ');
  writeItemText(console_->out, item);
  if (mark == '+' && change.bytesDiffer == true) console_->out.write(", other bytes");
  console_->out.put('\n');
}

void writeSummary(Console& console, const ComparisonResult& result) {
  const ComparedFile& before = result.before;
  const ComparedFile& after = result.after;
  console.out.write(fmt::format("{:<22}{:>12}{:>12}\n", "", "before", "after"));
  console.out.write(lineOfCounts("kernels", before.kernels, after.kernels));
  for (const NamedCount& named : namedCounts) {
    console.out.write(
        lineOfCounts(named.name, before.counts.*named.count, after.counts.*named.count));
  }
  const Paint paint = result.isEqual ? Paint::Good : Paint::Bad;
  console.out.write(painted(paint, verdict(result), console.hasColour));
  console.out.put('\n');
}

}  // namespace consolidator::inspect
