#pragma once

#include "Bytes.h"
#include "model/KernelRecord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {

/// Thrown where bytes end too early.
struct ShortRead : std::runtime_error {
  ShortRead() : std::runtime_error("short read") {}
};

/// Reads the fields of a consolidated file from bytes in memory, one after another.
class PlainBytes {
 public:
  PlainBytes(std::string_view bytes, std::size_t position)
      : bytes_(bytes.substr(std::min(position, bytes.size()))) {}

  std::string_view take(std::size_t size) {
    if (size > bytes_.size()) throw ShortRead();
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
  }

  std::uint32_t number() { return static_cast<std::uint32_t>(numberAt(take(4), 0, 4)); }

  std::uint64_t longNumber() { return numberAt(take(8), 0, 8); }

  std::uint32_t clampedNumber() { return std::min(number(), 0xFFFFFFFEU); }

  std::string text() {
    const std::string_view bytes = take(clampedNumber());
    return std::string(bytes.substr(0, bytes.find('\0')));
  }

 private:
  std::string_view bytes_;
};

/// Decodes kernel records field by field; throws ShortRead.
class PlainRecordReader {
 public:
  explicit PlainRecordReader(PlainBytes& in) : in_(in) {}

  KernelRecord kernel() {
    KernelRecord kernel;
    kernel.name = in_.text();
    readList(kernel.instancePaths);
    kernel.type = static_cast<KernelType>(in_.number());
    readList(kernel.arguments);
    readList(kernel.variables);
    readList(kernel.hardwareVariables);
    readList(kernel.breakableConditions);
    readList(kernel.brams);
    return kernel;
  }

 private:
  template <typename Action>
  static void repeat(std::uint32_t count, Action action) {
    for (std::uint32_t i = 0; i < count; ++i) action();
  }

  void readList(std::vector<std::string>& list) {
    repeat(in_.number(), [&] { list.push_back(in_.text()); });
  }

  template <typename T, typename KeyOf>
  void readList(KeyedList<T, KeyOf>& list) {
    repeat(in_.number(), [&] {
      T item;
      read(item);
      list.append(std::move(item));
    });
  }

  void readLocations(std::vector<BitLocation>& list) {
    repeat(in_.clampedNumber(), [&] {
      const std::uint32_t first = in_.number();
      list.push_back({first, in_.number()});
    });
  }

  void read(std::string& text) { text = in_.text(); }

  void read(VariableRecord& variable) {
    variable.name = in_.text();
    variable.second = in_.text();
    variable.cType = in_.text();
    repeat(in_.clampedNumber(), [&] { readLocations(variable.instanceBits.emplace_back()); });
    variable.valid = true;
  }

  void read(HardwareVariable& variable) {
    variable.rtlName = in_.text();
    readLocations(variable.logicLocations);
    variable.valid = true;
  }

  void read(BreakableCondition& condition) {
    condition.kind = static_cast<ConditionKind>(in_.number());
    condition.condition = in_.text();
    if (condition.kind == ConditionKind::SourceLine) {
      condition.line = in_.number();
      condition.file = in_.text();
    }
    condition.valid = true;
  }

  PlainBytes& in_;
};

/// Encodes kernel records field by field.
class PlainRecordWriter {
 public:
  static std::string kernel(const KernelRecord& kernel) {
    return consolidator::text(kernel.name) + list(kernel.instancePaths, text) +
           u32(static_cast<std::uint32_t>(kernel.type)) + list(kernel.arguments, variable) +
           list(kernel.variables, variable) + list(kernel.hardwareVariables, hardwareVariable) +
           list(kernel.breakableConditions, condition) + list(kernel.brams, text);
  }

 private:
  template <typename List, typename Encode>
  static std::string list(const List& items, Encode encode) {
    std::string bytes = u32(static_cast<std::uint32_t>(items.size()));
    for (const auto& item : items) bytes += encode(item);
    return bytes;
  }

  static std::string text(const std::string& text) { return consolidator::text(text); }

  static std::string location(BitLocation location) {
    return u32(location.first) + u32(location.second);
  }

  static std::string bits(const InstanceBits& bits) { return list(bits, location); }

  static std::string variable(const VariableRecord& variable) {
    return text(variable.name) + text(variable.second) + text(variable.cType) +
           list(variable.instanceBits, bits);
  }

  static std::string hardwareVariable(const HardwareVariable& variable) {
    return text(variable.rtlName) + list(variable.logicLocations, location);
  }

  static std::string condition(const BreakableCondition& condition) {
    std::string bytes = u32(static_cast<std::uint32_t>(condition.kind)) + text(condition.condition);
    if (condition.kind == ConditionKind::SourceLine) {
      bytes += u32(condition.line) + text(condition.file);
    }
    return bytes;
  }
};

}  // namespace consolidator
