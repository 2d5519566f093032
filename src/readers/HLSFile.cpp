#include "readers/HLSFile.h"

#include <algorithm>
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

constexpr std::string_view overBound = "a line over 1023 bytes";

}  // namespace

bool HLSFile::parse() {
  if (!isValid()) return false;
  kernel_.name = kernelName(fileName_);
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (line->overBound) return refuse(overBound);
    if (!readLine(line->text)) return false;
  }
  if (!functionScopes_.empty()) return refuse("a \"Begin Function\" without its end");
  finishFunction();
  kernels_.push_back(std::move(kernel_));
  return true;
}

bool HLSFile::readLine(std::string_view line) {
  if (observer_ != nullptr) observeEnd(line);
  if (isIgnorable(line)) {
    if (observer_ != nullptr) observeIgnorable(line);
    return true;
  }
  FieldReader words(line);
  const std::string_view first = words.readWord();
  if (first == "RTL") {
    startFunction(words);
    if (observer_ != nullptr) functionStart_ = lineOf(line);
    return true;
  }
  const std::string_view second = words.readWord();
  if (first == "Begin" && second == "Function") {
    functionScopes_.emplace_back(words.readWord());
    return true;
  }
  if (first == "End" && second == "Function") {
    return closeScope() || refuse("an \"End Function\" without its beginning", line);
  }
  if (first != "local") return refuse("a line of no known kind", line);
  if (!hasFunction_) return refuse("a \"local\" before any RTL line", line);
  return readBlock(second);
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
  if (!function_.line) return observeDropped("a function without a source position");
  if (usedLines_.contains(*function_.line)) {
    return observeDropped("a function whose first source line another one has");
  }
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
    if (observer_ != nullptr && variables.contains(local.name)) {
      observer_->onDropped(kernel_.name, Item::Variable, local.name, 1,
                           "the file has a variable of that name already");
    }
    kernel_.addVariable(local.name, local.rtlName, "int");
  }
}

// Odd, but to be kept: the line that closes the block is used up, even if it would start something
// else.
bool HLSFile::readBlock(std::string_view localName) {
  HlsLocalRecord local{std::string(localName), {}, 0};
  while (const std::optional<std::string_view> line = readBlockLine()) {
    FieldReader words(*line);
    const std::string_view first = words.readWord();
    const std::string_view second = words.readWord();
    const bool isLocation = second.find(':') != std::string_view::npos && words.readWord().empty();
    if (isLocation && observer_ != nullptr) observeInBlock(*line, first);
    if (isLocation && first != "reg:") {
      function_.addLocation(second);
      continue;
    }
    local.setRegister(second);
    if (isLocation) continue;
    if (observer_ != nullptr) observeBlockEnd(*line, first, second);
    function_.locals.push_back(std::move(local));
    return true;
  }
  return refuse(overBound);
}

// The next line that is not ignorable; empty at the end of the file. Nothing if it is too long.
std::optional<std::string_view> HLSFile::readBlockLine() {
  std::optional<BoundedLine> line;
  do {
    line = buffer_.readLine(lineBound);
    if (!line) return std::string_view{};
    if (line->overBound) return std::nullopt;
    if (observer_ != nullptr) observeIgnorable(line->text);
  } while (isIgnorable(line->text));
  return line->text;
}

// A line may look empty and not be it.
void HLSFile::observeIgnorable(std::string_view line) {
  const auto* const text = std::ranges::find_if_not(line, isWhiteSpace);
  if (text == line.begin() || text == line.end() || *text == '#') return;
  if (isIgnorable(line)) ignore("a line that begins with white space", line);
}

void HLSFile::observeDropped(std::string_view reason) {
  if (observer_ == nullptr || !hasFunction_) return;
  observer_->onIgnored(reason, functionStart_);
  for (const HlsLocalRecord& local : function_.locals) {
    observer_->onDropped(kernel_.name, Item::Variable, local.name, 1, reason);
  }
}

void HLSFile::observeInBlock(std::string_view line, std::string_view first) {
  if (first == "reg:") return ignore("a register that the end of its block replaces", line);
  if (function_.line) ignore("a source position after a function's first", line);
}

void HLSFile::observeBlockEnd(std::string_view line, std::string_view first,
                              std::string_view second) {
  if (line.empty()) return ignore("the register of a variable, which the end of the file cuts off");
  observeEnd(line);
  if (second.empty()) ignore("the register of a variable, which its last line does not give", line);
  const bool isPosition = second.find(':') < second.find('[');
  if (isPosition || first == "local" || first == "RTL" || first == "Begin" || first == "End") {
    ignore("a line that ends a block in place of its register", line);
  }
}

}  // namespace consolidator
