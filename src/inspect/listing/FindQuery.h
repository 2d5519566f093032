#pragma once

#include "consolidated/HardwareVariable.h"
#include "consolidated/Kernel.h"
#include "consolidated/Locations.h"
#include "consolidated/Variable.h"

#include <optional>
#include <string>

namespace consolidator::inspect {

/// What is looked for in a file: a name, or a location given as "FIRST:SECOND".
class FindQuery {
 public:
  explicit FindQuery(std::string text);

  const std::string& text() const { return text_; }

  /// None if a name is looked for.
  const std::optional<consolidated::Location>& location() const { return location_; }

  /// Whether a name is looked for, and the kernel bears it.
  bool names(const consolidated::Kernel& kernel) const;

  /// Whether a name is looked for, and it is that of the variable or of its register.
  bool names(const consolidated::Variable& variable) const;

  /// Whether a name is looked for, and it is the hierarchical name, with "/" in front or without,
  /// or that of the register alone.
  bool names(const consolidated::HardwareVariable& variable) const;

  /// Whether a location is looked for, and it is among these.
  bool isAmong(const consolidated::Locations& locations) const;

 private:
  std::string text_;
  std::optional<consolidated::Location> location_;
};

}  // namespace consolidator::inspect
