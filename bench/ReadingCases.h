#pragma once

#include "RatioCases.h"

#include <span>

namespace consolidator {

/// The cases of the reading library: against the tool's own reading of the same file.
std::span<const RatioCase> readingCases();

}  // namespace consolidator
