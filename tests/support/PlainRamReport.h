#pragma once

#include "PlainLines.h"

#include <istream>
#include <sstream>
#include <string>

namespace consolidator {

/// Reads a RAM utilization report with standard stream extractions: the measure of the reader
/// proper.
class PlainRamReport {
 public:
  unsigned section = 0;    ///< the one that the end of the report is in or after
  bool powerSeen = false;  ///< whether the power title was read

  explicit PlainRamReport(const std::string& text) {
    std::istringstream in(text);
    while (!in.eof()) {
      if (const auto line = readLinePlainly(in, 2047)) take(*line);
      in >> std::ws;
    }
  }

 private:
  void take(const std::string& line) {
    if (section == 3 || section == 6) {
      if (line == "4. Memory Performance - Inferred" ||
          line == "7. Memory Utilization - Instantiated") {
        ++section;
      }
      return;
    }
    if (powerSeen && line == "3. Memory Utilization - Inferred") section = 3;
    if (powerSeen && line == "6. Memory Utilization - Instantiated") section = 6;
    if (line == "8. Block Ram / URAM Memory Power - Instantiated") powerSeen = true;
  }
};

}  // namespace consolidator
