#include "inspect/sql/Database.h"

#include "inspect/sql/LocationFeed.h"
#include "inspect/sql/Statement.h"

#include <sqlite3.h>

#include <cerrno>
#include <system_error>

namespace consolidator::inspect {

namespace {

// How long to wait for others who use the same database.
constexpr int patience = 10'000;  // milliseconds

// Rows are added at the ends of tables, so few pages need to be at hand. Sorts take memory for 250
// pages, or as much as the pages at hand if that is more: they take least time where it fits into
// the caches of one processor, so pages are large, since most of a database are long runs of short
// rows, but not larger. A rollback needs what pages held that were there before: the ends of the
// tables.
constexpr const char* soleSettings =
    "PRAGMA page_size = 8192;"
    "PRAGMA cache_size = -1024;"
    "PRAGMA journal_mode = MEMORY;"
    "PRAGMA synchronous = OFF;"
    "PRAGMA locking_mode = EXCLUSIVE;"
    "PRAGMA foreign_keys = OFF;";

constexpr const char* sharedSettings =
    "PRAGMA cache_size = -16384;"
    "PRAGMA foreign_keys = ON;";

bool isOfSystem(int result) {
  const int primary = result & 0xFF;
  return primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN;
}

// The system's error number, which SQLite keeps in one place or the other; 0 where there is none.
int systemErrorOf(sqlite3* handle) {
  int number = sqlite3_system_errno(handle);
  if (number == 0) sqlite3_file_control(handle, "main", SQLITE_FCNTL_LAST_ERRNO, &number);
  return number;
}

std::string messageOf(sqlite3* handle, int result) {
  if (handle == nullptr) return sqlite3_errstr(result);
  if ((result & 0xFF) == SQLITE_FULL) return std::generic_category().message(ENOSPC);
  const int systemError = isOfSystem(result) ? systemErrorOf(handle) : 0;
  return systemError == 0 ? sqlite3_errmsg(handle) : std::generic_category().message(systemError);
}

}  // namespace

Database::Database(const std::string& path, Access access) {
  sqlite3* opened = nullptr;
  constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;  // for one thread
  // A name may begin like a URI, or be one of those that have a meaning.
  const std::string name = path.starts_with('/') ? path : "./" + path;
  const int result = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
  handle_.reset(opened);
  if (!note(result)) return;
  sqlite3_extended_result_codes(opened, 1);
  note(sqlite3_busy_timeout(opened, patience));
  note(addLocationFeed(opened));
  execute(access == Access::Sole ? soleSettings : sharedSettings);
}

void Database::Close::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

void Database::execute(const char* statements) {
  if (!hasFailed()) note(sqlite3_exec(handle(), statements, nullptr, nullptr, nullptr));
}

std::int64_t Database::number(const char* statement) {
  Statement prepared(*this, statement);
  return prepared.number();
}

bool Database::close() {
  if (!hasFailed()) note(sqlite3_close(handle_.get()));
  if (hasFailed()) return false;
  static_cast<void>(handle_.release());
  return true;
}

bool Database::note(int result) {
  const bool isDone = result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE;
  if (!isDone && !hasFailed()) error_ = messageOf(handle(), result);
  return isDone;
}

}  // namespace consolidator::inspect
