#pragma once

namespace consolidator {

/// How many of these rounds a property test runs: all in release builds, a twentieth in builds that
/// are slow, be it for checking each step or for not being optimised.
constexpr int rounds(int count) {
#ifdef NDEBUG
  return count;
#else
  return count / 20;
#endif
}

}  // namespace consolidator
