#include "readers/AuxiliaryXMLFile.h"

#include "readers/HdlReservedWords.h"
#include "text/FieldReader.h"
#include "text/WhiteSpace.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

constexpr std::string_view functionName = "ak:functionName=";
constexpr std::string_view originalName = "ak:originalName=";
constexpr std::string_view busTypeRef = "ak:busTypeRef=";

// The word of the line that starts there if it begins with the name; else nothing. The line begins
// with white space, so no word starts at its start.
template <const std::string_view& name>
std::string_view attributeAt(std::size_t start, std::string_view line) {
  if (line.size() - start < name.size()) return {};
  if (!std::equal(name.begin(), name.end(), line.substr(start).begin())) return {};
  return isWhiteSpace(line[start - 1]) ? line.substr(start, wordLength(line.substr(start)))
                                       : std::string_view();
}

// Calls `take` with each word that begins with the name, up to one for which it returns false. They
// are looked for by the capital letter of the name, which is rare: a look at every word would take
// 1.8 times the CPU time for the whole file. Returns false if one of the words ends where its value
// should start.
template <const std::string_view& name, typename Take>
bool forEachAttribute(std::string_view line, Take take) {
  constexpr std::size_t capital = name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  for (std::size_t found = line.find(name[capital], capital); found != std::string_view::npos;
       found = line.find(name[capital], found + 1)) {
    const std::string_view word = attributeAt<name>(found - capital, line);
    if (word.empty()) continue;
    if (word.size() == name.size()) return false;
    if (!take(word)) break;
  }
  return true;
}

// What follows the attribute's name and one more character, whatever that is.
std::string_view valueAfter(std::string_view attribute, std::string_view word) {
  return word.substr(attribute.size() + 1);
}

// The value without the word's last character. A value that is empty stays so.
std::string_view quotedValueAfter(std::string_view attribute, std::string_view word) {
  const std::string_view value = valueAfter(attribute, word);
  return value.empty() ? value : value.substr(0, value.size() - 1);
}

// Odd, but to be kept: the opening quote is cut off and the closing one is not, so only a name in
// two pairs of quotes is that of a stream, and the usual one pair makes it an "int".
std::string_view typeOf(std::string_view busType) {
  return busType == R"("acc_fifo")" || busType == R"("acc_fifo"")" ? "int*" : "int";
}

// An argument is added even if the line names none.
bool readArgument(std::string_view attributes, KernelRecord& kernel) {
  std::string_view sourceName;
  std::string_view type;
  const bool namesAreWhole = forEachAttribute<originalName>(attributes, [&](std::string_view word) {
    sourceName = quotedValueAfter(originalName, word);
    return true;
  });
  const bool typesAreWhole = forEachAttribute<busTypeRef>(attributes, [&](std::string_view word) {
    type = typeOf(valueAfter(busTypeRef, word));
    return true;
  });
  if (!namesAreWhole || !typesAreWhole) return false;
  kernel.addArgument(restoreReservedWordName(sourceName), sourceName, type);
  return true;
}

// The first name of a line is taken and ends it.
bool readKernelName(std::string_view attributes, KernelRecord& kernel) {
  return forEachAttribute<functionName>(attributes, [&](std::string_view word) {
    kernel.name = quotedValueAfter(functionName, word);
    return false;
  });
}

// Returns false for a word without the value that it should have.
bool readElement(std::string_view line, KernelRecord& kernel) {
  FieldReader fields(line);
  const std::string_view element = fields.readWord();
  if (element == "<ak:arg") return readArgument(fields.rest(), kernel);
  if (element == "<ak:acceleratorMap") return readKernelName(fields.rest(), kernel);
  return true;
}

bool isQuoted(std::string_view attribute, std::string_view word) {
  const std::string_view value = word.substr(attribute.size());
  return value.size() > 1 && value.front() == '"' && value.back() == '"';
}

// Calls `say` with what is odd in the attributes of an argument.
template <typename Say>
void observeArgument(std::string_view attributes, KernelRecord& kernel, Say say) {
  int names = 0;
  int types = 0;
  std::string_view sourceName;
  forEachAttribute<originalName>(attributes, [&](std::string_view word) {
    if (++names > 1) say("an attribute that a later one of the line replaces");
    if (!isQuoted(originalName, word)) say("the ends of a value that is not in quotes");
    sourceName = quotedValueAfter(originalName, word);
    return true;
  });
  forEachAttribute<busTypeRef>(attributes, [&](std::string_view) {
    if (++types > 1) say("an attribute that a later one of the line replaces");
    return true;
  });
  if (names == 0) say("the name of an argument, which the line does not give");
  const std::string name = restoreReservedWordName(sourceName);
  if (kernel.arguments.contains(name)) say("an argument that the file has already");
}

// Whether an element that would count starts after the line's first character.
bool hasElementInside(std::string_view line) {
  const std::string_view rest = line.substr(std::min<std::size_t>(line.size(), 1));
  return rest.find("<ak:arg ") != std::string_view::npos ||
         rest.find("<ak:acceleratorMap ") != std::string_view::npos;
}

}  // namespace

// To be called before the line is read into the kernel.
void AuxiliaryXMLFile::observeLine(std::string_view line, KernelRecord& kernel) {
  observeEnd(line);
  const auto say = [&](std::string_view reason) { ignore(reason, line); };
  FieldReader fields(line);
  const std::string_view element = fields.readWord();
  if (element == "<ak:arg") observeArgument(fields.rest(), kernel, say);
  const std::size_t start = std::min(line.find(element), line.size());
  if (hasElementInside(line.substr(start))) say("an element that does not begin its line");
  if (element != "<ak:acceleratorMap") return;
  bool hasName = false;
  forEachAttribute<functionName>(fields.rest(), [&](std::string_view word) {
    hasName = true;
    if (!isQuoted(functionName, word)) say("the ends of a value that is not in quotes");
    return false;
  });
  if (!hasName) say(R"(an "ak:acceleratorMap" without "ak:functionName")");
  if (hasName && !kernel.name.empty()) say("the name of the kernel, which a later line replaces");
}

bool AuxiliaryXMLFile::parse() {
  if (!isValid()) return false;
  KernelRecord kernel;
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (observer_ != nullptr) observeLine(line->text, kernel);
    if (line->overBound || !readElement(line->text, kernel)) {
      std::cerr << "Malformed auxiliary file: " << fileName_ << std::endl;
      return refuse(line->overBound ? "a line over 1023 bytes" : "an attribute without a value",
                    line->text);
    }
  }
  if (kernel.name.empty()) ignore("the name of the kernel, which no line gives");
  kernels_.push_back(std::move(kernel));
  return true;
}

}  // namespace consolidator
