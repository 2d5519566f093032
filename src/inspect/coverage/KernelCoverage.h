#pragma once

#include "consolidated/Kernel.h"
#include "inspect/coverage/CoverageCounts.h"
#include "inspect/coverage/CoveredPairs.h"
#include "inspect/lines/TextNumbers.h"
#include "inspect/records/BitCoverage.h"
#include "inspect/records/VariableKind.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// How an argument or a variable is called.
struct CoveredName {
  std::string_view name;          ///< in the source
  std::string_view registerName;  ///< in the hardware
};

/// What can be debugged of one kernel: for each of its instances and each argument and variable,
/// which bits have a location.
///
/// A hardware variable tells of a variable in an instance by the rule of belonging(): certainly or
/// doubtfully. The bits that are stored with the variable for that instance count, too. The best of
/// all counts.
///
///     const KernelCoverage coverage(kernel);
///     std::uint32_t instance = 0;
///     for (const Text& path : kernel.instancePaths()) {
///       const CoverageCounts& counts = coverage.counts(VariableKind::Argument, instance);
///       coverage.forEach(VariableKind::Argument, instance,
///                        [](const CoveredName& argument, const BitCoverage& bits) {...});
///       ++instance;
///     }
///
/// Made in a time and memory linear in the record, but for sorting; there may be as many pairs as
/// instances times names, which only forEach() visits.
class KernelCoverage {
 public:
  /// Of a kernel whose file stays open as long as this object.
  explicit KernelCoverage(const consolidated::Kernel& kernel);

  /// How many instances there are: one for each path of the kernel, equal ones included.
  std::uint32_t instances() const { return static_cast<std::uint32_t>(pathNumbers_.size()); }

  /// How many arguments or variables there are.
  std::uint32_t names(VariableKind kind) const {
    return static_cast<std::uint32_t>(of(kind).registers.size());
  }

  /// The states of all arguments or variables in an instance below instances().
  const CoverageCounts& counts(VariableKind kind, std::uint32_t instance) const {
    return of(kind).counts[instance];
  }

  /// What is known of an argument or variable, by its position below names(), in an instance. Takes
  /// a time logarithmic in the size of the record.
  BitCoverage at(VariableKind kind, std::uint32_t name, std::uint32_t instance) const;

  /// Calls `visit(name, coverage)` for each argument or variable in an instance, in the kernel's
  /// order.
  template <typename Visit>
  void forEach(VariableKind kind, std::uint32_t instance, Visit visit) const {
    for (std::uint32_t name = 0; name < names(kind); ++name) {
      visit(of(kind).names[name], at(kind, name, instance));
    }
  }

  /// Whether each hardware variable was counted for all the instances that it may belong to. Not
  /// so if its name holds more paths than it has bytes, as no real one does.
  bool isAll() const { return isAll_; }

 private:
  // The arguments or the variables.
  struct Names {
    std::vector<CoveredName> names;        // since each in the record is as long as its bits
    std::vector<std::uint32_t> registers;  // their numbers, for each name
    CoveredPairs stored;                   // of an instance and a name, by its own bits
    std::vector<CoverageCounts> counts;    // for each instance
  };

  consolidated::List<consolidated::Variable> listOf(VariableKind kind) const {
    return kind == VariableKind::Argument ? kernel_.arguments() : kernel_.variables();
  }

  const Names& of(VariableKind kind) const {
    return kind == VariableKind::Argument ? arguments_ : variables_;
  }

  void addPaths();
  void addNames(VariableKind kind, Names& names);
  void addRegisters();
  void count(Names& names) const;

  consolidated::Kernel kernel_;
  TextNumbers paths_;                       // the different ones
  std::vector<std::uint32_t> pathNumbers_;  // for each instance
  TextNumbers registers_;                   // the different ones of arguments and variables
  CoveredPairs located_;                    // of a path and a register, by hardware variables
  Names arguments_;
  Names variables_;
  bool isAll_ = true;
};

}  // namespace consolidator::inspect
