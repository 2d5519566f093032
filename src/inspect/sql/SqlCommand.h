#pragma once

#include "inspect/command/Command.h"
#include "inspect/files/OutputFile.h"
#include "inspect/sql/Database.h"
#include "inspect/sql/DatabaseRows.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Writes all that is in files into one SQLite database.
class SqlCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

 private:
  Status makeNew(Console& console);
  bool fillNew(Console& console, const std::string& place, Status& status);
  Status finish(Console& console, std::optional<OutputFile>& output) const;
  Status append(Console& console);
  Status addFiles(Console& console, Database& database);
  Status addFile(Console& console, Database& database, DatabaseRows& rows, const std::string& path);
  Status refuse(Console& console, std::string_view reason) const;

  std::vector<std::string> paths_;
  std::string output_;
  bool appends_ = false;
  std::set<std::string> realPaths_;  // of the files that are in
  std::size_t added_ = 0;
};

}  // namespace consolidator::inspect
