#pragma once

#include "consolidated/Kernel.h"
#include "consolidated/List.h"
#include "model/BreakableCondition.h"
#include "model/ConditionPreparer.h"
#include "model/KernelRecord.h"
#include "model/VariableRecord.h"

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// A list of a record whose elements are seen as `T`, which is made of a stored element.
template <typename T, typename Stored>
class StoredList {
 public:
  class Iterator {
   public:
    explicit Iterator(const typename consolidated::List<Stored>::Iterator& at) : at_(at) {}

    T operator*() const { return T(*at_); }

    Iterator& operator++() {
      ++at_;
      return *this;
    }

    friend bool operator==(const Iterator& a, const Iterator& b) { return a.at_ == b.at_; }

   private:
    typename consolidated::List<Stored>::Iterator at_;
  };

  explicit StoredList(const consolidated::List<Stored>& list) : list_(list) {}

  bool empty() const { return list_.empty(); }

  Iterator begin() const { return Iterator(list_.begin()); }

  Iterator end() const { return Iterator(list_.end()); }

 private:
  consolidated::List<Stored> list_;
};

/// All stored bytes of a text.
struct StoredText {
  explicit StoredText(const consolidated::Text& text) : bytes(text.stored()) {}

  // NOLINTNEXTLINE(google-explicit-constructor): it is a text
  operator std::string_view() const { return bytes; }

  std::string_view bytes;
};

/// The members of a VariableRecord.
struct StoredVariable {
  explicit StoredVariable(const consolidated::Variable& variable)
      : name(variable.name().stored()),
        second(variable.second().stored()),
        cType(variable.cType().stored()),
        instanceBits(variable.instanceBits()) {}

  std::uint32_t bitWidth() const { return VariableRecord::bitWidthOf(cType); }

  std::string_view name;
  std::string_view second;
  std::string_view cType;
  consolidated::List<consolidated::Locations> instanceBits;
};

/// The members of a HardwareVariable.
struct StoredHardwareVariable {
  explicit StoredHardwareVariable(const consolidated::HardwareVariable& variable)
      : rtlName(variable.rtlName().stored()), logicLocations(variable.logicLocations()) {}

  std::string_view rtlName;
  consolidated::Locations logicLocations;
};

/// The members of a BreakableCondition.
struct StoredCondition {
  explicit StoredCondition(const consolidated::BreakableCondition& stored)
      : kind(static_cast<consolidator::ConditionKind>(stored.kind())),
        condition(stored.condition().stored()),
        line(stored.line()),
        file(stored.file().stored()) {}

  consolidator::ConditionKind kind;
  std::string_view condition;
  std::uint32_t line;
  std::string_view file;
};

/// The conditions of a record as they are stored or, with a preparer, as they are once they were
/// prepared: then a condition holds until the next one is looked at.
class StoredConditions {
 public:
  using List = consolidated::List<consolidated::BreakableCondition>;

  class Iterator {
   public:
    Iterator(const List::Iterator& at, const List::Iterator& end, ConditionPreparer* preparer)
        : at_(at), end_(end), preparer_(preparer) {
      dropTriviallyTrue();
    }

    StoredCondition operator*() const {
      StoredCondition condition(*at_);
      if (preparer_ != nullptr) condition.condition = preparer_->prepare(condition.condition);
      return condition;
    }

    Iterator& operator++() {
      ++at_;
      dropTriviallyTrue();
      return *this;
    }

    friend bool operator==(const Iterator& a, const Iterator& b) { return a.at_ == b.at_; }

   private:
    void dropTriviallyTrue() {
      if (preparer_ == nullptr) return;
      while (at_ != end_ && isTriviallyTrue(at_->condition().stored())) ++at_;
    }

    List::Iterator at_;
    List::Iterator end_;
    ConditionPreparer* preparer_;
  };

  StoredConditions(const List& list, ConditionPreparer* preparer)
      : list_(list), preparer_(preparer) {}

  Iterator begin() const { return {list_.begin(), list_.end(), preparer_}; }

  Iterator end() const { return {list_.end(), list_.end(), preparer_}; }

 private:
  List list_;
  ConditionPreparer* preparer_;
};

/// The members of a KernelRecord with all bytes that are stored, zero bytes included: what the
/// JSON text was rendered from. Nothing is copied.
struct StoredKernel {
  /// A preparer, which is kept by the caller, prepares the conditions once more.
  explicit StoredKernel(const consolidated::Kernel& kernel, ConditionPreparer* preparer = nullptr)
      : name(kernel.name().stored()),
        instancePaths(kernel.instancePaths()),
        type(static_cast<consolidator::KernelType>(kernel.type())),
        arguments(kernel.arguments()),
        variables(kernel.variables()),
        hardwareVariables(kernel.hardwareVariables()),
        breakableConditions(kernel.breakableConditions(), preparer),
        brams(kernel.brams()) {}

  std::string_view name;
  StoredList<StoredText, consolidated::Text> instancePaths;
  consolidator::KernelType type;
  StoredList<StoredVariable, consolidated::Variable> arguments;
  StoredList<StoredVariable, consolidated::Variable> variables;
  StoredList<StoredHardwareVariable, consolidated::HardwareVariable> hardwareVariables;
  StoredConditions breakableConditions;
  StoredList<StoredText, consolidated::Text> brams;
};

}  // namespace consolidator::inspect
