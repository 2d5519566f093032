// The JSON text is assembled from fixed pieces: consumers parse their spacing, the bit locations in
// the form "{ 1, 2}" and the texts without escapes, byte for byte. A JSON library would write
// something else, so none is used.

#pragma once

#include "bytes/ByteWriter.h"
#include "model/BreakableCondition.h"
#include "model/KernelRecord.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace consolidator {

/// Writes the JSON document of kernels, which are given one after another. What a kernel is may
/// differ: a KernelRecord, or any type that has members of the same names for the same texts,
/// numbers and lists. Conditions should have been prepared.
class KernelJsonText {
 public:
  /// Begins the document. The writer must outlive this object.
  explicit KernelJsonText(ByteWriter& out) : out_(&out) { out.write("{  \"Kernels\" : [ "); }

  template <typename Kernel>
  void add(const Kernel& kernel) {
    if (!isEmpty_) out_->write(", ");
    isEmpty_ = false;
    writeKernel(*out_, kernel);
  }

  /// Ends the document; nothing can be added then.
  void end() { out_->write(" ] }"); }

  /// Writes the object of one kernel.
  template <typename Kernel>
  static void writeKernel(ByteWriter& out, const Kernel& kernel);

  /// What follows each instance path of a kernel with these arguments. Kernels of floating-point
  /// numbers are wrapped by another generated module, whose instance is named U0.
  template <typename Variables>
  static std::string_view instanceSuffix(const Variables& arguments);

  /// The name of a type in quotes, as the document has it.
  static std::string_view typeText(KernelType type);

 private:
  // Calls `writeItem(item, position)` for every item, with ", " between them.
  template <typename List, typename WriteItem>
  static void writeSeparated(ByteWriter& out, const List& items, WriteItem writeItem) {
    std::uint32_t position = 0;
    for (const auto& item : items) {
      if (position > 0) out.write(", ");
      writeItem(item, position++);
    }
  }

  static char* putNumber(char* to, std::uint32_t number);

  template <char open, char close, typename Locations>
  static void writeLocations(ByteWriter& out, const Locations& locations);

  template <typename Instances>
  static void writeInstanceBits(ByteWriter& out, const Instances& instanceBits);

  template <typename Variables>
  static void writeVariables(ByteWriter& out, const Variables& variables);

  template <typename Variable>
  static void writeHardwareVariable(ByteWriter& out, const Variable& variable);

  template <typename Condition>
  static void writeConditionKind(ByteWriter& out, const Condition& condition);

  ByteWriter* out_;
  bool isEmpty_ = true;
};

inline std::string_view KernelJsonText::typeText(KernelType type) {
  switch (type) {
    case KernelType::OpenCL:
      return "\"OpenCL\"";
    case KernelType::C:
      return "\"C\"";
    case KernelType::RTL:
      return "\"RTL\"";
    case KernelType::HLS:
      return "\"HLS\"";
    default:
      return "\"Unknown\"";
  }
}

