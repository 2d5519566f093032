#include "readers/LLFile.h"

#include "readers/NetBit.h"
#include "readers/SharedNets.h"
#include "readers/UsualNumbers.h"
#include "text/FieldReader.h"
#include "text/FindLast.h"
#include "text/WhiteSpace.h"

#include <cstdint>
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

// Inlining all that reads numbers saves a tenth of the instructions of a file whose nets are known.
// Reads the fields up to the net; of the address, the low 32 bits go into the location.
[[gnu::flatten]] bool readLocation(FieldReader& fields, std::uint64_t& address,
                                   LogicLocation& location) {
  std::uint64_t number = 0;
  if (fields.readWord() != "Bit" || !fields.readNumber(number) || !fields.readNumber(address, 16) ||
      !fields.readNumber(location.second)) {
    return false;
  }
  location.first = static_cast<std::uint32_t>(address);
  fields.readWord();
  std::uint32_t region = 0;
  return fields.readNumber(region);
}

// The words are what follows the numbers; a net may stand right after the digits of the last.
std::optional<NetBit> readNet(std::string_view words) {
  std::size_t at = words.find(netMark);
  while (at != std::string_view::npos && at > 0 && !isWhiteSpace(words[at - 1])) {
    at = words.find(netMark, at + netMark.size());
  }
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view net = words.substr(at + netMark.size());
  return NetBit(net.substr(0, wordLength(net)));
}

}  // namespace

void LLFile::setKernels(const KernelList& kernels) {
  kernels_.assign(kernels.begin(), kernels.end());
}

bool LLFile::parse() {
  if (!isValid()) return false;
  if (observer_ != nullptr) {
    for (const KernelRecord& kernel : kernels_) {
      knownBefore_.push_back(kernel.hardwareVariables.size());
    }
  }
  RegisterIndex registers(kernels_, lineBound);
  SharedNets sharedNets(kernels_);
  // White space in front of a line does not count as part of it, except in front of the first.
  do {
    if (const auto line = buffer_.readLine(lineBound)) {
      if (line->overBound) ignore("a line over 2047 bytes");
      readBit(line->text, registers, sharedNets);
      if (line->overBound) buffer_.skipLine();
    }
    // An observer is told of every line.
    if (observer_ == nullptr) buffer_.skip(lineOfConcern(registers, buffer_.buffered()));
  } while (buffer_.skipWhiteSpace());
  sharedNets.handOut();
  return true;
}

void LLFile::readBit(std::string_view line, RegisterIndex& registers, SharedNets& sharedNets) {
  if (line.starts_with(';') || line.find("Revision") != std::string_view::npos) {
    return observeComment(line);
  }
  if (observer_ != nullptr && observeUnknown(line, registers)) return;
  FieldReader fields(line);
  std::uint64_t address = 0;
  LogicLocation location;
  if (!readLocation(fields, address, location)) return observeOther(line);
  const std::optional<NetBit> bit = readNet(fields.rest());
  const std::optional<std::uint32_t> index = bit ? bit->index() : std::nullopt;
  if (observer_ != nullptr && !observeBit(line, bit, index, address, location, registers)) return;
  if (!index || sharedNets.set(bit->net(), *index, location)) return;
  const RegisterIndex::Found found = registers.find(bit->net());
  if (found.kernels.size() > 1) {
    sharedNets.add(found.hardwareName, found.kernels, *index, location);
  } else if (!found.kernels.empty()) {
    kernels_[found.kernels.front()].setLogicLocation(found.hardwareName, *index, location.first,
                                                     location.second);
  }
}

void LLFile::observeComment(std::string_view line) {
  if (line.starts_with("Bit")) ignore("a bit on a line with \"Revision\"", line);
}

// Tells the observer of a line in the usual form that gives nothing. Returns false for any other,
// which is to be read.
bool LLFile::observeUnknown(std::string_view line, const RegisterIndex& registers) {
  const std::optional<std::string_view> words = afterUsualNumbers(line);
  if (!words) return false;
  const std::optional<NetBit> bit = readNet(*words);
  const std::optional<std::uint32_t> index = bit ? bit->index() : std::nullopt;
  if (index && registers.mayKnow(bit->registerName())) return false;
  if (observeIndex(line, bit, index)) observer_->onNet(bit->net(), lineOf(line), 0);
  return true;
}

// Returns whether there is an index.
bool LLFile::observeIndex(std::string_view line, const std::optional<NetBit>& bit,
                          std::optional<std::uint32_t> index) {
  observeEnd(line);
  if (!index) {
    ignore(bit ? "a bit index of 268435456 or more" : "a bit without a net", line);
  } else if (!bit->hasPlainIndex()) {
    ignore("a bit index that is no number", line);
  }
  return index.has_value();
}

// Returns whether anybody knows the register.
bool LLFile::observeBit(std::string_view line, const std::optional<NetBit>& bit,
                        std::optional<std::uint32_t> index, std::uint64_t address,
                        const LogicLocation& location, RegisterIndex& registers) {
  if (!observeIndex(line, bit, index)) return false;
  const RegisterIndex::Found found = registers.find(bit->net());
  observer_->onNet(bit->net(), lineOf(line), found.kernels.size());
  if (found.kernels.empty()) return false;
  if (address != location.first) ignore("the digits of an address beyond 32 bits", line);
  if (replaces(found, *index, location)) {
    ignore("an earlier location of the bit, which the line replaces", line);
  }
  return true;
}

// Whether a location differs from that of an earlier line. Where the file was read before, the
// known locations are those of the whole file: only a variable that is new can tell of a line
// before.
bool LLFile::replaces(const RegisterIndex::Found& found, std::uint32_t bit,
                      const LogicLocation& location) {
  const std::uint32_t owner = found.kernels.front();
  HardwareVariableList& variables = kernels_[owner].hardwareVariables;
  const HardwareVariable* const variable = variables.find(found.hardwareName);
  if (variable == nullptr || variable < &variables[0] + knownBefore_[owner]) return false;
  if (bit >= variable->logicLocations.size()) return false;
  const LogicLocation& before = variable->logicLocations[bit];
  return before != LogicLocation() && before != location;
}

void LLFile::observeOther(std::string_view line) {
  if (observer_ == nullptr || line.empty()) return;
  const bool isBit = FieldReader(line).readWord() == "Bit";
  ignore(isBit ? "a bit whose numbers cannot be read" : "a line of another kind", line);
}

}  // namespace consolidator
