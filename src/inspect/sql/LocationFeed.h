#pragma once

#include "consolidated/Locations.h"

struct sqlite3;
struct sqlite3_stmt;

namespace consolidator::inspect {

/// Makes the table-valued function `stored_locations(list)` known to a database connection: it
/// yields the columns `bit`, `first` and `second` of the locations that are bound to its argument.
/// One statement so inserts all rows of a list, in less than half the time that it takes to bind
/// and run each. Returns a result code of SQLite.
int addLocationFeed(sqlite3* database);

/// Binds locations, which must hold until the statement has run, to a parameter that is the
/// argument of that function. Returns a result code of SQLite.
int bindLocations(sqlite3_stmt* statement, int index, const consolidated::Locations& locations);

}  // namespace consolidator::inspect
