#pragma once

#include <cstdlib>
#include <iostream>

namespace consolidator {

/// Ends the program, which the fuzzer takes for a crash, unless `holds`.
inline void require(bool holds, const char* claim) {
  if (holds) return;
  std::cerr << "Does not hold: " << claim << std::endl;
  std::abort();
}

}  // namespace consolidator
