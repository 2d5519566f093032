#pragma once

#include "text/FindLast.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace consolidator {

/// One bit of a net as a logic-location file names it: "top/u0/acc_reg[5]" is bit 5 of the net
/// "top/u0/acc_reg". The text must outlive the object.
class NetBit {
 public:
  /// Bit indices from here on are not recorded: a file below 2 GiB cannot hold so many locations.
  static constexpr std::uint32_t endOfIndices = std::uint32_t{1} << 28;

  /// Splits the text before its last "[" if it ends in "]" and has one, whatever stands between.
  explicit NetBit(std::string_view text) : net_(text) {
    if (!text.ends_with(']')) return;
    const std::size_t bracket = findLast(text, '[');
    if (bracket == std::string_view::npos) return;
    net_ = text.substr(0, bracket);
    indexText_ = text.substr(bracket + 1);
  }

  /// The hierarchical name of the net without the bit index.
  std::string_view net() const { return net_; }

  /// The name of the register: that of the net after its last "/".
  std::string_view registerName() const { return net_.substr(findLast(net_, '/') + 1); }

  /// The decimal digits after the "["; 0 if there are none, nothing from `endOfIndices` on.
  std::optional<std::uint32_t> index() const;

  /// Whether what stands in the brackets, if there are any, is a number and nothing else.
  bool hasPlainIndex() const;

 private:
  std::string_view net_;
  std::string_view indexText_;
};

}  // namespace consolidator
