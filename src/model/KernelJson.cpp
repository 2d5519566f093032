// The JSON text is put together from fixed fragments: their spacing, the bit locations in the form
// "{ 1, 2}" and the texts without any escaping are what consumers parse, byte for byte. A JSON
// library would write something else, so none is used.

#include "model/KernelJson.h"

#include "bytes/ByteWriter.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

namespace {

// Calls `writeItem(item, position)` for every item, with ", " between them.
template <typename List, typename WriteItem>
void writeSeparated(ByteWriter& out, List& items, WriteItem writeItem) {
  std::uint32_t position = 0;
  for (auto& item : items) {
    if (position > 0) out.write(", ");
    writeItem(item, position++);
  }
}

// Writes a number in decimal; up to 10 bytes are overwritten. Computes all digits of a usual number
// at once, as the bytes of one word: their count is too random to branch on. With std::to_chars
// alone, a save takes 1.07 times the CPU time.
char* putNumber(char* to, std::uint32_t number) {
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
template <char open, char close>
void writeLocations(ByteWriter& out, const std::vector<BitLocation>& locations) {
  constexpr std::size_t longestPair = 32;
  constexpr std::string_view separator = ", ";
  bool isFirst = true;
  for (const BitLocation& location : locations) {
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

void writeInstanceBits(ByteWriter& out, const std::vector<InstanceBits>& instanceBits) {
  out.write(", [ ");
  writeSeparated(out, instanceBits, [&](const InstanceBits& bits, std::uint32_t instance) {
    out.write("{ \"Instance\" : ");
    out.writeDecimal(instance);
    out.write(", \"Bits\" : [");
    writeLocations<'{', '}'>(out, bits);
    out.write("]}");
  });
  out.write("]");
}

void writeVariable(ByteWriter& out, const VariableRecord& variable) {
  out.write("[ \"", variable.name, "\", \"", variable.second, "\", \"", variable.cType, "\", ");
  out.writeDecimal(KernelRecord::bitWidth(variable));
  if (!variable.instanceBits.empty()) writeInstanceBits(out, variable.instanceBits);
  out.write("]");
}

void writeVariables(ByteWriter& out, const VariableList& variables) {
  writeSeparated(out, variables, [&](const VariableRecord& variable, std::uint32_t) {
    writeVariable(out, variable);
  });
}

void writeHardwareVariable(ByteWriter& out, const HardwareVariable& variable) {
  out.write(R"({ "RTLName" : ")", variable.rtlName, R"(", "Logic Locations" : [ )");
  writeLocations<'[', ']'>(out, variable.logicLocations);
  out.write("] } ");
}

void writeConditionKind(ByteWriter& out, const BreakableCondition& condition) {
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

void writeCondition(ByteWriter& out, const BreakableCondition& condition) {
  out.write("{ ");
  writeConditionKind(out, condition);
  out.write(R"("Cond":")", condition.condition, R"("})");
}

}  // namespace

// Floating-point kernels are wrapped by another generated module, whose instance is named U0.
std::string_view KernelRecord::instanceSuffix() const {
  const auto isFloatingPoint = [](const VariableRecord& argument) {
    return argument.cType.find("float") != std::string::npos ||
           argument.cType.find("double") != std::string::npos;
  };
  return std::any_of(arguments.begin(), arguments.end(), isFloatingPoint) ? "/U0" : "/inst";
}

void KernelRecord::writeJson(ByteWriter& out) const {
  out.write(R"({ "Name" : ")", name, R"(", "Instance Paths" : [ )");
  const std::string_view suffix = instanceSuffix();
  writeSeparated(out, instancePaths, [&](const std::string& path, std::uint32_t) {
    out.write("\"", path, suffix, "\"");
  });
  out.write(" ], \"Type\" : ");
  out.write(typeText(type));
  out.write(", \"Arguments\" : [ ");
  writeVariables(out, arguments);
  out.write("], \"Variables\" : [ ");
  writeVariables(out, variables);
  if (!hardwareVariables.empty()) {
    out.write("], \"Hardware Variables\" : [ ");
    writeSeparated(out, hardwareVariables, [&](const HardwareVariable& variable, std::uint32_t) {
      writeHardwareVariable(out, variable);
    });
  }
  out.write("], \"Breakable Conditions\" : [");
  writeSeparated(out, breakableConditions,
                 [&](const BreakableCondition& item, std::uint32_t) { writeCondition(out, item); });
  if (!brams.empty()) {
    out.write("], \"BRAMs\" : [ ");
    writeSeparated(out, brams,
                   [&](const std::string& bram, std::uint32_t) { out.write("\"", bram, "\""); });
  }
  out.write("] }");
}

std::string_view typeText(KernelType type) {
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

void writeKernelsJson(KernelList& kernels, ByteWriter& out) {
  out.write("{  \"Kernels\" : [ ");
  kernels.edit([&](KernelSequence& records) {
    writeSeparated(out, records, [&](KernelRecord& kernel, std::uint32_t) {
      kernel.prepareBreakableConditions();
      kernel.writeJson(out);
    });
  });
  out.write(" ] }");
}

}  // namespace consolidator
