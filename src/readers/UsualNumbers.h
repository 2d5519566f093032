#pragma once

#include <optional>
#include <string_view>

namespace consolidator {

/// Returns what follows the numbers of a line of a logic-location file that starts as nearly all
/// do:
///
///     Bit     1234 0x00401f80   17 die0 0 Block=X1Y2
///
/// The numbers of such a line can be read, which this tells at less cost than reading them. Returns
/// nothing for any other line, whose numbers may be readable or not.
std::optional<std::string_view> afterUsualNumbers(std::string_view line);

}  // namespace consolidator
