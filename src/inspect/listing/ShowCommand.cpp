#include "inspect/listing/ShowCommand.h"

#include "inspect/listing/KernelText.h"
#include "inspect/output/Paint.h"
#include "inspect/output/PlainText.h"
#include "inspect/records/KernelCounts.h"
#include "inspect/records/SectionItems.h"

#include <fmt/format.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::Fault;
using consolidated::File;
using consolidated::Kernel;
using consolidated::Section;

void writeHeading(Console& console, std::string_view text) {
  console.out.write(fmt::format("\n{}\n", painted(Paint::Heading, text, console.hasColour)));
}

void writeHeader(Console& console, const ConsolidatedInput& input) {
  const File& file = input.file();
  console.out.write(fmt::format("{}\n  version: {}.{}\n  size: {} bytes\n",
                                painted(Paint::Heading, plain(input.path()), console.hasColour),
                                file.majorVersion(), file.minorVersion(), file.bytes().size()));
}

void writeSections(Console& console, const File& file) {
  const std::uint32_t present = file.sections().size();
  std::string title = fmt::format("Sections: {}", present);
  if (present != file.claimedSections()) {
    title += fmt::format(" of the {} that the header claims", file.claimedSections());
  }
  writeHeading(console, title);
  if (present > 0) console.out.write("      offset        size   share  kind\n");
  for (const Section section : file.sections()) {
    const double share = 100.0 * section.size / static_cast<double>(file.bytes().size());
    console.out.write(fmt::format("{:>#12x}  {:>10}  {:>5.1f}%  {} ({})\n", section.offset,
                                  section.size, share, nameOf(section.kind),
                                  static_cast<std::uint32_t>(section.kind)));
  }
}

void writeProjectAndDwarf(Console& console, const File& file) {
  const auto project = file.project();
  console.out.write(project ? fmt::format("\nProject: \"{}\"\n", plain(project->view()))
                            : "\nProject: none\n");
  const auto dwarf = file.dwarf();
  console.out.write(
      dwarf ? fmt::format("DWARF: {} bytes at {:#x}\n", dwarf->stored().size(), dwarf->offset())
            : "DWARF: none\n");
}

void writeCounts(Console& console, const Kernel& kernel) {
  const KernelCounts counts = KernelCounts::of(kernel);
  console.out.write(fmt::format("{:>8} {:>10} {:>10} {:>10} {:>10} {:>10} {:>11} {:>6}  {}\n",
                                nameOf(kernel.type()), counts.instancePaths, counts.arguments,
                                counts.variables, counts.hardwareVariables, counts.logicLocations,
                                counts.breakableConditions, counts.brams,
                                plain(kernel.name().view())));
}

// Returns the fault that ends the reading.
std::optional<Fault> writeKernels(Console& console, const File& file) {
  writeHeading(console, "Kernels");
  auto kernel = file.kernels().begin();
  std::uint64_t count = 0;
  if (kernel != consolidated::KernelIterator()) {
    console.out.write(fmt::format("{:>8} {:>10} {:>10} {:>10} {:>10} {:>10} {:>11} {:>6}  {}\n",
                                  "type", "instances", "arguments", "variables", "registers",
                                  "locations", "conditions", "brams", "name"));
  }
  for (; kernel != consolidated::KernelIterator(); ++kernel, ++count) writeCounts(console, *kernel);
  console.out.write(fmt::format("  {} in all\n", count));
  return kernel.fault();
}

void writeCompleteness(Console& console, const std::optional<Fault>& fault) {
  if (!fault) {
    console.out.write(
        fmt::format("\nComplete: {}\n", painted(Paint::Good, "yes", console.hasColour)));
    return;
  }
  console.out.write(fmt::format("\nComplete: {}; {} (at {:#x})\n",
                                painted(Paint::Bad, "no", console.hasColour), fault->sentence(),
                                fault->offset));
}

}  // namespace

void ShowCommand::declare(Options& options) {
  options.option("--kernel", kernels_, "Show a kernel of this name in full; may be repeated")
      .placeholder("NAME");
  options.input(path_);
}

Status ShowCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input) return Status::Unasked;
  return kernels_.empty() ? showFile(console, *input) : showKernels(console, *input);
}

Status ShowCommand::showFile(Console& console, const ConsolidatedInput& input) {
  const File& file = input.file();
  writeHeader(console, input);
  writeSections(console, file);
  writeProjectAndDwarf(console, file);
  const std::optional<Fault> fault = writeKernels(console, file);
  writeCompleteness(console, fault);
  return statusOf(console, input, !fault);
}

Status ShowCommand::showKernels(Console& console, const ConsolidatedInput& input) const {
  std::map<std::string, bool, std::less<>> isFound;
  for (const std::string& name : kernels_) isFound.emplace(name, false);
  std::string_view separator;
  auto kernel = input.file().kernels().begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) {
    const auto wanted = isFound.find(kernel->name().view());
    if (wanted == isFound.end()) continue;
    wanted->second = true;
    console.out.write(separator);
    separator = "\n";
    writeKernelInFull(console, *kernel);
  }
  bool foundAll = true;
  for (const auto& [name, found] : isFound) {
    if (!found) {
      console.messages.say(
          fmt::format(R"({}: there is no kernel "{}")", plain(path_), plain(name)));
    }
    foundAll = foundAll && found;
  }
  sayIncomplete(console, input, kernel.fault());
  return statusOf(console, input, foundAll && !kernel.fault());
}

}  // namespace consolidator::inspect
