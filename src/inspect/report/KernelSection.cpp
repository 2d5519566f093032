#include "inspect/report/KernelSection.h"

#include "inspect/records/KernelCounts.h"
#include "inspect/records/KernelItems.h"
#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"
#include "inspect/report/RegisterOwners.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;
using consolidated::HardwareVariable;
using consolidated::Kernel;
using consolidated::List;
using consolidated::Text;
using consolidated::Variable;

constexpr PageListKind instanceList{
    "instance", "Instances", "an instance path and how many arguments and variables are located",
    &part::instancesTable};
constexpr PageListKind argumentList{
    "argument", "Arguments",
    "name, type, bits, register, the instances where it is located, and stored bits",
    &part::variablesTable};
constexpr PageListKind variableList{
    "variable", "Variables",
    "name, type, bits, register, the instances where it is located, and stored bits",
    &part::variablesTable};
constexpr PageListKind conditionList{"condition", "Breakable conditions",
                                     "a condition, its kind and its source",
                                     &part::conditionsTable};
constexpr PageListKind registerList{"register", "Registers",
                                    "a register, variable, instance, number of bits and locations",
                                    &part::registersTable};
constexpr PageListKind kernelList{"kernel", {}, {}, nullptr};
constexpr PageListKind bramList{"block RAM", "Block RAMs", "a name", &part::bramsTable};

// What the search calls lines that tell themselves what they are.
constexpr std::string_view mixedLines = "mixed";

// The nouns of all counts, in the order of namedCounts.
constexpr std::array<std::string_view, namedCounts.size()> nouns = {
    "instance", "argument", "variable", "register", "location", "condition", "block RAM"};

std::string wordsOf(const KernelCounts& counts) {
  std::string words;
  for (std::size_t i = 0; i < nouns.size(); ++i) {
    const std::uint64_t count = counts.*namedCounts[i].count;
    if (count == 0) continue;
    words += (words.empty() ? "" : " · ") + counted(count, nouns[i]);
  }
  return words;
}

// In how many instances a variable is located; empty where there are too many to be asked.
std::string locatedIn(const KernelCoverage& coverage, VariableKind kind, std::uint32_t name) {
  constexpr std::uint64_t mostPairs = 10000;
  const std::uint32_t instances = coverage.instances();
  if (std::uint64_t{instances} * coverage.names(kind) > mostPairs) return {};
  std::uint32_t located = 0;
  for (std::uint32_t instance = 0; instance < instances; ++instance) {
    if (coverage.at(kind, name, instance).state >= CoverageState::WithGap) ++located;
  }
  return fmt::format("{} of {}", located, counted(instances, "instance"));
}

std::string sourceOf(const BreakableCondition& condition) {
  if (condition.kind() != ConditionKind::SourceLine) return {};
  return fmt::format("{}:{}", condition.file().view(), condition.line());
}

}  // namespace

void KernelSection::write(const Kernel& kernel, std::uint64_t number) {
  if (number < mostParts) return writePart(kernel, number);
  if (!lines_) {
    html_->add(part::kernelsMore, grouped(mostParts), PageLines::blockLines);
    lines_.emplace(*html_, mixedLines);
  }
  kernel_ = shortened(kernel.name().view());
  {
    PageTable table(list(kernelList, 1));
    table.beginRow();
    table.name(kernel.name());
    table.text(nameOf(kernel.type()));
    table.endRow();
  }
  writeLists(kernel);
}

void KernelSection::writePart(const Kernel& kernel, std::uint64_t number) {
  const std::string counts = wordsOf(KernelCounts::of(kernel));
  html_->add(areOpen_ ? part::kernelOpen : part::kernelClosed, number);
  html_->add(part::kernelSummary, kernel.name(), nameOf(kernel.type()), counts);
  if (counts.empty()) html_->add(part::kernelEmpty);
  writeLists(kernel);
  html_->add(part::kernelEnd);
}

void KernelSection::writeLists(const Kernel& kernel) {
  const KernelCoverage coverage(kernel);
  writeInstances(kernel, coverage);
  writeVariables(kernel.arguments(), coverage, VariableKind::Argument);
  writeVariables(kernel.variables(), coverage, VariableKind::Variable);
  writeConditions(kernel);
  if (!lines_) sources_->write(*html_, kernel.breakableConditions());
  writeRegisters(kernel);
  writeBrams(kernel);
}

PageTable KernelSection::list(const PageListKind& kind, std::uint64_t rows) {
  if (lines_) return {*html_, *lines_, kind, kernel_};
  return {*html_, budget_, kind, rows};
}

void KernelSection::writeInstances(const Kernel& kernel, const KernelCoverage& coverage) {
  PageTable table(list(instanceList, kernel.instancePaths().size()));
  std::uint32_t instance = 0;
  for (const Text& path : kernel.instancePaths()) {
    if (instance == coverage.instances()) break;  // the bytes of a mapped file may have changed
    table.beginRow();
    table.name(path);
    table.coverage(coverage.counts(VariableKind::Argument, instance));
    table.coverage(coverage.counts(VariableKind::Variable, instance));
    table.endRow();
    ++instance;
  }
}

void KernelSection::writeVariables(const List<Variable>& variables, const KernelCoverage& coverage,
                                   VariableKind kind) {
  const bool areArguments = kind == VariableKind::Argument;
  PageTable table(list(areArguments ? argumentList : variableList, variables.size()));
  std::uint32_t name = 0;
  for (const Variable& variable : variables) {
    if (name == coverage.names(kind)) break;  // the bytes of a mapped file may have changed
    table.beginRow();
    table.name(variable.name());
    table.text(variable.cType());
    table.number(variable.bitWidth());
    table.text(variable.second());
    table.text(locatedIn(coverage, kind, name++));
    table.locations(variable.instanceBits());
    table.endRow();
  }
}

void KernelSection::writeConditions(const Kernel& kernel) {
  PageTable table(list(conditionList, kernel.breakableConditions().size()));
  for (const BreakableCondition& condition : kernel.breakableConditions()) {
    table.beginRow();
    table.code(condition.condition());
    table.text(nameOf(condition.kind()));
    table.text(sourceOf(condition));
    table.endRow();
  }
}

void KernelSection::writeRegisters(const Kernel& kernel) {
  RegisterOwners owners(kernel);
  PageTable table(list(registerList, kernel.hardwareVariables().size()));
  for (const HardwareVariable& hardware : kernel.hardwareVariables()) {
    const RegisterOwners::Owner owner = owners.of(hardware);
    table.beginRow();
    table.name(hardware.rtlName());
    table.text(owner.variable);
    table.text(owner.instance);
    table.number(hardware.logicLocations().size());
    table.locations(hardware.logicLocations());
    table.endRow();
  }
}

void KernelSection::writeBrams(const Kernel& kernel) {
  PageTable table(list(bramList, kernel.brams().size()));
  for (const Text& bram : kernel.brams()) {
    table.beginRow();
    table.name(bram);
    table.endRow();
  }
}

}  // namespace consolidator::inspect
