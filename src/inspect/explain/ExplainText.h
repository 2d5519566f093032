#pragma once

#include "inspect/explain/Explanation.h"

#include <string>

namespace consolidator::inspect {

/// An explanation for people: what each input came to, then what the run misses, loses and prints.
std::string explainText(const Explanation& explanation);

}  // namespace consolidator::inspect
