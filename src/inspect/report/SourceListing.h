#pragma once

#include "consolidated/File.h"
#include "consolidated/Kernel.h"
#include "inspect/lines/LineTables.h"
#include "inspect/report/HtmlWriter.h"
#include "inspect/report/SourceFolder.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace consolidator::inspect {

/// Shows the breakable conditions of kernels beside the lines of their source: where the stored
/// DWARF has code for the line, and its file lies below a folder that the user names. A file may
/// name any path, so without a folder nothing is shown.
class SourceListing {
 public:
  /// The most lines of source that a page shows.
  static constexpr std::uint64_t mostLines = 20000;

  /// Reads the line tables of a file. The empty path is no folder.
  SourceListing(const consolidated::File& file, const std::string& folder);

  /// Why line tables are missing that were asked for; empty where none is. May hold anything.
  const std::string& problem() const { return tables_.problem(); }

  /// Writes the lines of these conditions with some around each, and nothing where there are none.
  void write(HtmlWriter& html,
             const consolidated::List<consolidated::BreakableCondition>& conditions);

 private:
  struct Marked {
    const SourceText* lines = nullptr;
    std::map<std::uint32_t, std::vector<consolidated::Text>> conditions;  // by the line's number
  };

  void collect(const consolidated::BreakableCondition& condition,
               std::map<std::string, Marked>& files);
  void writeFile(HtmlWriter& html, const std::string& path, const Marked& file);
  void writeLine(HtmlWriter& html, const Marked& file, std::uint32_t line);

  LineTables tables_;
  SourceFolder folder_;
  std::uint64_t linesLeft_ = mostLines;
};

}  // namespace consolidator::inspect
