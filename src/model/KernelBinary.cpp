// The binary form of a kernel record, as the kernel-records section of a consolidated file holds
// it: the fields in their order, without magic, length or padding.
//
//   u32    4 bytes, little-endian
//   text   u32 length, then the bytes; no terminator
//   list   u32 count, then the elements
//
//   record    name, list of instance paths, type, arguments, variables, hardware variables,
//             conditions, list of BRAM names
//   variable  name, second, cType, list of instances, each a list of (u32, u32)
//   hardware  rtlName, list of (u32, u32)
//   condition kind, condition; for SourceLine also line, file
//
// A reader of such a file must not trust its counts and lengths: nothing is allocated for more
// bytes than the file still holds, and a list grows as its elements arrive.

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"
#include "model/KernelRecord.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

// In memory a location has the bytes of the format: the host is little-endian, too.
static_assert(sizeof(BitLocation) == 2 * sizeof(std::uint32_t));
static_assert(std::is_trivially_copyable_v<BitLocation>);

void writeLocations(ByteWriter& out, const std::vector<BitLocation>& locations) {
  out.writeU32(static_cast<std::uint32_t>(locations.size()));
  out.write(std::string_view(reinterpret_cast<const char*>(locations.data()),
                             locations.size() * sizeof(BitLocation)));
}

// Reads into an empty list. A short read keeps the locations that are complete.
bool readLocations(ByteReader& in, std::vector<BitLocation>& locations) {
  std::uint32_t count = 0;
  if (!in.readClampedU32(count)) return false;
  const std::size_t available = in.plausibleCount(count, sizeof(BitLocation));
  locations.resize(available);
  return in.readBytes(reinterpret_cast<char*>(locations.data()), available * sizeof(BitLocation)) &&
         available == count;
}

bool skipLocations(ByteReader& in) {
  std::uint32_t count = 0;
  return in.readClampedU32(count) && in.skip(count * sizeof(BitLocation));
}

template <typename List>
void writeRecords(ByteWriter& out, const List& records) {
  out.writeU32(static_cast<std::uint32_t>(records.size()));
  for (const auto& record : records) record.writeBinary(out);
}

template <typename Texts>
void writeTexts(ByteWriter& out, const Texts& texts) {
  out.writeU32(static_cast<std::uint32_t>(texts.size()));
  for (const std::string& text : texts) out.writeText(text);
}

// A record is kept in its list even when the data ends inside it; a text is not.
template <typename T>
bool appendElement(ByteReader& in, std::vector<T>& records) {
  return records.emplace_back().readBinary(in);
}

bool appendElement(ByteReader& in, std::vector<std::string>& texts) {
  std::string text;
  if (!in.readText(text)) return false;
  texts.push_back(std::move(text));
  return true;
}

template <typename T>
bool readList(ByteReader& in, std::vector<T>& list) {
  std::uint32_t count = 0;
  if (!in.readU32(count)) return false;
  list.reserve(in.plausibleCount(count, sizeof(T)));
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!appendElement(in, list)) return false;
  }
  return true;
}

template <typename T, typename KeyOf>
bool readList(ByteReader& in, KeyedList<T, KeyOf>& list) {
  std::vector<T> items = list.takeItems();
  const bool isComplete = readList(in, items);
  list = KeyedList<T, KeyOf>(std::move(items));
  return isComplete;
}

bool skipText(ByteReader& in) { return in.skipText(); }

bool skipList(ByteReader& in, bool (*skipElement)(ByteReader&)) {
  std::uint32_t count = 0;
  if (!in.readU32(count)) return false;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!skipElement(in)) return false;
  }
  return true;
}

}  // namespace

std::uint64_t VariableRecord::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeText(name, second, cType);
  out.writeU32(static_cast<std::uint32_t>(instanceBits.size()));
  for (const InstanceBits& bits : instanceBits) writeLocations(out, bits);
  return out.acceptedSince(before);
}

bool VariableRecord::readBinary(ByteReader& in) {
  std::uint32_t instances = 0;
  if (!in.readText(name) || !in.readText(second) || !in.readText(cType) ||
      !in.readClampedU32(instances)) {
    return false;
  }
  instanceBits.reserve(in.plausibleCount(instances, sizeof(InstanceBits)));
  for (std::uint32_t i = 0; i < instances; ++i) {
    if (!readLocations(in, instanceBits.emplace_back())) return false;
  }
  valid = true;
  return true;
}

bool VariableRecord::skipBinary(ByteReader& in) {
  std::uint32_t instances = 0;
  if (!in.skipText() || !in.skipText() || !in.skipText() || !in.readClampedU32(instances)) {
    return false;
  }
  for (std::uint32_t i = 0; i < instances; ++i) {
    if (!skipLocations(in)) return false;
  }
  return true;
}

std::uint64_t HardwareVariable::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeText(rtlName);
  writeLocations(out, logicLocations);
  return out.acceptedSince(before);
}

bool HardwareVariable::readBinary(ByteReader& in) {
  valid = in.readText(rtlName) && readLocations(in, logicLocations);
  return valid;
}

bool HardwareVariable::skipBinary(ByteReader& in) { return in.skipText() && skipLocations(in); }

std::uint64_t BreakableCondition::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeU32(static_cast<std::uint32_t>(kind));
  out.writeText(condition);
  if (kind == ConditionKind::SourceLine) {
    out.writeU32(line);
    out.writeText(file);
  }
  return out.acceptedSince(before);
}

bool BreakableCondition::readBinary(ByteReader& in) {
  std::uint32_t storedKind = 0;
  if (!in.readU32(storedKind)) return false;
  kind = static_cast<ConditionKind>(storedKind);
  valid = in.readText(condition) &&
          (kind != ConditionKind::SourceLine || (in.readU32(line) && in.readText(file)));
  return valid;
}

bool BreakableCondition::skipBinary(ByteReader& in) {
  std::uint32_t storedKind = 0;
  if (!in.readU32(storedKind) || !in.skipText()) return false;
  std::uint32_t skippedLine = 0;
  return static_cast<ConditionKind>(storedKind) != ConditionKind::SourceLine ||
         (in.readU32(skippedLine) && in.skipText());
}

std::uint64_t KernelRecord::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeText(name);
  writeTexts(out, instancePaths);
  out.writeU32(static_cast<std::uint32_t>(type));
  writeRecords(out, arguments);
  writeRecords(out, variables);
  writeRecords(out, hardwareVariables);
  writeRecords(out, breakableConditions);
  writeTexts(out, brams);
  return out.acceptedSince(before);
}

bool KernelRecord::readBinary(ByteReader& in) {
  if (!in.hasStream()) return false;
  reset();
  std::uint32_t storedType = 0;
  if (!in.readText(name) || !readList(in, instancePaths) || !in.readU32(storedType)) return false;
  type = static_cast<KernelType>(storedType);
  return readList(in, arguments) && readList(in, variables) && readList(in, hardwareVariables) &&
         readList(in, breakableConditions) && readList(in, brams);
}

bool KernelRecord::skipBinary(ByteReader& in) {
  std::uint32_t storedType = 0;
  return in.skipText() && skipList(in, skipText) && in.readU32(storedType) &&
         skipList(in, VariableRecord::skipBinary) && skipList(in, VariableRecord::skipBinary) &&
         skipList(in, HardwareVariable::skipBinary) &&
         skipList(in, BreakableCondition::skipBinary) && skipList(in, skipText);
}

}  // namespace consolidator
