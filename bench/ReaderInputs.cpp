#include "ReaderInputs.h"

#include "Inputs.h"
#include "consolidated/StdioFile.h"
#include "model/ByteWriter.h"

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

}  // namespace consolidator
