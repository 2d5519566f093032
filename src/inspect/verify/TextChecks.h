#pragma once

#include "consolidated/Text.h"
#include "inspect/verify/Finding.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace consolidator::inspect {

/// What a text belongs to.
struct TextPlace {
  std::uint32_t section = 0;                 ///< position in the table
  std::optional<consolidated::Text> kernel;  ///< the name of its kernel
  bool isInJson = true;                      ///< whether the JSON text shows it
};

/// Checks the bytes of a text and returns whether there was nothing to find. Each kind of finding
/// is reported once, where it is found first. The subject says for people which text it is, such as
/// "the kernel's name".
bool checkText(const consolidated::Text& text, const TextPlace& place, std::string_view subject,
               FindingSink& findings);

}  // namespace consolidator::inspect
