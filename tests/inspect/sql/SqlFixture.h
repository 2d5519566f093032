#pragma once

#include "inspect/InspectRun.h"
#include "support/DatabaseQuery.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Makes databases in a folder of its own: files named in it, the database is "db".
class SqlFixture : public testing::Test {
 protected:
  std::string path(std::string_view name) const { return folder_.path(name); }

  /// Runs the command on files of the folder.
  Outcome sql(const std::vector<std::string>& files, bool appends = false) const {
    std::vector<std::string> words{"sql", "-o", path("db")};
    if (appends) words.emplace_back("--append");
    for (const std::string& file : files) words.push_back(path(file));
    return inspect(words);
  }

  /// The command's message about a file of the folder.
  std::string saidOf(std::string_view file, std::string_view message) const {
    return said(path(file) + ": " + std::string(message));
  }

  /// The database of one file with these bytes.
  DatabaseQuery databaseOf(std::string_view bytes) const {
    folder_.write("file", bytes);
    EXPECT_NE(sql({"file"}).status, 2);
    return database();
  }

  DatabaseQuery database() const { return DatabaseQuery(path("db")); }

  Outcome runScript(const std::string& script) const {
    return startInspectScript(script, path("")).outcome();
  }

  TemporaryFolder folder_;
};

}  // namespace consolidator::inspect
