#include "inspect/sql/DatabaseRows.h"

#include "inspect/output/Utf8.h"
#include "inspect/records/BitCoverage.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/SectionItems.h"

#include <optional>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;
using consolidated::File;
using consolidated::HardwareVariable;
using consolidated::Kernel;
using consolidated::List;
using consolidated::Locations;
using consolidated::Text;
using consolidated::Variable;

void insertVariables(std::int64_t kernel, const List<Variable>& variables, Statement& row,
                     Statement& bits) {
  std::uint32_t position = 0;
  for (const Variable& variable : variables) {
    const List<Locations> instances = variable.instanceBits();
    const std::int64_t id =
        row.insert(kernel, position++, variable.name().view(), variable.second().view(),
                   variable.cType().view(), variable.bitWidth(), instances.size());
    std::uint32_t instance = 0;
    for (const Locations& locations : instances) bits.run(id, instance++, locations);
  }
}

}  // namespace

DatabaseRows::DatabaseRows(Database& database)
    : remove_(database, "DELETE FROM file WHERE real_path = ?"),
      file_(database,
            "INSERT INTO file (path, real_path, size, major_version, minor_version) "
            "VALUES (?, ?, ?, ?, ?)"),
      fileEnd_(database,
               "UPDATE file SET project = ?, dwarf_offset = ?, dwarf_size = ?, complete = ?, "
               "lossy_texts = ? WHERE id = ?"),
      section_(database, "INSERT INTO section VALUES (?, ?, ?, ?, ?, ?)"),
      kernel_(database, "INSERT INTO kernel VALUES (NULL, ?, ?, ?, ?, ?, ?)"),
      path_(database, "INSERT INTO instance_path VALUES (?, ?, ?)"),
      argument_(database, "INSERT INTO argument VALUES (NULL, ?, ?, ?, ?, ?, ?, ?)"),
      variable_(database, "INSERT INTO variable VALUES (NULL, ?, ?, ?, ?, ?, ?, ?)"),
      argumentBits_(database,
                    "INSERT INTO instance_bit SELECT ?1, NULL, ?2, bit, first, second "
                    "FROM stored_locations(?3)"),
      variableBits_(database,
                    "INSERT INTO instance_bit SELECT NULL, ?1, ?2, bit, first, second "
                    "FROM stored_locations(?3)"),
      hardware_(database, "INSERT INTO hardware_variable VALUES (NULL, ?, ?, ?, ?, ?, ?, ?)"),
      locations_(database,
                 "INSERT INTO logic_location SELECT ?1, bit, first, second "
                 "FROM stored_locations(?2)"),
      condition_(database, "INSERT INTO breakable_condition VALUES (?, ?, ?, ?, ?, ?, ?)"),
      bram_(database, "INSERT INTO bram VALUES (?, ?, ?)") {}

std::optional<consolidated::Fault> DatabaseRows::add(const FilePlace& place, const File& file) {
  if (!place.realPath.empty()) remove_.run(ExactName{place.realPath});
  const std::uint64_t lossyBefore = lossyTexts();
  const std::int64_t id = addFile(place, file);
  addSections(id, file.sections());
  const auto fault = addKernels(id, file.kernels());
  const auto project = file.project();
  const auto dwarf = file.dwarf();
  const auto name = project ? std::optional(project->view()) : std::nullopt;
  const bool isLossy = name && findIllFormed(*name) != std::string_view::npos;
  fileEnd_.run(name, dwarf ? std::optional(dwarf->offset()) : std::nullopt,
               dwarf ? std::optional(std::uint64_t{dwarf->stored().size()}) : std::nullopt,
               std::int64_t{fault ? 0 : 1}, lossyTexts() - lossyBefore + (isLossy ? 1 : 0), id);
  return fault;
}

std::int64_t DatabaseRows::addFile(const FilePlace& place, const File& file) {
  const auto real =
      place.realPath.empty() ? std::nullopt : std::optional(ExactName{place.realPath});
  return file_.insert(wellFormed(place.path), real, std::uint64_t{file.bytes().size()},
                      file.majorVersion(), file.minorVersion());
}

void DatabaseRows::addSections(std::int64_t file, const consolidated::Sections& sections) {
  for (const consolidated::Section section : sections) {
    section_.run(file, section.index, nameOf(section.kind),
                 static_cast<std::uint32_t>(section.kind), section.offset, section.size);
  }
}

std::optional<consolidated::Fault> DatabaseRows::addKernels(std::int64_t file,
                                                            const consolidated::Kernels& kernels) {
  std::uint32_t position = 0;
  auto kernel = kernels.begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) addKernel(file, position++, *kernel);
  return kernel.fault();
}

void DatabaseRows::addKernel(std::int64_t file, std::uint32_t position, const Kernel& kernel) {
  const std::int64_t id =
      kernel_.insert(file, position, kernel.name().view(), nameOf(kernel.type()),
                     static_cast<std::uint32_t>(kernel.type()), kernel.instanceSuffix());
  addPaths(id, kernel.instancePaths());
  addVariables(id, kernel);
  addHardware(id, kernel.hardwareVariables());
  addConditions(id, kernel.breakableConditions());
  addBrams(id, kernel.brams());
}

void DatabaseRows::addPaths(std::int64_t kernel, const List<Text>& paths) {
  std::uint32_t position = 0;
  for (const Text& path : paths) path_.run(kernel, position++, path.view());
}

void DatabaseRows::addVariables(std::int64_t kernel, const Kernel& record) {
  insertVariables(kernel, record.arguments(), argument_, argumentBits_);
  insertVariables(kernel, record.variables(), variable_, variableBits_);
}

void DatabaseRows::addHardware(std::int64_t kernel, const List<HardwareVariable>& variables) {
  std::uint32_t position = 0;
  for (const HardwareVariable& variable : variables) {
    const Locations locations = variable.logicLocations();
    // What the view of the coverage would have to count again and again.
    const BitCoverage located = coverageOf(locations);
    const std::int64_t id = hardware_.insert(
        kernel, position++, variable.rtlName().view(), wellFormed(variable.registerName()),
        std::uint64_t{locations.size()}, located.bits, located.highest);
    locations_.run(id, locations);
  }
}

void DatabaseRows::addConditions(std::int64_t kernel, const List<BreakableCondition>& conditions) {
  std::uint32_t position = 0;
  for (const BreakableCondition& condition : conditions) {
    const bool hasPlace = condition.kind() == ConditionKind::SourceLine;
    condition_.run(kernel, position++, nameOf(condition.kind()),
                   static_cast<std::uint32_t>(condition.kind()), condition.condition().view(),
                   hasPlace ? std::optional(condition.file().view()) : std::nullopt,
                   hasPlace ? std::optional(condition.line()) : std::nullopt);
  }
}

void DatabaseRows::addBrams(std::int64_t kernel, const List<Text>& brams) {
  std::uint32_t position = 0;
  for (const Text& bram : brams) bram_.run(kernel, position++, bram.view());
}

std::uint64_t DatabaseRows::lossyTexts() const {
  std::uint64_t sum = 0;
  for (const Statement* const statement :
       {&kernel_, &path_, &argument_, &variable_, &hardware_, &condition_, &bram_}) {
    sum += statement->lossyTexts();
  }
  return sum;
}

}  // namespace consolidator::inspect
