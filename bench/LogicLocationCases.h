#pragma once

#include "RatioCases.h"

#include <span>

namespace consolidator {

/// The cases of logic locations, which make up nearly all bytes of a build: against a search for
/// their nets, against themselves with more to look for, and all inputs of a build together.
std::span<const RatioCase> logicLocationCases();

}  // namespace consolidator
