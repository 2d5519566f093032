#include "inspect/listing/ExtractCommand.h"

#include "inspect/command/CommandOutput.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::SectionKind;

struct Extract {
  std::string_view word;
  std::string_view name;
  SectionKind kind;
};

constexpr std::array extracts = {
    Extract{"project", "project name", SectionKind::ProjectName},
    Extract{"dwarf", "DWARF section", SectionKind::Dwarf},
    Extract{"json", "JSON section", SectionKind::Json},
    Extract{"records", "section of kernel records", SectionKind::KernelRecords},
};

const Extract& extractOf(std::string_view word) {
  return *std::find_if(extracts.begin(), extracts.end(),
                       [&](const Extract& extract) { return extract.word == word; });
}

// The project is what the tool reads; of the others the tool takes the first, as in its dumps.
std::optional<std::string_view> bytesOf(const File& file, const Extract& extract) {
  if (extract.kind == SectionKind::ProjectName) {
    const auto project = file.project();
    return project ? std::optional(project->view()) : std::nullopt;
  }
  const auto section = file.firstOf(extract.kind);
  return section ? std::optional(section->stored()) : std::nullopt;
}

std::string reasonOfAbsence(const File& file, const Extract& extract) {
  for (const consolidated::Section section : file.sections()) {
    if (section.kind == extract.kind) return "cannot be read: not all of its bytes are there";
  }
  return "is not there";
}

}  // namespace

void ExtractCommand::declare(Options& options) {
  options.input(path_);
  options.option("SECTION", section_, "Which section")
      .required()
      .placeholder("project|dwarf|json|records")
      .among({"project", "dwarf", "json", "records"});
  options
      .option("-o,--output", output_,
              "Where to write; a file is replaced as a whole or not at all, \"-\" is standard "
              "output")
      .required()
      .placeholder("OUT");
}

Status ExtractCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input || isInput(console, output_, path_)) return Status::Unasked;
  const Extract& extract = extractOf(section_);
  const auto bytes = bytesOf(input->file(), extract);
  if (!bytes) {
    console.messages.say(fmt::format("{}: the {} {}", plain(path_), extract.name,
                                     reasonOfAbsence(input->file(), extract)));
    return statusOf(console, *input, false);
  }
  return write(console, *input, *bytes);
}

Status ExtractCommand::write(Console& console, const ConsolidatedInput& input,
                             std::string_view bytes) const {
  CommandOutput output(console, output_);
  output.sink().write(bytes);
  const auto fault = input.file().fault();
  sayIncomplete(console, input, fault);
  return output.finish(statusOf(console, input, !fault), input);
}

}  // namespace consolidator::inspect
