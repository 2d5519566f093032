#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator {

/// A local variable of a synthesised function, as the debug file of high-level synthesis ties it to
/// the hardware register that holds it.
struct HlsLocalRecord {
  std::string name;        ///< in the source
  std::string rtlName;     ///< of the register
  std::int32_t width = 0;  ///< of the register, in bits

  /// Takes name and width of the register from a word such as `sum_reg[31:0]` (32 bits) or `flag`
  /// (1 bit). No word is refused: one that lacks "[", ":" or "]" gets the width that the rule for
  /// complete words gives.
  void setRegister(std::string_view word);

  friend bool operator==(const HlsLocalRecord&, const HlsLocalRecord&) = default;
};

}  // namespace consolidator
