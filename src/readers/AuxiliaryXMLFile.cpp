#include "readers/AuxiliaryXMLFile.h"

#include "readers/FieldReader.h"
#include "readers/HdlReservedWords.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

constexpr std::string_view functionName = "ak:functionName=";
constexpr std::string_view originalName = "ak:originalName=";
constexpr std::string_view busTypeRef = "ak:busTypeRef=";

// As std::string_view does it, but the compiler sees the length of the prefix.
bool startsWith(std::string_view word, std::string_view prefix) {
  return word.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), word.begin());
}

// What follows the attribute's name and one more character, whatever that is.
std::string_view valueAfter(std::string_view attribute, std::string_view word) {
  return word.substr(attribute.size() + 1);
}

// The value without the word's last character. A value that is empty stays so.
std::string_view quotedValueAfter(std::string_view attribute, std::string_view word) {
  const std::string_view value = valueAfter(attribute, word);
  return value.substr(0, value.size() - 1);
}

// The opening quote is cut and the closing one is not, deliberately: a stream is what stands in two
// pairs of quotes, and one pair makes it an "int".
std::string_view typeOf(std::string_view busType) {
  return busType == "\"acc_fifo\"" || busType == "\"acc_fifo\"\"" ? "int*" : "int";
}

// An argument is added even if the line names none.
bool readArgument(FieldReader words, KernelRecord& kernel) {
  std::string_view sourceName;
  std::string_view type;
  for (auto word = words.readWord(); !word.empty(); word = words.readWord()) {
    if (startsWith(word, originalName)) {
      if (word == originalName) return false;
      sourceName = quotedValueAfter(originalName, word);
    } else if (startsWith(word, busTypeRef)) {
      if (word == busTypeRef) return false;
      type = typeOf(valueAfter(busTypeRef, word));
    }
  }
  kernel.addArgument(restoreReservedWordName(sourceName), sourceName, type);
  return true;
}

bool readKernelName(FieldReader words, KernelRecord& kernel) {
  for (auto word = words.readWord(); !word.empty(); word = words.readWord()) {
    if (word == functionName) return false;
    if (!startsWith(word, functionName)) continue;
    kernel.name = quotedValueAfter(functionName, word);
    break;
  }
  return true;
}

// Returns false for a word without the value that it should have.
bool readElement(FieldReader words, KernelRecord& kernel) {
  const std::string_view element = words.readWord();
  if (element == "<ak:arg") return readArgument(words, kernel);
  if (element == "<ak:acceleratorMap") return readKernelName(words, kernel);
  return true;
}

}  // namespace

bool AuxiliaryXMLFile::parse() {
  if (!isValid()) return false;
  KernelRecord kernel;
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (line->overBound || !readElement(FieldReader(line->text), kernel)) {
      std::cerr << "Malformed auxiliary file: " << fileName_ << std::endl;
      return false;
    }
  }
  kernels_.push_back(std::move(kernel));
  return true;
}

}  // namespace consolidator
