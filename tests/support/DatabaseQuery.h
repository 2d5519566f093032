#pragma once

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace consolidator {

/// A database file, open for reading.
class DatabaseQuery {
 public:
  explicit DatabaseQuery(const std::string& path) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
    handle_.reset(handle);
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(result));
  }

  /// The rows of a query's answer: the columns as texts with "|" between them, and nothing for
  /// NULL.
  std::vector<std::string> rows(const std::string& query) const {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(handle_.get(), query.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle_.get()));
    }
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared,
                                                                               sqlite3_finalize);
    std::vector<std::string> rows;
    while (sqlite3_step(prepared) == SQLITE_ROW) rows.push_back(rowOf(prepared));
    return rows;
  }

  /// The only row of an answer.
  std::string row(const std::string& query) const {
    const std::vector<std::string> all = rows(query);
    if (all.size() != 1) throw std::runtime_error("not one row: " + query);
    return all[0];
  }

 private:
  static std::string rowOf(sqlite3_stmt* statement) {
    std::string row;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, i));
      if (i > 0) row += '|';
      if (text != nullptr) row.append(text, size);
    }
    return row;
  }

  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };

  std::unique_ptr<sqlite3, Close> handle_;
};

/// A query for the JSON document of a file with this path, made of the tables alone: what the
/// command "json" writes without "format" and "path".
inline std::string documentQuery() {
  const auto list = [](const std::string& item, const std::string& from) {
    return "(SELECT json_group_array(" + item + ") FROM (SELECT * FROM " + from + "))";
  };
  const std::string ofKernel = " WHERE kernel_id = k.id ORDER BY position";
  const auto variables = [&](const std::string& table) {
    const std::string bits =
        list("json_array(first, second)",
             "instance_bit WHERE " + table + "_id = v.id AND instance = n.i ORDER BY bit");
    const std::string instances = "(SELECT json_group_array(json(" + bits +
                                  ")) FROM (WITH RECURSIVE n(i) AS (SELECT 0 WHERE v.instance_bits "
                                  "> 0 UNION ALL SELECT i + 1 "
                                  "FROM n WHERE i + 1 < v.instance_bits) SELECT i FROM n) n)";
    return "json((SELECT json_group_array(json_object('name', name, 'second', second, 'c_type', "
           "c_type, 'bit_width', bit_width, 'instance_bits', json(" +
           instances + "))) FROM (SELECT * FROM " + table + ofKernel + ") v))";
  };
  const std::string hardware =
      "json((SELECT json_group_array(json_object('rtl_name', rtl_name, 'logic_locations', json(" +
      list("json_array(first, second)",
           "logic_location WHERE hardware_variable_id = h.id ORDER BY bit") +
      "))) FROM (SELECT * FROM hardware_variable" + ofKernel + ") h))";
  const std::string conditions =
      "json(" +
      list(
          "json(CASE WHEN file IS NULL THEN json_object('kind', kind, 'kind_number', kind_number, "
          "'condition', condition) ELSE json_object('kind', kind, 'kind_number', kind_number, "
          "'condition', condition, 'file', file, 'line', line) END)",
          "breakable_condition" + ofKernel) +
      ")";
  const std::string kernels =
      "json((SELECT json_group_array(json_object('name', name, 'type', type, 'type_number', "
      "type_number, 'instance_paths', json(" +
      list("path", "instance_path" + ofKernel) +
      "), 'instance_suffix', instance_suffix, 'arguments', " + variables("argument") +
      ", 'variables', " + variables("variable") + ", 'hardware_variables', " + hardware +
      ", 'breakable_conditions', " + conditions + ", 'brams', json(" +
      list("name", "bram" + ofKernel) +
      "))) FROM (SELECT * FROM kernel WHERE file_id = f.id ORDER BY position) k))";
  const std::string sections =
      "json(" +
      list(
          "json_object('kind', kind, 'kind_number', kind_number, 'offset', CASE WHEN "
          "typeof(offset) = 'integer' AND offset > 9007199254740991 THEN CAST(offset AS TEXT) ELSE "
          "offset END, 'size', size)",
          "section WHERE file_id = f.id ORDER BY position") +
      ")";
  return "SELECT json_object('size', size, 'version', json_array(major_version, minor_version), "
         "'sections', " +
         sections +
         ", 'project', project, 'dwarf', CASE WHEN dwarf_offset IS NOT NULL THEN "
         "json_object('offset', dwarf_offset, 'size', dwarf_size) END, 'kernels', " +
         kernels +
         ", 'complete', json(iif(complete, 'true', 'false')), 'lossy_texts', lossy_texts) FROM "
         "file "
         "f";
}

}  // namespace consolidator
