#pragma once

#include "consolidated/Kernel.h"
#include "inspect/records/RegisterInstances.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace consolidator::inspect {

/// Tells whose the registers of a kernel are: of which variables or arguments, and where.
class RegisterOwners {
 public:
  /// Of a kernel whose file stays open.
  explicit RegisterOwners(const consolidated::Kernel& kernel);

  /// Short texts for people; empty where nobody owns a register. Names and paths are shortened, and
  /// the first alone is named where there are more.
  struct Owner {
    std::string variable;
    std::string instance;
  };

  Owner of(const consolidated::HardwareVariable& hardware);

 private:
  struct Variables {
    std::string first;
    std::size_t others = 0;
  };

  void add(const consolidated::List<consolidated::Variable>& variables);
  static TextSet registersOf(const consolidated::Kernel& kernel);

  std::unordered_map<std::string, Variables, TextHash, std::equal_to<>> variables_;
  RegisterInstances instances_;
};

}  // namespace consolidator::inspect
