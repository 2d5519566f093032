#pragma once

#include "RatioCases.h"

#include <span>

namespace consolidator {

/// The cases of the inspector: against the tool, which reads and saves the same file.
std::span<const RatioCase> inspectCases();

}  // namespace consolidator