// Writes a number in decimal; up to 10 bytes are overwritten. Computes all digits of a usual number
// at once, as the bytes of one word: their count is too random to branch on. With std::to_chars
// alone, a save takes 1.07 times the CPU time.
inline char* KernelJsonText::putNumber(char* to, std::uint32_t number) {
  constexpr std::uint32_t usual = 100'000'000;
  if (number >= usual) return std::to_chars(to, to + 10, number).ptr;
  const std::uint64_t fours = number / 10'000 | std::uint64_t{number % 10'000} << 32U;
  const std::uint64_t hundreds = (fours * 10'486 >> 20U) & 0x0000'007F'0000'007FU;
  const std::uint64_t twos = hundreds + ((fours - 100 * hundreds) << 16U);
  const std::uint64_t tens = (twos * 103 >> 10U) & 0x000F'000F'000F'000FU;
  const std::uint64_t digits = tens + ((twos - 10 * tens) << 8U);
  const auto leadingZeros =
      static_cast<std::uint32_t>(std::countr_zero(digits | std::uint64_t{1} << 56U)) / 8;
  const std::uint64_t text = (digits + 0x3030'3030'3030'3030U) >> (8 * leadingZeros);
  std::memcpy(to, &text, sizeof text);
  return to + (sizeof text - leadingZeros);
}

// Locations are what most of a large document is made of.
template <char open, char close, typename Locations>
void KernelJsonText::writeLocations(ByteWriter& out, const Locations& locations) {
  constexpr std::size_t longestPair = 32;
  constexpr std::string_view separator = ", ";
  bool isFirst = true;
  for (const auto& location : locations) {
    out.writeUpTo(longestPair, [&](char* to) {
      if (!isFirst) to = std::ranges::copy(separator, to).out;
      *to++ = open;
      *to++ = ' ';
      to = std::ranges::copy(separator, putNumber(to, location.first)).out;
      to = putNumber(to, location.second);
      *to++ = close;
      return to;
    });
    isFirst = false;
  }
}

template <typename Instances>
void KernelJsonText::writeInstanceBits(ByteWriter& out, const Instances& instanceBits) {
  out.write(", [ ");
  writeSeparated(out, instanceBits, [&](const auto& bits, std::uint32_t instance) {
    out.write("{ \"Instance\" : ");
    out.writeDecimal(instance);
    out.write(", \"Bits\" : [");
    writeLocations<'{', '}'>(out, bits);
    out.write("]}");
  });
  out.write("]");
}

template <typename Variables>
void KernelJsonText::writeVariables(ByteWriter& out, const Variables& variables) {
  writeSeparated(out, variables, [&](const auto& variable, std::uint32_t) {
    out.write("[ \"", variable.name, "\", \"", variable.second, "\", \"", variable.cType, "\", ");
    out.writeDecimal(variable.bitWidth());
    if (!variable.instanceBits.empty()) writeInstanceBits(out, variable.instanceBits);
    out.write("]");
  });
}

template <typename Variable>
void KernelJsonText::writeHardwareVariable(ByteWriter& out, const Variable& variable) {
  out.write(R"({ "RTLName" : ")", variable.rtlName, R"(", "Logic Locations" : [ )");
  writeLocations<'[', ']'>(out, variable.logicLocations);
  out.write("] } ");
}

template <typename Condition>
void KernelJsonText::writeConditionKind(ByteWriter& out, const Condition& condition) {
  switch (condition.kind) {
    case ConditionKind::Start:
      return out.write("\"Start\":true, ");
    case ConditionKind::Stop:
      return out.write("\"Stop\":true, ");
    case ConditionKind::SourceLine:
      out.write(R"("File":")", condition.file, R"(", "Line":)");
      out.writeDecimal(condition.line);
      return out.write(", ");
    case ConditionKind::Error:
    default:
      return out.write("\"Error\":1, ");
  }
}

template <typename Variables>
std::string_view KernelJsonText::instanceSuffix(const Variables& arguments) {
  for (const auto& argument : arguments) {
    if (argument.cType.find("float") != std::string_view::npos ||
        argument.cType.find("double") != std::string_view::npos) {
      return "/U0";
    }
  }
  return "/inst";
}

template <typename Kernel>
void KernelJsonText::writeKernel(ByteWriter& out, const Kernel& kernel) {
  out.write(R"({ "Name" : ")", kernel.name, R"(", "Instance Paths" : [ )");
  const std::string_view suffix = instanceSuffix(kernel.arguments);
  writeSeparated(out, kernel.instancePaths, [&](std::string_view path, std::uint32_t) {
    out.write("\"", path, suffix, "\"");
  });
  out.write(" ], \"Type\" : ");
  out.write(typeText(kernel.type));
  out.write(", \"Arguments\" : [ ");
  writeVariables(out, kernel.arguments);
  out.write("], \"Variables\" : [ ");
  writeVariables(out, kernel.variables);
  if (!kernel.hardwareVariables.empty()) {
    out.write("], \"Hardware Variables\" : [ ");
    writeSeparated(out, kernel.hardwareVariables, [&](const auto& variable, std::uint32_t) {
      writeHardwareVariable(out, variable);
    });
  }
  out.write("], \"Breakable Conditions\" : [");
  writeSeparated(out, kernel.breakableConditions, [&](const auto& item, std::uint32_t) {
    out.write("{ ");
    writeConditionKind(out, item);
    out.write(R"("Cond":")", item.condition, R"("})");
  });
  if (!kernel.brams.empty()) {
    out.write("], \"BRAMs\" : [ ");
    writeSeparated(out, kernel.brams,
                   [&](std::string_view bram, std::uint32_t) { out.write("\"", bram, "\""); });
  }
  out.write("] }");
}

}  // namespace consolidator
