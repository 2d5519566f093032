#pragma once

#include "PlainLines.h"
#include "model/KernelRecord.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// Reads a logic-location file with nothing but standard stream extractions and tries every path
/// and register on every line: slow, and plain enough to be the measure of the reader proper.
class PlainLogicLocationReader {
 public:
  PlainLogicLocationReader(std::istream& in, KernelSequence kernels)
      : in_(in), kernels_(std::move(kernels)) {}

  KernelSequence read() {
    while (!in_.eof()) {
      if (const auto line = readLinePlainly(in_, 2047)) takeLine(*line);
      in_ >> std::ws;
    }
    return kernels_;
  }

 private:
  void takeLine(const std::string& line) {
    if (line.find(';') == 0 || line.find("Revision") != std::string::npos) return;
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word != "Bit") return;
    std::uint64_t number = 0;
    std::uint64_t first = 0;
    std::uint32_t second = 0;
    std::uint32_t region = 0;
    words >> std::dec >> number >> std::hex >> first >> std::dec >> second >> word >> region;
    while (words >> word) {
      if (word.compare(0, 4, "Net=") == 0) {
        return takeNet(word.substr(4), static_cast<std::uint32_t>(first), second);
      }
    }
  }

  void takeNet(const std::string& net, std::uint32_t first, std::uint32_t second) {
    constexpr std::uint64_t endOfIndices = std::uint64_t{1} << 28;
    std::string name = "/" + net;
    std::uint64_t index = 0;
    const std::size_t bracket = name.rfind('[');
    if (name.back() == ']' && bracket != std::string::npos) {
      for (std::size_t i = bracket + 1; std::isdigit(static_cast<unsigned char>(name[i])); ++i) {
        index = std::min(10 * index + static_cast<std::uint64_t>(name[i] - '0'), endOfIndices);
      }
      name.erase(bracket);
    }
    if (index == endOfIndices) return;
    for (KernelRecord& kernel : kernels_) {
      for (const std::string& path : kernel.instancePaths) {
        if (name.find(path) == std::string::npos) continue;
        for (const VariableList* list : {&kernel.arguments, &kernel.variables}) {
          for (const VariableRecord& variable : *list) {
            if (name.substr(name.rfind('/') + 1) != variable.second) continue;
            kernel.setLogicLocation(name, static_cast<std::uint32_t>(index), first, second);
          }
        }
      }
    }
  }

  std::istream& in_;
  KernelSequence kernels_;
};

/// Whether a text may hold a bit index that is recorded, but takes much memory: random texts with
/// one are better not read.
inline bool holdsLargeIndex(const std::string& text) {
  constexpr std::uint64_t large = std::uint64_t{1} << 14;
  constexpr std::uint64_t refused = std::uint64_t{1} << 28;
  std::uint64_t index = refused;  // outside of an index
  for (const char c : text + ']') {
    if (c == '[') {
      index = 0;
    } else if (c >= '0' && c <= '9' && index < refused) {
      index = 10 * index + static_cast<std::uint64_t>(c - '0');
    } else {
      if (index >= large && index < refused) return true;
      index = refused;
    }
  }
  return false;
}

inline KernelSequence readLogicLocationsPlainly(const std::string& text, KernelSequence kernels) {
  std::istringstream in(text);
  return PlainLogicLocationReader(in, std::move(kernels)).read();
}

}  // namespace consolidator
