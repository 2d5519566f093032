#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sqlite3;

namespace consolidator::inspect {

/// An open SQLite database that remembers its first error: what follows one is not done.
class Database {
 public:
  enum class Access {
    Sole,    ///< an empty file that nobody else knows, and that is of no use unless it gets whole
    Shared,  ///< a file that is there, which others may use at the same time
  };

  /// Opens a file that is there. Whether it is a database shows with the first statement.
  Database(const std::string& path, Access access);

  /// Runs statements without parameters and without an answer.
  void execute(const char* statements);

  /// The first column of the first row that a statement yields; 0 if there is none.
  std::int64_t number(const char* statement);

  /// Ends the database. Returns whether all went well since it was opened.
  bool close();

  bool hasFailed() const { return !error_.empty(); }

  /// What went wrong first, in the system's words where it was the system; empty if nothing.
  const std::string& error() const { return error_; }

  /// Notes what a function of SQLite returned. Returns whether that was no error.
  bool note(int result);

  /// For statements.
  sqlite3* handle() const { return handle_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* handle) const;
  };

  std::unique_ptr<sqlite3, Close> handle_;
  std::string error_;
};

}  // namespace consolidator::inspect
