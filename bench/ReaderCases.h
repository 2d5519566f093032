#pragma once

#include "RatioCases.h"

#include <span>

namespace consolidator {

/// The cases of the readers of kernel XML, auxiliary XML, HLS files and RAM reports: against
/// programs that parse or search the same file, and against themselves on larger inputs.
std::span<const RatioCase> readerCases();

}  // namespace consolidator
