#pragma once

#include "consolidated/ConsolidatedFile.h"
#include "driver/Arguments.h"
#include "driver/Driver.h"
#include "support/StreamCapture.h"

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// What one run returned and printed.
struct Outcome {
  int status;
  std::string out;
  std::string err;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << "status " << outcome.status << "\n--- out\n"
             << outcome.out << "--- err\n"
             << outcome.err;
}

/// A run that says nothing and succeeds.
inline const Outcome quiet{0, "", ""};

/// Runs one consolidation with these arguments.
inline Outcome run(std::vector<std::string> words) {
  const Arguments arguments(std::move(words));
  const StreamCapture capture;
  ConsolidatedFile file;
  const int status = runConsolidation(arguments.count(), arguments.values(), file);
  return {status, capture.out(), capture.err()};
}

}  // namespace consolidator
