#pragma once

#include "PlainLines.h"
#include "model/KernelRecord.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace consolidator {

/// Reads the debug metadata of high-level synthesis with standard stream extractions and plain
/// lists: slow, and plain enough to be the measure of the reader proper.
class PlainHlsReader {
 public:
  PlainHlsReader(const std::string& text, std::string fileName)
      : in_(text), fileName_(std::move(fileName)) {}

  /// The record that comes out of the file; nothing when the file is refused.
  std::optional<KernelRecord> read() {
    while (!in_.eof()) {
      const auto line = readLinePlainly(in_, lineBound);
      if (!line || !dispatch(*line)) return std::nullopt;
    }
    if (!scopes_.empty()) return std::nullopt;
    return kernel();
  }

 private:
  static constexpr std::size_t lineBound = 1023;

  struct Local {
    std::string name;
    std::string rtlName;
  };

  struct Function {
    std::string name;
    std::vector<std::string> files;
    std::vector<std::uint32_t> lines;
    std::vector<Local> locals;
  };

  template <typename T>
  static void addIfAbsent(std::vector<T>& list, const T& item) {
    if (std::find(list.begin(), list.end(), item) == list.end()) list.push_back(item);
  }

  static bool startsIgnorableLine(int c) {
    return c == '#' || c == '\n' || c == ' ' || c == '\t' || c == '\0';
  }

  static std::uint32_t lineNumber(const std::string& text) {
    const bool hasDigits = !text.empty() && text[0] >= '0' && text[0] <= '9';
    return hasDigits ? static_cast<std::uint32_t>(std::strtoll(text.c_str(), nullptr, 10)) : 0;
  }

  bool dispatch(const std::string& line) {
    if (line.empty() || startsIgnorableLine(line[0])) return true;
    std::istringstream words(line);
    std::string first;
    std::string second;
    std::string third;
    words >> first;
    if (first == "RTL") return startFunction(words);
    words >> second >> third;
    if (first == "Begin" && second == "Function") {
      scopes_.push_back(third);
      return true;
    }
    if (first == "End" && second == "Function") {
      if (scopes_.empty()) return false;
      scopes_.pop_back();
      return true;
    }
    return first == "local" && !functions_.empty() && readBlock(second);
  }

  bool startFunction(std::istringstream& words) {
    std::string dropped;
    words >> dropped >> dropped;
    Function function;
    while (words.good()) {
      std::string word;
      words >> word;
      function.name += word;
      if (words.good()) function.name += " ";
    }
    functions_.push_back(function);
    return true;
  }

  bool readBlock(const std::string& name) {
    Local local{name, ""};
    for (;;) {
      while (startsIgnorableLine(in_.peek())) {
        if (!readLinePlainly(in_, lineBound)) return false;
      }
      const auto line = readLinePlainly(in_, lineBound);
      if (!line) return false;
      std::istringstream words(*line);
      std::string first;
      std::string second;
      std::string third;
      words >> first >> second >> third;
      const bool isLocation = third.empty() && second.find(':') != std::string::npos;
      if (isLocation && first != "reg:") {
        const std::size_t colon = second.find(':');
        addIfAbsent(functions_.back().files, second.substr(0, colon));
        addIfAbsent(functions_.back().lines, lineNumber(second.substr(colon + 1)));
        continue;
      }
      local.rtlName = second.substr(0, second.find('['));
      if (isLocation) continue;
      functions_.back().locals.push_back(local);
      return true;
    }
  }

  std::string kernelName() const {
    const std::size_t slash = fileName_.rfind('/');
    const auto length = static_cast<std::int64_t>(fileName_.size());
    const std::int64_t start =
        slash == std::string::npos ? 0 : static_cast<std::int64_t>(slash) + 1;
    const std::string rest = fileName_.substr(static_cast<std::size_t>(start));
    const std::int64_t kept = length - 4 - start;
    return kept < 0 ? rest : rest.substr(0, static_cast<std::size_t>(kept));
  }

  KernelRecord kernel() const {
    KernelRecord kernel;
    kernel.name = kernelName();
    std::set<std::uint32_t> used;
    for (const Function& function : functions_) {
      if (function.files.empty() || function.lines.empty()) continue;
      if (!used.insert(function.lines[0]).second) continue;
      BreakableCondition condition(ConditionKind::SourceLine, function.name);
      condition.line = function.lines[0];
      condition.file = function.files[0];
      kernel.addBreakableCondition(condition);
      for (const Local& local : function.locals) {
        kernel.addVariable(local.name, local.rtlName, "int");
      }
    }
    return kernel;
  }

  std::istringstream in_;
  std::string fileName_;
  std::vector<std::string> scopes_;
  std::vector<Function> functions_;
};

}  // namespace consolidator
