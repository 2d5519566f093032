#pragma once

#include "consolidated/Locations.h"
#include "inspect/sql/Database.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

struct sqlite3_stmt;

namespace consolidator::inspect {

/// A name of a file, which a database holds byte for byte: as a text where it is UTF-8, else as a
/// blob.
struct ExactName {
  std::string_view bytes;
};

/// A prepared statement of a database, which must outlive it. Errors are noted there.
class Statement {
 public:
  Statement(Database& database, const char* text);

  /// Gives the parameters their values, in order, and runs the statement; rows that it yields are
  /// lost. The values must hold until it returns.
  template <typename... Values>
  void run(const Values&... values) {
    int index = 0;
    (bind(++index, values), ...);
    step();
  }

  /// The same for a statement that inserts one row. Returns the number of the row.
  template <typename... Values>
  std::int64_t insert(const Values&... values) {
    run(values...);
    return lastRow();
  }

  /// The first column of the first row that it yields; 0 if there is none.
  std::int64_t number();

  /// How many texts were no UTF-8 so far.
  std::uint64_t lossyTexts() const { return lossyTexts_; }

 private:
  struct Finish {
    void operator()(sqlite3_stmt* statement) const;
  };

  void bind(int index, std::int64_t value);

  void bind(int index, std::int32_t value) { bind(index, std::int64_t{value}); }

  void bind(int index, std::uint32_t value) { bind(index, std::int64_t{value}); }

  /// A number above 2^63 - 1 becomes a text of decimal digits.
  void bind(int index, std::uint64_t value);

  /// Bytes that are not UTF-8 become U+FFFD.
  void bind(int index, std::string_view text);

  void bind(int index, ExactName name);

  /// Locations for the table-valued function of LocationFeed.h.
  void bind(int index, const consolidated::Locations& locations);

  void bind(int index, std::nullopt_t nothing);

  template <typename T>
  void bind(int index, const std::optional<T>& value) {
    value ? bind(index, *value) : bind(index, std::nullopt);
  }

  void step();
  std::int64_t lastRow() const;

  Database* database_;
  std::unique_ptr<sqlite3_stmt, Finish> statement_;
  std::uint64_t lossyTexts_ = 0;
};

}  // namespace consolidator::inspect
