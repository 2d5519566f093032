#include "inspect/sql/Statement.h"

#include "inspect/output/Utf8.h"
#include "inspect/sql/LocationFeed.h"

#include <sqlite3.h>

#include <limits>
#include <string>

namespace consolidator::inspect {

namespace {

constexpr auto largestInteger =
    static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

// A null pointer would stand for NULL.
const char* dataOf(std::string_view text) { return text.empty() ? "" : text.data(); }

// NOLINTNEXTLINE(*-int-to-ptr): how SQLite spells it
sqlite3_destructor_type copied() { return SQLITE_TRANSIENT; }

}  // namespace

Statement::Statement(Database& database, const char* text) : database_(&database) {
  if (database.hasFailed()) return;
  sqlite3_stmt* statement = nullptr;
  database.note(sqlite3_prepare_v3(database.handle(), text, -1, SQLITE_PREPARE_PERSISTENT,
                                   &statement, nullptr));
  statement_.reset(statement);
}

void Statement::Finish::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

void Statement::bind(int index, std::int64_t value) {
  database_->note(sqlite3_bind_int64(statement_.get(), index, value));
}

void Statement::bind(int index, std::uint64_t value) {
  if (value <= largestInteger) return bind(index, static_cast<std::int64_t>(value));
  const std::string digits = std::to_string(value);
  database_->note(sqlite3_bind_text64(statement_.get(), index, digits.data(), digits.size(),
                                      copied(), SQLITE_UTF8));
}

void Statement::bind(int index, std::string_view text) {
  if (findIllFormed(text) == std::string_view::npos) {
    database_->note(sqlite3_bind_text64(statement_.get(), index, dataOf(text), text.size(),
                                        SQLITE_STATIC, SQLITE_UTF8));
    return;
  }
  ++lossyTexts_;
  const std::string mended = wellFormed(text);
  database_->note(sqlite3_bind_text64(statement_.get(), index, mended.data(), mended.size(),
                                      copied(), SQLITE_UTF8));
}

void Statement::bind(int index, ExactName name) {
  const std::string_view bytes = name.bytes;
  if (findIllFormed(bytes) == std::string_view::npos) return bind(index, bytes);
  database_->note(
      sqlite3_bind_blob64(statement_.get(), index, dataOf(bytes), bytes.size(), SQLITE_STATIC));
}

void Statement::bind(int index, const consolidated::Locations& locations) {
  database_->note(bindLocations(statement_.get(), index, locations));
}

void Statement::bind(int index, std::nullopt_t /*nothing*/) {
  database_->note(sqlite3_bind_null(statement_.get(), index));
}

void Statement::step() {
  if (database_->hasFailed()) return;
  database_->note(sqlite3_step(statement_.get()));
  sqlite3_reset(statement_.get());
}

std::int64_t Statement::lastRow() const {
  return database_->hasFailed() ? 0 : sqlite3_last_insert_rowid(database_->handle());
}

std::int64_t Statement::number() {
  if (database_->hasFailed()) return 0;
  const int result = sqlite3_step(statement_.get());
  database_->note(result);
  const std::int64_t value = result == SQLITE_ROW ? sqlite3_column_int64(statement_.get(), 0) : 0;
  sqlite3_reset(statement_.get());
  return value;
}

}  // namespace consolidator::inspect
