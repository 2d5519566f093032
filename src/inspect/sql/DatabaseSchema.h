#pragma once

#include "inspect/sql/Database.h"

namespace consolidator::inspect {

/// Marks a database as one of this schema: what `PRAGMA application_id` says ("cnsl").
inline constexpr std::int64_t databaseApplication = 0x636E736C;

/// The version of the schema: what `PRAGMA user_version` says. It rises when a table, view or
/// column goes or gets another meaning; new ones do not raise it.
inline constexpr std::int64_t databaseVersion = 1;

/// Makes the tables in an empty database and marks it.
void createTables(Database& database);

/// Makes indices and views once the tables are filled, which takes less time than to keep indices
/// in order all along.
void createIndices(Database& database);

/// Whether a database is marked as one of this schema and version. False, too, after an error.
bool hasSchema(Database& database);

}  // namespace consolidator::inspect
