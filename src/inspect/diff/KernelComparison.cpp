#include "inspect/diff/KernelComparison.h"

#include "inspect/diff/ConditionComparison.h"
#include "inspect/diff/ListComparison.h"

namespace consolidator::inspect {

namespace {

using consolidated::Kernel;

std::string_view recordOf(const Kernel& kernel, std::string_view bytes) {
  return bytes.substr(kernel.offset(), kernel.endOffset() - kernel.offset());
}

}  // namespace

void KernelComparison::report(const Kernel& before, const Kernel& after,
                              ChangeReport& report) const {
  if (isStoredAlike(before, after)) return;
  const auto compare = [&](const ListName& name, const auto& listBefore, const auto& listAfter) {
    ListComparison(listBefore, listAfter, bytesAfter_).report(name, report);
  };
  compare({Subject::InstancePath, "instance_paths"}, before.instancePaths(), after.instancePaths());
  if (before.type() != after.type()) {
    report.changed(Subject::Type, {}, before.type(), after.type());
  }
  compare({Subject::Argument, "arguments"}, before.arguments(), after.arguments());
  compare({Subject::Variable, "variables"}, before.variables(), after.variables());
  compare({Subject::HardwareVariable, "hardware_variables"}, before.hardwareVariables(),
          after.hardwareVariables());
  ConditionComparison(before.breakableConditions(), bytesBefore_, after.breakableConditions(),
                      bytesAfter_, match_)
      .report(report);
  compare({Subject::Bram, "brams"}, before.brams(), after.brams());
}

bool KernelComparison::isStoredAlike(const Kernel& before, const Kernel& after) const {
  return recordOf(before, bytesBefore_) == recordOf(after, bytesAfter_);
}

}  // namespace consolidator::inspect
