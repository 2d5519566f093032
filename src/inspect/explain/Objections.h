#pragma once

#include "inspect/explain/Explanation.h"

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Something in a run that a strict user does not want.
struct Objection {
  std::string code;     ///< an outcome, the code of a loss, "usage" or "status"
  std::string message;  ///< a sentence that names the file, which may hold texts of the files
};

/// What a strict user objects to.
struct StrictRules {
  bool againstNothing = false;       ///< also to inputs that give nothing, RAM reports excepted
  std::vector<std::string> allowed;  ///< codes of objections that are none
};

/// What there is to object to in a run: inputs that are skipped or refused, losses, a status other
/// than 0, and a command line that the tool answers with its usage. `file` is the name of the
/// consolidated file.
std::vector<Objection> objectionsTo(const Explanation& explanation, const StrictRules& rules,
                                    std::string_view file);

/// Whether it can be allowed what has this code.
bool isAllowable(std::string_view code);

}  // namespace consolidator::inspect
