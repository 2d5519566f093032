#pragma once

#include "inspect/diff/Change.h"

#include <functional>
#include <string_view>

namespace consolidator::inspect {

/// Calls `use` with each key of a list, in its order. The key of a condition tells all by which it
/// is matched, such as "source_line k.c:42 == 1 $i/x"; that of a section is its kind's name.
void forEachKey(const KeyList& list, const std::function<void(std::string_view)>& use);

}  // namespace consolidator::inspect
