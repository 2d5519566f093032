#include "readers/HLSFile.h"

#include <cstdint>
#include <utility>

namespace consolidator {

namespace {

bool isIgnorable(std::string_view line) {
  return line.empty() || line.front() == '#' || line.front() == ' ' || line.front() == '\t';
}

// The last part of the path without its last four characters, where it has as many.
std::string_view kernelName(std::string_view path) {
  constexpr std::size_t extension = 4;
  const std::string_view file = path.substr(path.rfind('/') + 1);
  return file.size() < extension ? file : file.substr(0, file.size() - extension);
}

}  // namespace

bool HLSFile::parse() {
  if (!isValid()) return false;
  kernel_.name = kernelName(fileName_);
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (line->overBound || !readLine(line->text)) return false;
  }
  if (!functionScopes_.empty()) return false;
  finishFunction();
  kernels_.push_back(std::move(kernel_));
  return true;
}

bool HLSFile::readLine(std::string_view line) {
  if (isIgnorable(line)) return true;
  FieldReader words(line);
  const std::string_view first = words.readWord();
  if (first == "RTL") {
    startFunction(words);
    return true;
  }
  const std::string_view second = words.readWord();
  if (first == "Begin" && second == "Function") {
    functionScopes_.emplace_back(words.readWord());
    return true;
  }
  if (first == "End" && second == "Function") return closeScope();
  return first == "local" && readBlock(second);
}

// Odd, but to be kept: the innermost scope ends, whatever name the line gives.
bool HLSFile::closeScope() {
  if (functionScopes_.empty()) return false;
  functionScopes_.pop_back();
  return true;
}

// Each word of the name is followed by a space if anything follows it on the line. Odd, but to be
// kept: white space at the end of the line leaves one space at the end of the name.
void HLSFile::startFunction(FieldReader words) {
  finishFunction();
  function_.clear();
  hasFunction_ = true;
  words.readWord();
  words.readWord();
  for (std::string_view word = words.readWord(); !word.empty(); word = words.readWord()) {
    function_.name += word;
    if (!words.rest().empty()) function_.name += ' ';
  }
}

// Odd, but to be kept: a function is dropped with its locals if it has no line number, or if an
// earlier one had the same, even in another file.
void HLSFile::finishFunction() {
  if (!function_.line || usedLines_.contains(*function_.line)) return;
  usedLines_.append(*function_.line);
  BreakableCondition condition(ConditionKind::SourceLine, function_.name);
  condition.line = *function_.line;
  condition.file = function_.file;
  kernel_.addBreakableCondition(condition);
  // A list that doubled would hold the many variables of a large function twice.
  VariableList& variables = kernel_.variables;
  if (function_.locals.size() > variables.size()) {
    variables.reserve(variables.size() + function_.locals.size());
  }
  for (const HlsLocalRecord& local : function_.locals) {
    kernel_.addVariable(local.name, local.rtlName, "int");
  }
}

// Odd, but to be kept: the line that closes the block is used up, even if it would start something
// else.
bool HLSFile::readBlock(std::string_view localName) {
  if (!hasFunction_) return false;
  HlsLocalRecord local{std::string(localName), {}, 0};
  while (const std::optional<std::string_view> line = readBlockLine()) {
    FieldReader words(*line);
    const std::string_view first = words.readWord();
    const std::string_view second = words.readWord();
    const bool isLocation = second.find(':') != std::string_view::npos && words.readWord().empty();
    if (isLocation && first != "reg:") {
      function_.addLocation(second);
      continue;
    }
    local.setRegister(second);
    if (isLocation) continue;
    function_.locals.push_back(std::move(local));
    return true;
  }
  return false;
}

// The next line that is not ignorable; empty at the end of the file. Nothing if it is too long.
std::optional<std::string_view> HLSFile::readBlockLine() {
  std::optional<BoundedLine> line;
  do {
    line = buffer_.readLine(lineBound);
    if (!line) return std::string_view{};
    if (line->overBound) return std::nullopt;
  } while (isIgnorable(line->text));
  return line->text;
}

}  // namespace consolidator
