#pragma once

#include "consolidated/File.h"
#include "inspect/sql/Database.h"
#include "inspect/sql/Statement.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Where a file is, for a database that may hold many.
struct FilePlace {
  std::string path;      ///< as it was given
  std::string realPath;  ///< by which it is known again; empty if it has none
};

/// Puts files into a database that has the tables of the schema. Errors are the database's.
class DatabaseRows {
 public:
  explicit DatabaseRows(Database& database);

  /// Inserts all that is in a file, after it has removed what was known of a file of that real
  /// path. Returns the fault that ended the reading, if any. Memory does not grow with the file.
  std::optional<consolidated::Fault> add(const FilePlace& place, const consolidated::File& file);

 private:
  std::int64_t addFile(const FilePlace& place, const consolidated::File& file);
  void addSections(std::int64_t file, const consolidated::Sections& sections);
  std::optional<consolidated::Fault> addKernels(std::int64_t file,
                                                const consolidated::Kernels& kernels);
  void addKernel(std::int64_t file, std::uint32_t position, const consolidated::Kernel& kernel);
  void addPaths(std::int64_t kernel, const consolidated::List<consolidated::Text>& paths);
  void addVariables(std::int64_t kernel, const consolidated::Kernel& record);
  void addHardware(std::int64_t kernel,
                   const consolidated::List<consolidated::HardwareVariable>& variables);
  void addConditions(std::int64_t kernel,
                     const consolidated::List<consolidated::BreakableCondition>& conditions);
  void addBrams(std::int64_t kernel, const consolidated::List<consolidated::Text>& brams);
  std::uint64_t lossyTexts() const;

  Statement remove_;
  Statement file_;
  Statement fileEnd_;
  Statement section_;
  Statement kernel_;
  Statement path_;
  Statement argument_;
  Statement variable_;
  Statement argumentBits_;
  Statement variableBits_;
  Statement hardware_;
  Statement locations_;
  Statement condition_;
  Statement bram_;
};

}  // namespace consolidator::inspect
