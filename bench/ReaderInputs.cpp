#include "ReaderInputs.h"

#include "Inputs.h"
#include "bytes/ByteWriter.h"
#include "consolidated/StdioFile.h"

#include <string_view>

namespace consolidator {

namespace {

// Writes a start, entries until `isEnough(entries, bytes)` holds for what was written, and an end.
template <typename MakeEntry, typename Predicate>
void writeEntries(const std::string& path, std::string_view start, MakeEntry makeEntry,
                  Predicate isEnough, std::string_view end) {
  const StdioFile file = openStdioFile(path, "w");
  ByteWriter out(file.get());
  Random random(inputSeed);
  out.write(start);
  std::uint64_t bytes = start.size();
  for (std::uint32_t number = 0; !isEnough(number, bytes); ++number) {
    const std::string entry = makeEntry(random, number);
    out.write(entry);
    bytes += entry.size();
  }
  out.write(end);
  out.flush();
}

auto untilSize(std::uint64_t size) {
  return [size](std::uint32_t /*entries*/, std::uint64_t bytes) { return bytes >= size; };
}

auto untilCount(std::uint32_t count) {
  return [count](std::uint32_t entries, std::uint64_t /*bytes*/) { return entries == count; };
}

std::string makeLocal(Random& random, const HlsShape& shape, std::uint32_t number) {
  const std::string name = "partial_sum_" + std::to_string(number % shape.localNames);
  const std::string range = "[" + std::to_string(8 * (1 + below(random, 8)) - 1) + ":0]";
  std::string text = "local " + name + "\n";
  for (std::uint32_t position = 1 + below(random, 2); position > 0; --position) {
    text += "at ../src/filter_" + std::to_string(below(random, 8)) +
            ".cpp:" + std::to_string(1 + below(random, shape.sourceLines)) + "\n";
  }
  if (below(random, 2) == 0) text += "reg: " + name + "_next" + range + "\n";
  return text + "last " + name + "_reg" + range + " filter\n";
}

// `number` makes all that must differ from one function to the next different.
std::string makeHlsFunction(Random& random, const HlsShape& shape, std::uint32_t number) {
  const std::string name = "filter_loop_" + std::to_string(number);
  std::string text = "Begin Function " + name +
                     "\nRTL filter fsm (state == " + std::to_string(number) +
                     " && ready == 1'b1)\n";
  for (std::uint32_t i = 0; i < shape.localsPerFunction; ++i) {
    text += makeLocal(random, shape, number * shape.localsPerFunction + i);
  }
  return text + "End Function " + name + "\n";
}

auto hlsFunctions(const HlsShape& shape) {
  return [shape](Random& random, std::uint32_t number) {
    return makeHlsFunction(random, shape, number);
  };
}

auto auxiliaryArguments(std::uint32_t names) {
  return [names](Random& random, std::uint32_t number) {
    return "    <ak:arg ak:originalName=\"argument_" + std::to_string(number % names) +
           "\" ak:busTypeRef=\"acc_fifo\" ak:direction=\"in\" ak:offset=\"0x" +
           std::to_string(8 * number) + "\" ak:size=\"" + std::to_string(1 + below(random, 64)) +
           "\" ak:hostOffset=\"0x0\" ak:hostSize=\"0x8\" ak:id=\"" + std::to_string(number) +
           "\" />\n";
  };
}

constexpr std::string_view auxiliaryStart = "<ak:acceleratorMap ak:functionName=\"filter\" >\n";
constexpr std::string_view auxiliaryEnd = "</ak:acceleratorMap>\n";

auto kernelArguments() {
  return [](Random& random, std::uint32_t number) {
    const std::string name = "argument_" + std::to_string(number);
    return "          <arg name=\"" + name + "\" addressQualifier=\"" +
           std::to_string(below(random, 5)) + "\" id=\"" + std::to_string(number) +
           "\" port=\"M_AXI_GMEM" + std::to_string(below(random, 32)) +
           "\" size=\"0x8\" offset=\"0x" + std::to_string(16 + 8 * number) +
           "\" hostOffset=\"0x0\" hostSize=\"0x8\" type=\"unsigned int*\" memSize=\"0x" +
           std::to_string(below(random, 4096)) + "\" origName=\"" + name +
           "\" origUse=\"variable\"/>\n";
  };
}

constexpr std::string_view kernelXmlStart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<project name=\"filter\">\n"
    "  <platform vendor=\"vendor\" boardid=\"board\" name=\"platform\" featureRomTime=\"0\">\n"
    "    <version major=\"1\" minor=\"0\"/>\n"
    "    <device name=\"device\" fpgaDevice=\"part\">\n"
    "      <core name=\"core\" target=\"hw\" type=\"clc_region\" clockFreq=\"0MHz\" "
    "numComputeUnits=\"1\">\n"
    "        <kernel name=\"filter\" language=\"c\" hwControlProtocol=\"ap_ctrl_hs\">\n";

constexpr std::string_view kernelXmlEnd =
    "          <instance name=\"filter_1\"/>\n"
    "        </kernel>\n"
    "      </core>\n"
    "    </device>\n"
    "  </platform>\n"
    "</project>\n";

std::string ramInstance(std::uint32_t kernel) {
  return "/design/dynamic_region/kernel_" + std::to_string(kernel) + "_1/inst";
}

std::string makeRamRow(Random& random, std::uint32_t kernelCount) {
  std::string name = "top";
  if (below(random, 2) == 0) {
    name += ramInstance(below(random, kernelCount)) + "/buffer_" +
            std::to_string(below(random, 1000)) + "_U/ram_reg_bram_";
  } else {
    name += "/design/static_region/interconnect_" + std::to_string(below(random, 200)) +
            "/couplers/fifo_" + std::to_string(below(random, 1000)) + "/mem_reg_";
  }
  return "| " + name + std::to_string(below(random, 64)) + " | " +
         (below(random, 5) == 0 ? "URAM288" : "RAMB36E2") + " | " +
         std::to_string(below(random, 10'000)) + " | 100.00 |  0.00 |\n";
}

}  // namespace

void writeAuxiliaryFileOfSize(const std::string& path, std::uint32_t names, std::uint64_t size) {
  writeEntries(path, auxiliaryStart, auxiliaryArguments(names), untilSize(size), auxiliaryEnd);
}

void writeAuxiliaryFile(const std::string& path, std::uint32_t argumentCount) {
  writeEntries(path, auxiliaryStart, auxiliaryArguments(argumentCount), untilCount(argumentCount),
               auxiliaryEnd);
}

void writeKernelXmlOfSize(const std::string& path, std::uint64_t size) {
  writeEntries(path, kernelXmlStart, kernelArguments(), untilSize(size), kernelXmlEnd);
}

void writeKernelXml(const std::string& path, std::uint32_t argumentCount) {
  writeEntries(path, kernelXmlStart, kernelArguments(), untilCount(argumentCount), kernelXmlEnd);
}

void writeHlsFileOfSize(const std::string& path, const HlsShape& shape, std::uint64_t size) {
  writeEntries(path, "", hlsFunctions(shape), untilSize(size), "");
}

void writeHlsFile(const std::string& path, const HlsShape& shape, std::uint32_t functionCount) {
  writeEntries(path, "", hlsFunctions(shape), untilCount(functionCount), "");
}

void writeRamHierarchyFile(const std::string& path, std::uint32_t kernelCount) {
  const auto makeKernel = [](Random& /*random*/, std::uint32_t number) {
    return "kernel_" + std::to_string(number) +
           ":\n  type: hls\n  instance path: " + ramInstance(number) + "\n";
  };
  writeEntries(path, "version: 1.0\n", makeKernel, untilCount(kernelCount), "");
}

void writeRamReportOfSize(const std::string& path, std::uint32_t kernelCount, std::uint64_t size) {
  constexpr std::string_view start =
      "8. Block Ram / URAM Memory Power - Instantiated\n"
      "3. Memory Utilization - Inferred\n"
      "--------------------------------\n";
  const auto makeRow = [&](Random& random, std::uint32_t /*number*/) {
    return makeRamRow(random, kernelCount);
  };
  writeEntries(path, start, makeRow, untilSize(size), "4. Memory Performance - Inferred\n");
}

}  // namespace consolidator
