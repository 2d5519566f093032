#include "inspect/report/FileSurvey.h"

#include "inspect/coverage/KernelCoverage.h"
#include "inspect/report/PageText.h"

namespace consolidator::inspect {

FileSurvey::FileSurvey(const consolidated::File& file) {
  auto kernel = file.kernels().begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) add(*kernel);
  fault = kernel.fault();
  tree.finish();
}

void FileSurvey::add(const consolidated::Kernel& kernel) {
  const std::string name = shortened(kernel.name().view());
  counts += KernelCounts::of(kernel);
  const KernelCoverage covered(kernel);
  for (std::uint32_t instance = 0; instance < covered.instances(); ++instance) {
    coverage += covered.counts(VariableKind::Argument, instance);
    coverage += covered.counts(VariableKind::Variable, instance);
  }
  if (names.size() < mostNames) names.push_back(name);
  for (const consolidated::Text& path : kernel.instancePaths()) {
    if (tree.size() == InstanceTree::mostPaths) break;
    tree.add(path.view(), kernels, name);
  }
  ++kernels;
}

}  // namespace consolidator::inspect
