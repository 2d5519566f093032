// The JSON text is put together from fixed fragments: their spacing, the bit locations in the form
// "{ 1, 2}" and the texts without any escaping are what consumers parse, byte for byte. A JSON
// library would write something else, so none is used.

#include "model/KernelJson.h"

#include "model/ByteWriter.h"

#include <cstddef>
#include <cstdint>
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

void writeQuoted(ByteWriter& out, std::string_view text, std::string_view suffix = {}) {
  out.write("\"");
  out.write(text);
  out.write(suffix);
  out.write("\"");
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

// Floating-point kernels are wrapped by another generated module, whose instance is named U0.
std::string_view instanceSuffix(const VariableList& arguments) {
  for (const VariableRecord& argument : arguments) {
    const std::string& type = argument.cType;
    if (type.find("float") != std::string::npos || type.find("double") != std::string::npos) {
      return "/U0";
    }
  }
  return "/inst";
}

void writePair(ByteWriter& out, std::string_view open, BitLocation location,
               std::string_view close) {
  out.write(open);
  out.writeDecimal(location.first);
  out.write(", ");
  out.writeDecimal(location.second);
  out.write(close);
}

void writeInstanceBits(ByteWriter& out, const std::vector<InstanceBits>& instanceBits) {
  out.write(", [ ");
  writeSeparated(out, instanceBits, [&](const InstanceBits& bits, std::uint32_t instance) {
    out.write("{ \"Instance\" : ");
    out.writeDecimal(instance);
    out.write(", \"Bits\" : [");
    writeSeparated(out, bits, [&](BitLocation location, std::uint32_t) {
      writePair(out, "{ ", location, "}");
    });
    out.write("]}");
  });
  out.write("]");
}

void writeVariable(ByteWriter& out, const VariableRecord& variable) {
  out.write("[ ");
  writeQuoted(out, variable.name);
  out.write(", ");
  writeQuoted(out, variable.second);
  out.write(", ");
  writeQuoted(out, variable.cType);
  out.write(", ");
  out.writeDecimal(variable.bitWidth());
  if (!variable.instanceBits.empty()) writeInstanceBits(out, variable.instanceBits);
  out.write("]");
}

void writeVariables(ByteWriter& out, const VariableList& variables) {
  writeSeparated(out, variables, [&](const VariableRecord& variable, std::uint32_t) {
    writeVariable(out, variable);
  });
}

void writeHardwareVariable(ByteWriter& out, const HardwareVariable& variable) {
  out.write("{ \"RTLName\" : ");
  writeQuoted(out, variable.rtlName);
  out.write(", \"Logic Locations\" : [ ");
  writeSeparated(out, variable.logicLocations, [&](LogicLocation location, std::uint32_t) {
    writePair(out, "[ ", location, "]");
  });
  out.write("] } ");
}

void writeConditionKind(ByteWriter& out, const BreakableCondition& condition) {
  switch (condition.kind) {
    case ConditionKind::Start:
      return out.write("\"Start\":true, ");
    case ConditionKind::Stop:
      return out.write("\"Stop\":true, ");
    case ConditionKind::SourceLine:
      out.write("\"File\":");
      writeQuoted(out, condition.file);
      out.write(", \"Line\":");
      out.writeDecimal(condition.line);
      return out.write(", ");
    default:
      return out.write("\"Error\":1, ");
  }
}

void writeCondition(ByteWriter& out, const BreakableCondition& condition) {
  out.write("{ ");
  writeConditionKind(out, condition);
  out.write("\"Cond\":");
  writeQuoted(out, condition.condition);
  out.write("}");
}

}  // namespace

void KernelRecord::writeJson(ByteWriter& out) const {
  out.write("{ \"Name\" : ");
  writeQuoted(out, name);
  out.write(", \"Instance Paths\" : [ ");
  const std::string_view suffix = instanceSuffix(arguments);
  writeSeparated(out, instancePaths,
                 [&](const std::string& path, std::uint32_t) { writeQuoted(out, path, suffix); });
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
                   [&](const std::string& bram, std::uint32_t) { writeQuoted(out, bram); });
  }
  out.write("] }");
}

void writeKernelsJson(KernelList& kernels, ByteWriter& out) {
  out.write("{  \"Kernels\" : [ ");
  kernels.edit([&](std::vector<KernelRecord>& records) {
    writeSeparated(out, records, [&](KernelRecord& kernel, std::uint32_t) {
      kernel.prepareBreakableConditions();
      kernel.writeJson(out);
    });
  });
  out.write(" ] }");
}

}  // namespace consolidator
