#pragma once

#include "lookup/KeyedList.h"
#include "model/BitLocation.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

class ByteReader;
class ByteWriter;

/// An argument or a local variable of a kernel.
struct VariableRecord {
  std::string name;
  std::string second;  ///< the name in the hardware, as the reader that made the record supplied it
  std::string cType;   ///< as written in the source, for example "int*"
  std::vector<InstanceBits> instanceBits;  ///< one per kernel instance, in instance order
  bool valid = false;                      ///< complete; neither stored nor rendered

  VariableRecord() = default;

  VariableRecord(std::string_view variableName, std::string_view secondText, std::string_view type)
      : name(variableName), second(secondText), cType(type), valid(true) {}

  /// Width in bits derived from `cType`: 64 where it contains "*", else 8 where it contains
  /// "char", else 32 (also for "double": consumers rely on this coarse rule).
  std::uint32_t bitWidth() const { return bitWidthOf(cType); }

  /// The same for a type that no record holds.
  static std::uint32_t bitWidthOf(std::string_view cType) {
    if (cType.find('*') != std::string_view::npos) return 64;
    if (cType.find("char") != std::string_view::npos) return 8;
    return 32;
  }

  /// Appends the binary form: three texts, the number of instances, and for each instance its
  /// number of bits followed by their locations. Returns how many bytes the writer took.
  std::uint64_t writeBinary(ByteWriter& out) const;

  /// Reads the binary form into this default-made record and sets `valid` at the end. A short
  /// read returns false and keeps what was read so far.
  bool readBinary(ByteReader& in);

  /// Skips a binary form. Returns false where readBinary() does.
  static bool skipBinary(ByteReader& in);

  /// Compares what is stored; `valid` takes no part.
  friend bool operator==(const VariableRecord& a, const VariableRecord& b) {
    return a.name == b.name && a.second == b.second && a.cType == b.cType &&
           a.instanceBits == b.instanceBits;
  }
};

/// Variables are found by `name`.
struct VariableKey : TextKeyHash {
  std::string_view operator()(const VariableRecord& variable) const { return variable.name; }
};

using VariableList = KeyedList<VariableRecord, VariableKey>;

}  // namespace consolidator
