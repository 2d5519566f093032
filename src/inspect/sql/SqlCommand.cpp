#include "inspect/sql/SqlCommand.h"

#include "inspect/files/TemporaryFile.h"
#include "inspect/output/PlainText.h"
#include "inspect/sql/DatabaseSchema.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view standardOutput = "-";

// By which a file is known again, whatever name it is given next time.
std::string realPathOf(const std::string& path) {
  std::error_code error;
  return path == "-" ? std::string() : fs::canonical(path, error).string();
}

std::string systemReason(int error) { return std::generic_category().message(error); }

}  // namespace

void SqlCommand::declare(Options& options) {
  options
      .option("-o,--output", output_,
              "The database; a file is replaced as a whole or not at all, \"-\" is standard "
              "output")
      .required()
      .placeholder("OUT");
  options.flag("--append", appends_,
               "Add to a database that is there, and replace in it what it has of the same files");
  options.input(paths_);
}

Status SqlCommand::run(Console& console) {
  const auto isOutput = [&](const std::string& path) { return isInput(console, output_, path); };
  if (std::ranges::any_of(paths_, isOutput)) return Status::Unasked;
  std::error_code error;
  return appends_ && output_ != "-" && fs::exists(output_, error) ? append(console)
                                                                  : makeNew(console);
}

// SQLite needs a file to work on: what is no regular one, such as a pipe, gets a copy.
Status SqlCommand::makeNew(Console& console) {
  std::optional<OutputFile> output;
  if (output_ != standardOutput) output.emplace(output_);
  if (output && output->error() != 0) return refuse(console, systemReason(output->error()));
  Status status = Status::Holds;
  if (output && !output->besidePath().empty()) {
    if (!fillNew(console, output->besidePath(), status)) return status;
  } else {
    TemporaryFile temporary;
    if (temporary.error() == 0 && !fillNew(console, temporary.path(), status)) return status;
    temporary.copyTo(output ? output->sink() : console.out);
    if (temporary.error() != 0) return refuse(console, systemReason(temporary.error()));
  }
  return worse(status, finish(console, output));
}

// Returns whether there is a whole database, with one file at least.
bool SqlCommand::fillNew(Console& console, const std::string& place, Status& status) {
  Database database(place, Database::Access::Sole);
  createTables(database);
  status = addFiles(console, database);
  createIndices(database);
  if (database.close()) return added_ > 0;
  status = refuse(console, database.error());
  return false;
}

Status SqlCommand::finish(Console& console, std::optional<OutputFile>& output) const {
  if (!output || output->finish()) return Status::Holds;
  if (output->error() == EPIPE) return Status::Unasked;
  return refuse(console, systemReason(output->error()));
}

Status SqlCommand::append(Console& console) {
  Database database(output_, Database::Access::Shared);
  if (!hasSchema(database)) {
    return refuse(console, database.hasFailed() ? database.error()
                                                : "no database that this version can add to");
  }
  const Status status = addFiles(console, database);
  return database.close() ? status : refuse(console, database.error());
}

Status SqlCommand::addFiles(Console& console, Database& database) {
  DatabaseRows rows(database);
  Status status = Status::Holds;
  for (const std::string& path : paths_) {
    if (!database.hasFailed()) status = worse(status, addFile(console, database, rows, path));
  }
  return status;
}

// A file that is cut meanwhile is left out, so that it replaces nothing.
Status SqlCommand::addFile(Console& console, Database& database, DatabaseRows& rows,
                           const std::string& path) {
  const auto input = openOnlyFile(console, path);
  if (!input) return Status::Unasked;
  const std::string realPath = realPathOf(path);
  if (!realPath.empty() && !realPaths_.insert(realPath).second) return Status::Holds;
  database.execute("BEGIN IMMEDIATE");
  const auto fault = rows.add({path, realPath}, input->file());
  sayIncomplete(console, *input, fault);
  const Status status = statusOf(console, *input, !fault);
  database.execute(input->wasCut() ? "ROLLBACK" : "COMMIT");
  if (!input->wasCut() && !database.hasFailed()) ++added_;
  return status;
}

Status SqlCommand::refuse(Console& console, std::string_view reason) const {
  console.messages.say(fmt::format("{}: {}", plain(output_), reason));
  return Status::Unasked;
}

}  // namespace consolidator::inspect
