#include "inspect/verify/KernelChecks.h"

#include "inspect/verify/TextChecks.h"
#include "lookup/KeyedHash.h"

#include <cstddef>

namespace consolidator::inspect {

namespace {

using consolidated::Kernel;
using consolidated::Locations;
using consolidated::Text;
using consolidated::Variable;

bool isUnlocated(const consolidated::Location& location) {
  return (location.first | location.second) == 0;
}

}  // namespace

void KernelChecks::check(const Kernel& kernel) {
  ++kernels_;
  checkRecord(kernel);
  checkTexts(kernel);
  checkLocations(kernel);
  conditions_.check(kernel);
}

void KernelChecks::checkRecord(const Kernel& kernel) {
  const auto report = [&](FindingCode code, std::uint32_t number = 0) {
    findings_->add({code, kernel.section(), kernel.offset(), kernel.name(), {}, number});
  };
  const std::string_view name = kernel.name().view();
  if (!names_.add(keyedHash(name))) report(FindingCode::DuplicateKernel);
  if (name.empty()) report(FindingCode::UnnamedKernel);
  const auto type = static_cast<std::uint32_t>(kernel.type());
  if (kernel.type() > consolidated::KernelType::HLS) report(FindingCode::UnknownType, type);
  if (kernel.instancePaths().empty()) report(FindingCode::NoInstance);
  hasInstances_ = hasInstances_ || !kernel.instancePaths().empty();
}

void KernelChecks::checkTexts(const Kernel& kernel) {
  const TextPlace place{kernel.section(), kernel.name()};
  const auto check = [&](const Text& text, std::string_view subject) {
    if (!checkText(text, place, subject, *findings_)) renderStrictly_ = false;
  };
  check(kernel.name(), "the kernel's name");
  for (const Text& path : kernel.instancePaths()) check(path, "an instance path");
  for (const Variable& argument : kernel.arguments()) {
    check(argument.name(), "the name of an argument");
    check(argument.second(), "the second name of an argument");
    check(argument.cType(), "the type of an argument");
  }
  for (const Variable& variable : kernel.variables()) {
    check(variable.name(), "the name of a variable");
    check(variable.second(), "the second name of a variable");
    check(variable.cType(), "the type of a variable");
  }
  for (const consolidated::HardwareVariable& variable : kernel.hardwareVariables()) {
    check(variable.rtlName(), "the name of a hardware variable");
  }
  for (const consolidated::BreakableCondition& condition : kernel.breakableConditions()) {
    check(condition.condition(), "a condition");
    check(condition.file(), "the file of a condition");
  }
  for (const Text& bram : kernel.brams()) check(bram, "the name of a block RAM");
}

void KernelChecks::checkLocations(const Kernel& kernel) {
  for (const Variable& argument : kernel.arguments()) checkBits(kernel, argument, "an argument");
  for (const Variable& variable : kernel.variables()) checkBits(kernel, variable, "a variable");
  for (const consolidated::HardwareVariable& variable : kernel.hardwareVariables()) {
    checkLocations(kernel, variable.logicLocations(), "a hardware variable");
  }
}

void KernelChecks::checkBits(const Kernel& kernel, const Variable& variable,
                             std::string_view subject) {
  for (const Locations& bits : variable.instanceBits()) {
    checkLocations(kernel, bits, subject);
    if (!bits.empty()) renderStrictly_ = false;
  }
}

void KernelChecks::checkLocations(const Kernel& kernel, const Locations& locations,
                                  std::string_view subject) {
  hasLocations_ = hasLocations_ || !locations.empty();
  for (std::size_t bit = 0; bit < locations.size(); ++bit) {
    if (!isUnlocated(locations[bit])) continue;
    findings_->add({FindingCode::UnlocatedBit, kernel.section(),
                    locations.offset() + bit * Locations::width, kernel.name(), subject,
                    static_cast<std::int64_t>(bit)});
  }
}

}  // namespace consolidator::inspect
