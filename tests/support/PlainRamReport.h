#pragma once

#include "PlainLines.h"
#include "model/KernelRecord.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// Reads a RAM utilization report with standard stream extractions and a plain search for every
/// instance path in every row: the measure of the reader proper.
class PlainRamReportReader {
 public:
  /// One name for each time that it would be added to a kernel, with the name of the kernel.
  using Additions = std::vector<std::pair<std::string, std::string>>;

  PlainRamReportReader(const std::string& text, const KernelList& kernels)
      : in_(text), kernels_(kernels) {}

  /// All additions of the report in their order.
  Additions read() {
    while (!in_.eof()) {
      if (const auto line = readLinePlainly(in_, 2047)) take(*line);
      in_ >> std::ws;
    }
    return additions_;
  }

 private:
  void take(const std::string& line) {
    if (section_ == 3 || section_ == 6) {
      if (line[0] == '-') return;
      if (line == "4. Memory Performance - Inferred" ||
          line == "7. Memory Utilization - Instantiated") {
        ++section_;
      } else {
        takeRow(line);
      }
      return;
    }
    if (powerSeen_ && line == "3. Memory Utilization - Inferred") section_ = 3;
    if (powerSeen_ && line == "6. Memory Utilization - Instantiated") section_ = 6;
    if (line == "8. Block Ram / URAM Memory Power - Instantiated") powerSeen_ = true;
  }

  void takeRow(const std::string& line) {
    const std::vector<std::string> fields = split(line);
    if (fields.size() < 2) return;
    for (const KernelRecord& kernel : kernels_) {
      KernelRecord copy = kernel;
      copy.brams.clear();
      for (const std::string& path : copy.instancePaths) {
        if (fields[0].find(path) != std::string::npos &&
            fields[1].find("RAMB") != std::string::npos) {
          copy.addBRAM(fields[0]);
        }
      }
      for (const std::string& bram : copy.brams) additions_.emplace_back(copy.name, bram);
    }
  }

  // The fields, each up to its "|"; what follows the last one is dropped.
  static std::vector<std::string> split(const std::string& line) {
    std::vector<std::string> fields;
    std::size_t start = 1;
    for (std::size_t i = 1; i < line.size(); ++i) {
      if (line[i] != '|') continue;
      fields.push_back(line.substr(start, i - start));
      start = i + 1;
    }
    return fields;
  }

  std::istringstream in_;
  const KernelList& kernels_;
  unsigned section_ = 0;
  bool powerSeen_ = false;
  Additions additions_;
};

}  // namespace consolidator
