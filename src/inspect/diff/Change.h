#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/HardwareVariable.h"
#include "consolidated/Kernel.h"
#include "consolidated/Kernels.h"
#include "consolidated/List.h"
#include "consolidated/Section.h"
#include "consolidated/Text.h"
#include "consolidated/Variable.h"
#include "inspect/records/KernelCounts.h"

#include <optional>
#include <string_view>
#include <variant>

namespace consolidator::inspect {

/// What kind of thing differs between two files.
enum class Subject {
  Kernel,
  InstancePath,
  Type,
  Argument,
  Variable,
  HardwareVariable,
  BreakableCondition,
  Bram,
  Project,
  Dwarf,
  Order,  ///< of a list of which the elements are there in both files
  Section,
};

/// The name of a subject in JSON documents, such as "instance_path".
std::string_view nameOf(Subject subject);

/// Whether the operands of conditions may change places.
enum class ConditionMatch {
  NormalForm,  ///< conditions are the same if their normal forms are
  Exact,       ///< only if their texts are
};

/// The conditions of a kernel as a list of keys.
struct ConditionList {
  consolidated::List<consolidated::BreakableCondition> conditions;
  ConditionMatch match = ConditionMatch::NormalForm;
};

/// A list for the keys of its elements alone.
using KeyList =
    std::variant<consolidated::List<consolidated::Text>, consolidated::List<consolidated::Variable>,
                 consolidated::List<consolidated::HardwareVariable>, ConditionList,
                 consolidated::Kernels, consolidated::Sections>;

/// The stored DWARF file, by its bytes.
struct DwarfItem {
  consolidated::Text bytes;
};

/// One side of a change: nothing, or the item that is there. A kernel stands for its counts.
using ChangeItem = std::variant<std::monostate, consolidated::Text, consolidated::KernelType,
                                consolidated::Variable, consolidated::HardwareVariable,
                                consolidated::BreakableCondition, KernelCounts, DwarfItem,
                                consolidated::Section, KeyList>;

/// One difference between two files: added where nothing is before, removed where nothing is after,
/// else changed. All views are those of the files.
struct Change {
  Subject subject = Subject::Kernel;
  std::optional<std::string_view> kernel;  ///< of which kernel; none of the file itself
  std::optional<std::string_view> name;    ///< what the item is called; of an order, the list
  ChangeItem before;
  ChangeItem after;
  std::optional<bool> bytesDiffer;  ///< of DWARF and sections that are there in both files

  bool isAddition() const { return std::holds_alternative<std::monostate>(before); }

  bool isRemoval() const { return std::holds_alternative<std::monostate>(after); }
};

/// Takes the differences of two files as they are found: all of one kernel one after another.
class ChangeSink {
 public:
  ChangeSink() = default;
  ChangeSink(const ChangeSink&) = delete;
  ChangeSink& operator=(const ChangeSink&) = delete;
  virtual ~ChangeSink() = default;

  virtual void take(const Change& change) = 0;
};

/// Takes no notice of changes.
class NoChanges : public ChangeSink {
 public:
  void take(const Change& /*change*/) override {}
};

}  // namespace consolidator::inspect
