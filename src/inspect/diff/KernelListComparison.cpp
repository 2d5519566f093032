#include "inspect/diff/KernelListComparison.h"

#include "inspect/diff/ChangeReport.h"
#include "inspect/diff/OrderCheck.h"
#include "inspect/records/HeldKernels.h"
#include "inspect/records/KernelCounts.h"
#include "lookup/Matching.h"

#include <cstddef>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::Kernel;

std::string_view nameOfKernel(const Kernel& kernel) { return kernel.name().view(); }

void reportRemoval(const KernelWalk& walk, ChangeSink& sink) {
  ChangeReport(sink, walk.name()).removed(Subject::Kernel, walk.name(), walk.counts());
}

void reportAddition(std::string_view name, const KernelCounts& counts, ChangeSink& sink) {
  ChangeReport(sink, name).added(Subject::Kernel, name, counts);
}

}  // namespace

KernelListComparison::KernelListComparison(const File& before, ComparedFile& foundBefore,
                                           const File& after, ComparedFile& foundAfter,
                                           ConditionMatch match)
    : before_(&before),
      after_(&after),
      foundAfter_(&foundAfter),
      walkBefore_(before, foundBefore),
      walkAfter_(after, foundAfter),
      comparison_(before.bytes(), after.bytes(), match) {}

void KernelListComparison::report(ChangeSink& sink) {
  while (walkBefore_.hasKernel() && walkAfter_.hasKernel()) {
    if (walkBefore_.name() != walkAfter_.name()) return reportRest(sink);
    reportPair(walkBefore_.kernel(), walkAfter_.kernel(), sink);
    walkBefore_.next();
    walkAfter_.next();
  }
  for (; walkBefore_.hasKernel(); walkBefore_.next()) reportRemoval(walkBefore_, sink);
  for (; walkAfter_.hasKernel(); walkAfter_.next()) {
    reportAddition(walkAfter_.name(), walkAfter_.counts(), sink);
  }
}

void KernelListComparison::reportPair(const Kernel& before, const Kernel& after,
                                      ChangeSink& sink) const {
  ChangeReport report(sink, nameOfKernel(before));
  comparison_.report(before, after, report);
}

void KernelListComparison::reportRest(ChangeSink& sink) {
  const std::vector<Kernel> rest = restAfter();
  Matching matching(rest, nameOfKernel);
  OrderCheck order;
  for (; walkBefore_.hasKernel(); walkBefore_.next()) {
    const auto position = matching.take(walkBefore_.name());
    if (!position) {
      reportRemoval(walkBefore_, sink);
      continue;
    }
    reportPair(walkBefore_.kernel(), rest[*position], sink);
    order.add(*position);
  }
  for (std::size_t i = 0; i < rest.size(); ++i) {  // NOLINT(modernize-loop-convert): asks for i
    if (matching.isLeft(i)) reportAddition(nameOfKernel(rest[i]), KernelCounts::of(rest[i]), sink);
  }
  if (!order.isReordered()) return;
  ChangeReport(sink, {}).reordered("kernels", before_->kernels(), after_->kernels());
}

std::vector<Kernel> KernelListComparison::restAfter() {
  const std::size_t most = mostHeldKernels(*after_);
  std::vector<Kernel> rest;
  for (; walkAfter_.hasKernel(); walkAfter_.next()) {
    if (rest.size() == most) {
      foundAfter_->whyIncomplete = repeatsKernels;
      break;
    }
    rest.push_back(walkAfter_.kernel());
  }
  return rest;
}

}  // namespace consolidator::inspect
