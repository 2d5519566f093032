#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/HardwareVariable.h"
#include "consolidated/List.h"
#include "consolidated/Variable.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidated {

/// Kind of a kernel. Files may hold other numbers, which count as `Unknown`.
enum class KernelType : std::uint32_t { OpenCL = 0, C = 1, RTL = 2, Unknown = 3, HLS = 4 };

/// "OpenCL", "C", "RTL" or "HLS", and "Unknown" for all other numbers.
[[gnu::visibility("default")]] std::string_view nameOf(KernelType type) noexcept;

/// How sure it is that a register belongs to a variable of a kernel in one of its instances.
enum class Belonging {
  None,      ///< it does not
  Doubtful,  ///< it has the variable's name, and its own name contains the instance path, but maybe
             ///< by chance, as "/t/k_10/i_r" contains "/t/k_1"
  Certain,   ///< the same, and a "/" follows the path there
};

/// Whether a hardware variable holds a variable (or argument) in the instance of that path; all
/// three of one kernel. Not at all unless what follows the last "/" of its name equals the second
/// name of the variable, and the path occurs in its name; certainly if a "/" follows the path
/// there.
[[gnu::visibility("default")]] Belonging belonging(const HardwareVariable& hardware,
                                                   const Variable& variable,
                                                   std::string_view instancePath) noexcept;

/// One accelerator kernel of a consolidated file: a view of its record, which is known to be there
/// as a whole. It holds as long as the file is open.
class Kernel {
 public:
  Text name() const noexcept { return name_; }

  /// Where its instances stand in the design; in the order of the instance bits of its variables.
  List<Text> instancePaths() const noexcept { return listAt<Text>(instancePaths_); }

  /// The number as stored, be it one of the enumerators or not.
  KernelType type() const noexcept { return type_; }

  List<Variable> arguments() const noexcept { return listAt<Variable>(arguments_); }

  List<Variable> variables() const noexcept { return listAt<Variable>(variables_); }

  List<HardwareVariable> hardwareVariables() const noexcept {
    return listAt<HardwareVariable>(hardwareVariables_);
  }

  List<BreakableCondition> breakableConditions() const noexcept {
    return listAt<BreakableCondition>(breakableConditions_);
  }

  /// The names of its block RAMs.
  List<Text> brams() const noexcept { return listAt<Text>(brams_); }

  /// What a debugger appends to each instance path: "/U0" if the type of an argument contains
  /// "float" or "double", else "/inst". The time grows with the number of arguments.
  [[gnu::visibility("default")]] std::string_view instanceSuffix() const noexcept;

  /// Where its record begins and ends, in bytes from the start of the file.
  std::uint64_t offset() const noexcept { return name_.offset() - 4; }

  std::uint64_t endOffset() const noexcept { return end_; }

  /// Position in the table of the section that holds it.
  std::uint32_t section() const noexcept { return section_; }

 private:
  friend class KernelIterator;

  bool read(detail::Cursor& in) noexcept;

  template <typename T>
  List<T> listAt(std::uint64_t position) const noexcept {
    detail::Cursor at(bytes_, position);
    std::uint32_t count = 0;
    at.readU32(count);
    return {at, count};
  }

  std::string_view bytes_;
  Text name_;
  std::uint64_t instancePaths_ = 0;
  std::uint64_t arguments_ = 0;
  std::uint64_t variables_ = 0;
  std::uint64_t hardwareVariables_ = 0;
  std::uint64_t breakableConditions_ = 0;
  std::uint64_t brams_ = 0;
  std::uint64_t end_ = 0;
  KernelType type_ = KernelType::Unknown;
  std::uint32_t section_ = 0;
};

/// An instance path as debuggers want it: with the suffix of its kernel.
inline std::string suffixedPath(const Text& instancePath, std::string_view instanceSuffix) {
  std::string path(instancePath.view());
  return path.append(instanceSuffix);
}

}  // namespace consolidated
