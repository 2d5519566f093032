#include "model/BreakableCondition.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"

namespace consolidator {

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

// The size in between keeps two texts from passing for two others that are the same in a row.
std::uint64_t BreakableConditionKey::hash(const Key& key) {
  const auto& [kind, condition, line, file] = key;
  KeyedHash hash(HashSeed::ofProcess());
  hash.add(std::uint64_t{static_cast<std::uint32_t>(kind)} << 32U | line);
  hash.add(file.size());
  hash.add(file);
  hash.add(condition);
  return hash.finish();
}

}  // namespace consolidator
