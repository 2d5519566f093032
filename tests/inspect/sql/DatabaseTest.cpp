#include "inspect/sql/Database.h"
#include "inspect/sql/Statement.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace consolidator::inspect {
namespace {

class DatabaseTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string path_ = folder_.write("db", "");
};

TEST_F(DatabaseTest, KeepsWhatIsWritten) {
  {
    Database database(path_, Database::Access::Sole);
    database.execute("CREATE TABLE t(x); INSERT INTO t VALUES (7)");
    EXPECT_TRUE(database.close());
  }
  Database database(path_, Database::Access::Shared);
  EXPECT_EQ(database.number("SELECT x FROM t"), 7);
  EXPECT_EQ(database.number("SELECT x FROM t WHERE x > 7"), 0);
  EXPECT_FALSE(database.hasFailed());
}

TEST_F(DatabaseTest, RemembersItsFirstErrorAndDoesNothingMore) {
  Database database(path_, Database::Access::Sole);
  database.execute("CREATE TABLE t(x)");
  database.execute("INSERT INTO missing VALUES (1)");
  EXPECT_EQ(database.error(), "no such table: missing");
  database.execute("INSERT INTO other VALUES (1)");
  EXPECT_EQ(database.error(), "no such table: missing");
  EXPECT_EQ(database.number("SELECT 7"), 0);
  EXPECT_EQ(Statement(database, "INSERT INTO t VALUES (?)").insert(std::int64_t{1}), 0);
  EXPECT_FALSE(database.close());
}

TEST_F(DatabaseTest, TellsTheReasonOfTheSystem) {
  Database missing(folder_.path("missing"), Database::Access::Shared);
  EXPECT_EQ(missing.error(), "No such file or directory");
  EXPECT_FALSE(missing.close());
}

TEST_F(DatabaseTest, RefusesAFileThatIsNoDatabase) {
  const std::string path = folder_.write("text", std::string(5000, 'x'));
  Database database(path, Database::Access::Shared);
  EXPECT_EQ(database.number("SELECT count(*) FROM sqlite_schema"), 0);
  EXPECT_EQ(database.error(), "file is not a database");
}

TEST_F(DatabaseTest, LosesWhatAnErrorInterrupts) {
  {
    Database database(path_, Database::Access::Shared);
    database.execute("CREATE TABLE t(x); INSERT INTO t VALUES (1); BEGIN; DELETE FROM t");
    database.execute("INSERT INTO missing VALUES (1)");
    EXPECT_FALSE(database.close());
  }
  Database database(path_, Database::Access::Shared);
  EXPECT_EQ(database.number("SELECT count(*) FROM t"), 1);
}

TEST_F(DatabaseTest, WantsAnEndOfAllStatementsBeforeItsOwn) {
  Database database(path_, Database::Access::Sole);
  const Statement statement(database, "SELECT 1");
  EXPECT_FALSE(database.close());
  EXPECT_NE(database.error(), "");
}

}  // namespace
}  // namespace consolidator::inspect
