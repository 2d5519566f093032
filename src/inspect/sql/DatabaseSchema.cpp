#include "inspect/sql/DatabaseSchema.h"

#include <string>

namespace consolidator::inspect {

namespace {

constexpr const char* fileTables = R"(
CREATE TABLE file (
  id INTEGER PRIMARY KEY,
  path TEXT NOT NULL,
  real_path UNIQUE,
  size INTEGER NOT NULL,
  major_version INTEGER NOT NULL,
  minor_version INTEGER NOT NULL,
  project TEXT,
  dwarf_offset INTEGER,
  dwarf_size INTEGER,
  complete INTEGER,
  lossy_texts INTEGER
);
CREATE TABLE section (
  file_id INTEGER NOT NULL REFERENCES file ON DELETE CASCADE,
  position INTEGER NOT NULL,
  kind TEXT NOT NULL,
  kind_number INTEGER NOT NULL,
  offset NOT NULL,
  size INTEGER NOT NULL,
  PRIMARY KEY (file_id, position)
) WITHOUT ROWID;
CREATE TABLE kernel (
  id INTEGER PRIMARY KEY,
  file_id INTEGER NOT NULL REFERENCES file ON DELETE CASCADE,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  type TEXT NOT NULL,
  type_number INTEGER NOT NULL,
  instance_suffix TEXT NOT NULL
);
CREATE TABLE instance_path (
  kernel_id INTEGER NOT NULL REFERENCES kernel ON DELETE CASCADE,
  position INTEGER NOT NULL,
  path TEXT NOT NULL,
  PRIMARY KEY (kernel_id, position)
) WITHOUT ROWID;
CREATE TABLE breakable_condition (
  kernel_id INTEGER NOT NULL REFERENCES kernel ON DELETE CASCADE,
  position INTEGER NOT NULL,
  kind TEXT NOT NULL,
  kind_number INTEGER NOT NULL,
  condition TEXT NOT NULL,
  file TEXT,
  line INTEGER,
  PRIMARY KEY (kernel_id, position)
) WITHOUT ROWID;
CREATE TABLE bram (
  kernel_id INTEGER NOT NULL REFERENCES kernel ON DELETE CASCADE,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  PRIMARY KEY (kernel_id, position)
) WITHOUT ROWID;
)";

// Arguments and variables differ in their names alone.
std::string variableTable(const std::string& name) {
  return "CREATE TABLE " + name + R"( (
  id INTEGER PRIMARY KEY,
  kernel_id INTEGER NOT NULL REFERENCES kernel ON DELETE CASCADE,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  second TEXT NOT NULL,
  c_type TEXT NOT NULL,
  bit_width INTEGER NOT NULL,
  instance_bits INTEGER NOT NULL
);
)";
}

// Integers of a location come first in what is compared most: a list is read by its variable, and a
// variable found by its location.
constexpr const char* locationTables = R"(
CREATE TABLE instance_bit (
  argument_id INTEGER REFERENCES argument ON DELETE CASCADE,
  variable_id INTEGER REFERENCES variable ON DELETE CASCADE,
  instance INTEGER NOT NULL,
  bit INTEGER NOT NULL,
  first INTEGER NOT NULL,
  second INTEGER NOT NULL,
  CHECK ((argument_id IS NULL) <> (variable_id IS NULL))
);
CREATE TABLE hardware_variable (
  id INTEGER PRIMARY KEY,
  kernel_id INTEGER NOT NULL REFERENCES kernel ON DELETE CASCADE,
  position INTEGER NOT NULL,
  rtl_name TEXT NOT NULL,
  register TEXT NOT NULL,
  logic_locations INTEGER NOT NULL,
  bits INTEGER NOT NULL,
  highest INTEGER NOT NULL
);
CREATE TABLE logic_location (
  hardware_variable_id INTEGER NOT NULL REFERENCES hardware_variable ON DELETE CASCADE,
  bit INTEGER NOT NULL,
  first INTEGER NOT NULL,
  second INTEGER NOT NULL,
  PRIMARY KEY (hardware_variable_id, bit)
) WITHOUT ROWID;
)";

constexpr const char* indices = R"(
CREATE INDEX kernel_by_file ON kernel (file_id, position);
CREATE INDEX kernel_by_name ON kernel (name);
CREATE INDEX instance_path_by_path ON instance_path (path);
CREATE INDEX argument_by_kernel ON argument (kernel_id, position);
CREATE INDEX argument_by_name ON argument (name);
CREATE INDEX argument_by_second ON argument (second);
CREATE INDEX variable_by_kernel ON variable (kernel_id, position);
CREATE INDEX variable_by_name ON variable (name);
CREATE INDEX variable_by_second ON variable (second);
CREATE INDEX instance_bit_by_argument ON instance_bit (argument_id, instance, bit)
  WHERE argument_id IS NOT NULL;
CREATE INDEX instance_bit_by_variable ON instance_bit (variable_id, instance, bit)
  WHERE variable_id IS NOT NULL;
