#include "inspect/diff/FileComparison.h"

#include "inspect/diff/KernelListComparison.h"
#include "inspect/diff/SectionComparison.h"

namespace consolidator::inspect {

namespace {

// Hands changes on and counts them.
class CountedChanges : public ChangeSink {
 public:
  explicit CountedChanges(ChangeSink& sink) : sink_(&sink) {}

  void take(const Change& change) override {
    ++count_;
    sink_->take(change);
  }

  std::uint64_t count() const { return count_; }

 private:
  ChangeSink* sink_;
  std::uint64_t count_ = 0;
};

}  // namespace

ComparisonResult FileComparison::report(ChangeSink& sink) const {
  if (before_->bytes() == after_->bytes()) return resultOfEqualBytes();
  ComparisonResult result;
  CountedChanges changes(sink);
  ChangeReport report(changes, {});
  reportProject(report);
  reportDwarf(report);
  const bool isTableCompared =
      !options_.withSections || SectionComparison(*before_, *after_).report(report);
  KernelListComparison(*before_, result.before, *after_, result.after, options_.match)
      .report(changes);
  if (!isTableCompared) {
    result.after.whyIncomplete = "Its sections hold the same bytes again and again.";
  }
  result.changes = changes.count();
  result.isEqual = result.changes == 0 && result.isComplete();
  return result;
}

void FileComparison::reportProject(ChangeReport& report) const {
  const auto before = before_->project();
  const auto after = after_->project();
  if (before && after) {
    if (before->view() != after->view()) report.changed(Subject::Project, {}, *before, *after);
  } else if (before) {
    report.removed(Subject::Project, {}, *before);
  } else if (after) {
    report.added(Subject::Project, {}, *after);
  }
}

void FileComparison::reportDwarf(ChangeReport& report) const {
  const auto before = before_->dwarf();
  const auto after = after_->dwarf();
  if (before && after) {
    if (before->stored() == after->stored()) return;
    report.changed(Subject::Dwarf, {}, DwarfItem{*before}, DwarfItem{*after}, true);
  } else if (before) {
    report.removed(Subject::Dwarf, {}, DwarfItem{*before});
  } else if (after) {
    report.added(Subject::Dwarf, {}, DwarfItem{*after});
  }
}

ComparisonResult FileComparison::resultOfEqualBytes() const {
  ComparisonResult result;
  for (KernelWalk walk(*before_, result.before); walk.hasKernel();) walk.next();
  result.after = result.before;
  result.isEqual = true;
  return result;
}

}  // namespace consolidator::inspect
