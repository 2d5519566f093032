#pragma once

#include "PlainLines.h"
#include "model/KernelRecord.h"
#include "readers/HdlReservedWords.h"

#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>

namespace consolidator {

/// Reads an auxiliary XML file with standard stream extractions and the cuts of std::string, which
/// throw where a value is missing: slow, and plain enough to be the measure of the reader proper.
class PlainAuxiliaryReader {
 public:
  /// The words decide which names lose their "_r".
  PlainAuxiliaryReader(const std::string& text, const HdlReservedWords& reservedWords)
      : in_(text), reservedWords_(reservedWords) {}

  /// The record that comes out of the file; nothing when the file is malformed.
  std::optional<KernelRecord> read() {
    try {
      while (!in_.eof()) {
        const auto line = readLinePlainly(in_, 1023);
        if (!line) return std::nullopt;
        take(*line);
      }
    } catch (const std::out_of_range&) {
      return std::nullopt;
    }
    return kernel_;
  }

 private:
  void take(const std::string& line) {
    std::istringstream words(line);
    std::string first;
    words >> first;
    if (first == "<ak:arg") takeArgument(words);
    if (first == "<ak:acceleratorMap") takeName(words);
  }

  void takeArgument(std::istringstream& words) {
    std::string source;
    std::string restored;
    std::string type;
    for (std::string word; words >> word;) {
      if (word.compare(0, 16, "ak:originalName=") == 0) {
        source = word.substr(17, word.size() - 18);
        restored = restore(source);
      } else if (word.compare(0, 14, "ak:busTypeRef=") == 0) {
        const std::string value = word.substr(15);
        type = value == "\"acc_fifo\"" || value == "\"acc_fifo\"\"" ? "int*" : "int";
      }
    }
    for (const VariableRecord& argument : kernel_.arguments) {
      if (argument.name == restored) return;
    }
    kernel_.arguments.append({restored, source, type});
  }

  void takeName(std::istringstream& words) {
    for (std::string word; words >> word;) {
      if (word.compare(0, 16, "ak:functionName=") != 0) continue;
      kernel_.name = word.substr(17, word.size() - 18);
      return;
    }
  }

  std::string restore(const std::string& name) const {
    if (name.size() < 3 || name.find("_r") != name.size() - 2) return name;
    const std::string stem = name.substr(0, name.size() - 2);
    return reservedWords_.contains(stem) ? stem : name;
  }

  std::istringstream in_;
  const HdlReservedWords& reservedWords_;
  KernelRecord kernel_;
};

}  // namespace consolidator
