#pragma once

#include <string>

namespace consolidator::inspect {

/// Whether a file could be opened for writing, and created if it is missing.
struct WriteForecast {
  bool isPossible = false;
  bool isMissing = false;  ///< it would be created
  std::string path;        ///< where all symbolic links lead
};

/// Finds that out by the rights and kinds of the file and its folder. Touches nothing.
WriteForecast forecastWrite(const std::string& path);

}  // namespace consolidator::inspect
