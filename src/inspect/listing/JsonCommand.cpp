#include "inspect/listing/JsonCommand.h"

#include "inspect/output/JsonDocument.h"
#include "inspect/output/Utf8.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/SectionItems.h"

#include <cstdint>
#include <optional>

namespace consolidator::inspect {

namespace {

using consolidated::File;

void writeProject(JsonDocument& document, const File& file) {
  document.key("project");
  const auto project = file.project();
  project ? document.value(project->view()) : document.null();
}

void writeDwarf(JsonDocument& document, const File& file) {
  document.key("dwarf");
  const auto dwarf = file.dwarf();
  if (!dwarf) {
    document.null();
    return;
  }
  document.beginObject();
  document.member("offset", dwarf->offset());
  document.member("size", std::uint64_t{dwarf->stored().size()});
  document.endObject();
}

// Returns the fault that ends the reading.
std::optional<consolidated::Fault> writeKernels(JsonDocument& document, const File& file) {
  document.key("kernels").beginArray();
  auto kernel = file.kernels().begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) writeItem(document, *kernel);
  document.endArray();
  return kernel.fault();
}

}  // namespace

void JsonCommand::declare(Options& options) {
  options.flag("--pretty", isPretty_, "One value per line, for people");
  options.input(path_);
}

Status JsonCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input) return Status::Unasked;
  const File& file = input->file();
  JsonDocument document(console.out, isPretty_ ? JsonLayout::Pretty : JsonLayout::Compact);
  document.beginObject();
  document.member("format", documentFormat());
  document.member("path", wellFormed(path_));  // no text of the file
  document.member("size", std::uint64_t{file.bytes().size()});
  document.key("version").beginArray();
  document.value(file.majorVersion()).value(file.minorVersion()).endArray();
  document.key("sections").beginArray();
  for (const consolidated::Section section : file.sections()) writeItem(document, section);
  document.endArray();
  writeProject(document, file);
  writeDwarf(document, file);
  const auto fault = writeKernels(document, file);
  document.member("complete", !fault && !input->wasCut());
  document.member("lossy_texts", document.lossyTexts());
  document.endObject().end();
  sayIncomplete(console, *input, fault);
  return statusOf(console, *input, !fault);
}

}  // namespace consolidator::inspect
