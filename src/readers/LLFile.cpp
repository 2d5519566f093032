#include "readers/LLFile.h"

#include "readers/SharedNets.h"
#include "text/FieldReader.h"
#include "text/FindLast.h"
#include "text/WhiteSpace.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace consolidator {

namespace {

constexpr std::string_view netMark = "Net=";

// Returns where the first line starts that may name a known register as its net, or else the last
// line, whose rest may be missing. A word that may be the net starts after white space or after the
// digits of the last number, so none starts inside another.
std::size_t lineOfConcern(const RegisterIndex& registers, std::string_view lines) {
  std::size_t at = 0;
  std::string_view net;
  do {
    at = lines.find(netMark, at + net.size());
    if (at == std::string_view::npos) break;
    at += netMark.size();
    net = lines.substr(at, plainLength(lines.substr(at)));
  } while (at + net.size() < lines.size() && isWhiteSpace(lines[at + net.size()]) &&
           !registers.mayKnow(NetBit(net).registerName()));
  return findLast(lines.substr(0, at), '\n') + 1;
}

// Reads the fields up to the net.
bool readLocation(FieldReader& fields, LogicLocation& location) {
  std::uint64_t number = 0;
  std::uint64_t first = 0;
  if (fields.readWord() != "Bit" || !fields.readNumber(number) || !fields.readNumber(first, 16) ||
      !fields.readNumber(location.second)) {
    return false;
  }
  location.first = static_cast<std::uint32_t>(first);
  fields.readWord();
  std::uint32_t region = 0;
  return fields.readNumber(region);
}

std::optional<NetBit> readNet(FieldReader& fields) {
  std::string_view word;
  do {
    word = fields.readWord();
    if (word.starts_with(netMark)) return NetBit(word.substr(netMark.size()));
  } while (!word.empty());
  return std::nullopt;
}

// Whether the address of a line that has one does not fit into a location.
bool hasWideAddress(std::string_view line) {
  FieldReader fields(line);
  fields.readWord();
  std::uint64_t number = 0;
  return fields.readNumber(number) && fields.readNumber(number, 16) &&
         number > std::numeric_limits<std::uint32_t>::max();
}

}  // namespace

void LLFile::setKernels(const KernelList& kernels) {
  kernels_.assign(kernels.begin(), kernels.end());
}

bool LLFile::parse() {
  if (!isValid()) return false;
  if (observer_ == nullptr) {
    readLines<false>();
    return true;
  }
  for (const KernelRecord& kernel : kernels_) {
    knownBefore_.push_back(kernel.hardwareVariables.size());
  }
  readLines<true>();
  return true;
}

template <bool isObserved>
void LLFile::readLines() {
  RegisterIndex registers(kernels_, lineBound);
  SharedNets sharedNets(kernels_);
  // White space in front of a line does not count as part of it, except in front of the first.
  do {
    if (const auto line = buffer_.readLine(lineBound)) {
      if (isObserved && line->overBound) ignore("a line over 2047 bytes");
      readBit<isObserved>(line->text, registers, sharedNets);
      if (line->overBound) buffer_.skipLine();
    }
    // An observer is told of every line.
    if (!isObserved) buffer_.skip(lineOfConcern(registers, buffer_.buffered()));
  } while (buffer_.skipWhiteSpace());
  sharedNets.handOut();
}

template <bool isObserved>
void LLFile::readBit(std::string_view line, RegisterIndex& registers, SharedNets& sharedNets) {
  if (line.starts_with(';') || line.find("Revision") != std::string_view::npos) {
    if (isObserved && line.starts_with("Bit")) ignore("a bit on a line with \"Revision\"", line);
    return;
  }
  FieldReader fields(line);
  LogicLocation location;
  if (!readLocation(fields, location)) {
    if (isObserved) observeOther(line);
    return;
  }
  const std::optional<NetBit> bit = readNet(fields);
  const std::optional<std::uint32_t> index = bit ? bit->index() : std::nullopt;
  if (isObserved) observeNet(bit, line);
  if (!index) return;
  if (isObserved && !observeBit(registers.find(bit->net()), *index, location, line)) return;
  if (sharedNets.set(bit->net(), *index, location)) return;
  const RegisterIndex::Found found = registers.find(bit->net());
  if (found.kernels.size() > 1) {
    sharedNets.add(found.hardwareName, found.kernels, *index, location);
  } else if (!found.kernels.empty()) {
    kernels_[found.kernels.front()].setLogicLocation(found.hardwareName, *index, location.first,
                                                     location.second);
  }
}

void LLFile::observeNet(const std::optional<NetBit>& bit, std::string_view line) {
  observeEnd(line);
  if (!bit) return ignore("a bit without a net", line);
  if (!bit->index()) return ignore("a bit index of 268435456 or more", line);
  if (!bit->hasPlainIndex()) ignore("a bit index that is no number", line);
}

// Returns whether anybody knows the register. Where the file was read before, the known locations
// are those of the whole file: only a variable that is new can tell of a line before.
bool LLFile::observeBit(const RegisterIndex::Found& found, std::uint32_t bit,
                        const LogicLocation& location, std::string_view line) {
  observer_->onNet(found.hardwareName, lineOf(line), found.kernels.size());
  if (found.kernels.empty()) return false;
  if (hasWideAddress(line)) ignore("the digits of an address beyond 32 bits", line);
  const std::uint32_t owner = found.kernels.front();
  HardwareVariableList& variables = kernels_[owner].hardwareVariables;
  const HardwareVariable* const variable = variables.find(found.hardwareName);
  if (variable == nullptr || variable < &variables[0] + knownBefore_[owner]) return true;
  if (bit >= variable->logicLocations.size()) return true;
  const LogicLocation& before = variable->logicLocations[bit];
  if (before != LogicLocation() && before != location) {
    ignore("an earlier location of the bit, which the line replaces", line);
  }
  return true;
}

void LLFile::observeOther(std::string_view line) {
  if (line.empty()) return;
  const bool isBit = FieldReader(line).readWord() == "Bit";
  ignore(isBit ? "a bit whose numbers cannot be read" : "a line of another kind", line);
}

}  // namespace consolidator