CREATE INDEX instance_bit_by_location ON instance_bit (first, second);
CREATE INDEX hardware_variable_by_register ON hardware_variable (kernel_id, register);
CREATE INDEX hardware_variable_by_rtl_name ON hardware_variable (rtl_name);
CREATE INDEX logic_location_by_location ON logic_location (first, second);
CREATE INDEX breakable_condition_by_line ON breakable_condition (file, line);
CREATE INDEX bram_by_name ON bram (name);
)";

constexpr const char* locationView = R"(
CREATE VIEW register_at AS
SELECT l.first, l.second, k.file_id, k.id AS kernel_id, k.name AS kernel, h.rtl_name, h.register,
       NULL AS name, NULL AS instance, l.bit
FROM logic_location l
JOIN hardware_variable h ON h.id = l.hardware_variable_id
JOIN kernel k ON k.id = h.kernel_id
UNION ALL
SELECT b.first, b.second, k.file_id, k.id, k.name, NULL, a.second, a.name, b.instance, b.bit
FROM instance_bit b
JOIN argument a ON a.id = b.argument_id
JOIN kernel k ON k.id = a.kernel_id
UNION ALL
SELECT b.first, b.second, k.file_id, k.id, k.name, NULL, v.second, v.name, b.instance, b.bit
FROM instance_bit b
JOIN variable v ON v.id = b.variable_id
JOIN kernel k ON k.id = v.kernel_id;
)";

// The best of what hardware variables and the variable's own bits tell of an instance: first by
// state, then by bits and the highest of them, as digits of one width, of which max() is a text's.
constexpr const char* coverageView = R"(
CREATE VIEW coverage AS
WITH named AS (
  SELECT 'argument' AS what, id AS argument_id, NULL AS variable_id, kernel_id, position, name, second
  FROM argument
  UNION ALL
  SELECT 'variable', NULL, id, kernel_id, position, name, second FROM variable
), best AS (
  SELECT k.file_id, k.id AS kernel_id, k.name AS kernel, p.position AS instance, p.path, n.what,
         n.position, n.name, n.second AS register, max(
    coalesce((
      SELECT max(CASE
        WHEN h.bits = 0 THEN '0'
        WHEN instr(h.rtl_name, p.path || '/') > 0 THEN
          printf('%d%010d%010d', 2 + (h.bits = h.logic_locations), h.bits, h.highest)
        WHEN instr(h.rtl_name, p.path) > 0 THEN printf('1%010d%010d', h.bits, h.highest)
        ELSE '0' END)
      FROM hardware_variable h WHERE h.kernel_id = k.id AND h.register = n.second), '0'),
    coalesce((
      SELECT CASE
        WHEN total(b.first OR b.second) = 0 THEN '0'
        ELSE printf('%d%010d%010d', 2 + (total(b.first OR b.second) = count(*)),
                    total(b.first OR b.second), max(CASE WHEN b.first OR b.second THEN b.bit END))
        END
      FROM instance_bit b WHERE b.argument_id = n.argument_id AND b.instance = p.position), '0'),
    coalesce((
      SELECT CASE
        WHEN total(b.first OR b.second) = 0 THEN '0'
        ELSE printf('%d%010d%010d', 2 + (total(b.first OR b.second) = count(*)),
                    total(b.first OR b.second), max(CASE WHEN b.first OR b.second THEN b.bit END))
        END
      FROM instance_bit b WHERE b.variable_id = n.variable_id AND b.instance = p.position), '0')
    ) AS best
  FROM kernel k JOIN instance_path p ON p.kernel_id = k.id JOIN named n ON n.kernel_id = k.id
)
SELECT file_id, kernel_id, kernel, instance, path, what, position, name, register,
       CASE substr(best, 1, 1)
         WHEN '3' THEN 'without_gap' WHEN '2' THEN 'with_gap' WHEN '1' THEN 'doubtful' ELSE 'none' END
         AS state,
       CAST(substr(best, 2, 10) AS INTEGER) AS bits, CAST(substr(best, 12) AS INTEGER) AS highest
FROM best;
)";

}  // namespace

void createTables(Database& database) {
  database.execute(("PRAGMA application_id = " + std::to_string(databaseApplication)).c_str());
  database.execute(("PRAGMA user_version = " + std::to_string(databaseVersion)).c_str());
  database.execute(fileTables);
  database.execute(variableTable("argument").c_str());
  database.execute(variableTable("variable").c_str());
  database.execute(locationTables);
}

void createIndices(Database& database) {
  database.execute("BEGIN");
  database.execute(indices);
  database.execute(locationView);
  database.execute(coverageView);
  database.execute("COMMIT");
}

bool hasSchema(Database& database) {
  return database.number("PRAGMA application_id") == databaseApplication &&
         database.number("PRAGMA user_version") == databaseVersion && !database.hasFailed();
}

}  // namespace consolidator::inspect
