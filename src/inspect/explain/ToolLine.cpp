#include "inspect/explain/ToolLine.h"

#include "inspect/explain/CapturedStream.h"

namespace consolidator::inspect {

namespace {

std::vector<const char*> pointersTo(const std::vector<std::string>& words) {
  std::vector<const char*> pointers{"consolidator"};
  for (const std::string& word : words) pointers.push_back(word.c_str());
  return pointers;
}

// What a run prints about that, it prints again.
bool printsUsage(const ConsolidatorOptions& options) {
  const CapturedStream discarded(std::cout);
  return options.help() || !options.validate();
}

}  // namespace

ToolLine::ToolLine(const std::vector<std::string>& words) {
  const std::vector<const char*> pointers = pointersTo(words);
  const CapturedStream out(std::cout);
  if (const auto error = options_.tryParse(static_cast<int>(pointers.size()), pointers.data())) {
    isParsed_ = false;
    printed_ = *error + "\n";
  } else {
    isUsage_ = printsUsage(options_);
    printed_ = out.text();
  }
}

std::vector<NamedInput> ToolLine::inputs() const {
  std::vector<NamedInput> inputs;
  const auto add = [&](InputKind kind, const std::vector<std::string>& paths) {
    for (const std::string& path : paths) inputs.push_back({kind, path});
  };
  if (!options_.dwarfPath().empty()) add(InputKind::Dwarf, {options_.dwarfPath()});
  add(InputKind::Hierarchy, options_.hierarchyFiles());
  add(InputKind::KernelXml, options_.kernelXmlFiles());
  add(InputKind::Hls, options_.hlsFiles());
  add(InputKind::Auxiliary, options_.auxiliaryFiles());
  add(InputKind::LogicLocations, options_.logicLocationFiles());
  add(InputKind::RamReport, options_.ramReportFiles());
  return inputs;
}

const std::string& ToolLine::dumpPath() const {
  return options_.dumpDwarfPath().empty() ? options_.dumpJsonPath() : options_.dumpDwarfPath();
}

}  // namespace consolidator::inspect
