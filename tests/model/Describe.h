#pragma once

#include "model/KernelRecord.h"

#include <cstdint>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace consolidator {

/// One field after another in a form for comparing and reading, the `valid` flags (which equality
/// leaves out) included.
class Description {
 public:
  void add(const std::string& text) { out_ << std::quoted(text) << ' '; }

  void add(const BitLocation& location) {
    out_ << '(' << location.first << ' ' << location.second << ')';
  }

  template <typename T>
  void add(const std::vector<T>& items) {
    out_ << '[';
    for (const T& item : items) add(item);
    out_ << ']';
  }

  void add(const VariableRecord& variable) {
    add(variable.name);
    add(variable.second);
    add(variable.cType);
    add(variable.instanceBits);
    addValid(variable.valid);
  }

  void add(const HardwareVariable& variable) {
    add(variable.rtlName);
    add(variable.logicLocations);
    addValid(variable.valid);
  }

  void add(const BreakableCondition& condition) {
    out_ << "kind " << static_cast<std::uint32_t>(condition.kind) << " line " << condition.line
         << ' ';
    add(condition.condition);
    add(condition.file);
    addValid(condition.valid);
  }

  template <typename List>
  void addList(const char* title, const List& items) {
    out_ << title << ":\n";
    for (const auto& item : items) {
      out_ << "  ";
      add(item);
      out_ << '\n';
    }
  }

  std::string text() const { return out_.str(); }

 private:
  void addValid(bool valid) { out_ << (valid ? "valid" : "incomplete"); }

  std::ostringstream out_;
};

/// Describes a KernelRecord, or another type with the same fields, one list entry a line.
template <typename Record>
std::string describe(const Record& kernel) {
  Description description;
  description.add(kernel.name);
  description.addList("paths", kernel.instancePaths);
  description.addList("arguments", kernel.arguments);
  description.addList("variables", kernel.variables);
  description.addList("hardware variables", kernel.hardwareVariables);
  description.addList("conditions", kernel.breakableConditions);
  description.addList("BRAMs", kernel.brams);
  return "type " + std::to_string(static_cast<std::uint32_t>(kernel.type)) + " name " +
         description.text();
}

}  // namespace consolidator
