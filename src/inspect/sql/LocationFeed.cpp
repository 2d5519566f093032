#include "inspect/sql/LocationFeed.h"

#include <sqlite3.h>

#include <cstddef>
#include <memory>
#include <new>

namespace consolidator::inspect {

namespace {

using consolidated::Locations;

constexpr const char* pointerType = "locations";

enum FeedColumn { BitColumn, FirstColumn, SecondColumn, ListColumn };

struct FeedCursor {
  sqlite3_vtab_cursor base;  // first, by which SQLite knows it
  const Locations* list;
  std::size_t bit;
};

FeedCursor& feedCursor(sqlite3_vtab_cursor* cursor) {
  return *reinterpret_cast<FeedCursor*>(cursor);
}

int connectFeed(sqlite3* database, void* /*data*/, int /*count*/, const char* const* /*words*/,
                sqlite3_vtab** table, char** /*error*/) {
  *table = new (std::nothrow) sqlite3_vtab();
  if (*table == nullptr) return SQLITE_NOMEM;
  return sqlite3_declare_vtab(database, "CREATE TABLE feed(bit, first, second, list HIDDEN)");
}

int disconnectFeed(sqlite3_vtab* table) {
  std::unique_ptr<sqlite3_vtab>(table).reset();
  return SQLITE_OK;
}

int planFeed(sqlite3_vtab* /*table*/, sqlite3_index_info* plan) {
  for (int i = 0; i < plan->nConstraint; ++i) {
    if (plan->aConstraint[i].iColumn != ListColumn || plan->aConstraint[i].usable == 0) continue;
    plan->aConstraintUsage[i].argvIndex = 1;
    plan->aConstraintUsage[i].omit = 1;
    return SQLITE_OK;
  }
  return SQLITE_CONSTRAINT;  // without a list there is nothing to yield
}

int openFeed(sqlite3_vtab* /*table*/, sqlite3_vtab_cursor** cursor) {
  auto* const feed = new (std::nothrow) FeedCursor();
  if (feed == nullptr) return SQLITE_NOMEM;
  *cursor = &feed->base;
  return SQLITE_OK;
}

int closeFeed(sqlite3_vtab_cursor* cursor) {
  std::unique_ptr<FeedCursor>(&feedCursor(cursor)).reset();
  return SQLITE_OK;
}

int startFeed(sqlite3_vtab_cursor* cursor, int /*plan*/, const char* /*name*/, int /*count*/,
              sqlite3_value** values) {
  FeedCursor& feed = feedCursor(cursor);
  feed.list = static_cast<const Locations*>(sqlite3_value_pointer(*values, pointerType));
  feed.bit = 0;
  return SQLITE_OK;
}

int advanceFeed(sqlite3_vtab_cursor* cursor) {
  ++feedCursor(cursor).bit;
  return SQLITE_OK;
}

int isAtEndOfFeed(sqlite3_vtab_cursor* cursor) {
  const FeedCursor& feed = feedCursor(cursor);
  return feed.list == nullptr || feed.bit >= feed.list->size() ? 1 : 0;
}

int readFeed(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
  const FeedCursor& feed = feedCursor(cursor);
  const consolidated::Location location = (*feed.list)[feed.bit];
  if (column == BitColumn) {
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(feed.bit));
  } else {
    sqlite3_result_int64(context, column == FirstColumn ? location.first : location.second);
  }
  return SQLITE_OK;
}

int numberFeedRow(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
  *row = static_cast<sqlite3_int64>(feedCursor(cursor).bit);
  return SQLITE_OK;
}

constexpr sqlite3_module makeFeedModule() {
  sqlite3_module module{};
  module.xConnect = connectFeed;
  module.xBestIndex = planFeed;
  module.xDisconnect = disconnectFeed;
  module.xOpen = openFeed;
  module.xClose = closeFeed;
  module.xFilter = startFeed;
  module.xNext = advanceFeed;
  module.xEof = isAtEndOfFeed;
  module.xColumn = readFeed;
  module.xRowid = numberFeedRow;
  return module;
}

constexpr sqlite3_module feedModule = makeFeedModule();

}  // namespace

int addLocationFeed(sqlite3* database) {
  return sqlite3_create_module(database, "stored_locations", &feedModule, nullptr);
}

int bindLocations(sqlite3_stmt* statement, int index, const Locations& locations) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): read only, as startFeed() has it
  return sqlite3_bind_pointer(statement, index, const_cast<Locations*>(&locations), pointerType,
                              nullptr);
}

}  // namespace consolidator::inspect
