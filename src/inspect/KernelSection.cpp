#include "inspect/KernelSection.h"

#include "inspect/KernelCounts.h"
#include "inspect/KernelItems.h"
#include "inspect/PageParts.h"
#include "inspect/PageText.h"
#include "inspect/RegisterOwners.h"

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

const PageListKind instanceList{"instance", "Instances",
                                "an instance path and how many arguments and variables are located",
                                &part::instancesTable};
const PageListKind argumentList{
    "argument", "Arguments",
    "name, type, bits, register, the instances where it is located, and stored bits",
    &part::variablesTable};
const PageListKind variableList{
    "variable", "Variables",
    "name, type, bits, register, the instances where it is located, and stored bits",
    &part::variablesTable};
const PageListKind conditionList{"condition", "Breakable conditions",
                                 "a condition, its kind and its source", &part::conditionsTable};
const PageListKind registerList{"register", "Registers",
                                "a register, variable, instance, number of bits and locations",
                                &part::registersTable};
const PageListKind bramList{"block RAM", "Block RAMs", "a name", &part::bramsTable};

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

void writeVariables(HtmlWriter& html, RowBudget& budget, const List<Variable>& variables,
                    const KernelCoverage& coverage, VariableKind kind) {
  PageTable table(html, budget, kind == VariableKind::Argument ? argumentList : variableList,
                  variables.size());
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

std::string sourceOf(const BreakableCondition& condition) {
  if (condition.kind() != ConditionKind::SourceLine) return {};
  return fmt::format("{}:{}", condition.file().view(), condition.line());
}

}  // namespace

void KernelSection::write(const Kernel& kernel, std::uint64_t number) {
  const std::string counts = wordsOf(KernelCounts::of(kernel));
  html_->add(areOpen_ ? part::kernelOpen : part::kernelClosed, number);
  html_->add(part::kernelSummary, kernel.name(), nameOf(kernel.type()), counts);
  if (counts.empty()) html_->add(part::kernelEmpty);
  const KernelCoverage coverage(kernel);
  writeInstances(kernel, coverage);
  writeVariables(*html_, budget_, kernel.arguments(), coverage, VariableKind::Argument);
  writeVariables(*html_, budget_, kernel.variables(), coverage, VariableKind::Variable);
  writeConditions(kernel);
  writeRegisters(kernel);
  writeBrams(kernel);
  html_->add(part::kernelEnd);
}

void KernelSection::writeInstances(const Kernel& kernel, const KernelCoverage& coverage) {
  PageTable table(*html_, budget_, instanceList, kernel.instancePaths().size());
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

void KernelSection::writeConditions(const Kernel& kernel) {
  {
    PageTable table(*html_, budget_, conditionList, kernel.breakableConditions().size());
    for (const BreakableCondition& condition : kernel.breakableConditions()) {
      table.beginRow();
      table.code(condition.condition());
      table.text(nameOf(condition.kind()));
      table.text(sourceOf(condition));
      table.endRow();
    }
  }
  sources_->write(*html_, kernel.breakableConditions());
}

void KernelSection::writeRegisters(const Kernel& kernel) {
  RegisterOwners owners(kernel);
  PageTable table(*html_, budget_, registerList, kernel.hardwareVariables().size());
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
  PageTable table(*html_, budget_, bramList, kernel.brams().size());
  for (const Text& bram : kernel.brams()) {
    table.beginRow();
    table.name(bram);
    table.endRow();
  }
}

}  // namespace consolidator::inspect
