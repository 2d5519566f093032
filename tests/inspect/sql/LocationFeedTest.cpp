#include "inspect/sql/LocationFeed.h"
#include "inspect/verify/VerifyFixture.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

class LocationFeedTest : public testing::Test {
 protected:
  LocationFeedTest() {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(":memory:", &handle), SQLITE_OK);
    database_.reset(handle);
    EXPECT_EQ(addLocationFeed(handle), SQLITE_OK);
  }

  // The rows that a query yields with locations as its first parameter; the error if there is one.
  std::vector<std::string> rows(const char* query, const consolidated::Locations* list = nullptr) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database_.get(), query, -1, &prepared, nullptr) != SQLITE_OK) {
      return {sqlite3_errmsg(database_.get())};
    }
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared,
                                                                               sqlite3_finalize);
    if (list != nullptr) {
      EXPECT_EQ(bindLocations(prepared, 1, *list), SQLITE_OK);
    }
    std::vector<std::string> found;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
      std::string row;
      for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
        row += " " + std::to_string(sqlite3_column_int64(prepared, i));
      }
      found.push_back(row);
    }
    return found;
  }

  // The same with the locations of a register.
  std::vector<std::string> rowsOfRegister(const char* query) {
    KernelRecord kernel;
    kernel.setLogicLocation("/t/r", 0, 7, 8);
    kernel.setLogicLocation("/t/r", 1, 4294967295, 9);
    const std::string bytes = container({{SectionKind::KernelRecords, recordsOf({kernel})}});
    const auto file = consolidated::File::fromBytes(bytes);
    const consolidated::Kernel stored = *(*file).kernels().begin();
    const auto locations = (*stored.hardwareVariables().begin()).logicLocations();
    return rows(query, &locations);
  }

  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
  };

  std::unique_ptr<sqlite3, Close> database_;
};

using Rows = std::vector<std::string>;

TEST_F(LocationFeedTest, YieldsARowForEachLocation) {
  EXPECT_EQ(rowsOfRegister("SELECT bit, first, second FROM stored_locations(?)"),
            (Rows{" 0 7 8", " 1 4294967295 9"}));
}

TEST_F(LocationFeedTest, NumbersItsRows) {
  EXPECT_EQ(rowsOfRegister("SELECT rowid FROM stored_locations(?)"), (Rows{" 0", " 1"}));
}

TEST_F(LocationFeedTest, MayBeAskedForSomeOfTheRows) {
  EXPECT_EQ(rowsOfRegister("SELECT second FROM stored_locations(?) WHERE bit > 0 AND first > 7"),
            Rows{" 9"});
}

TEST_F(LocationFeedTest, YieldsNothingForOtherValues) {
  EXPECT_EQ(rows("SELECT bit FROM stored_locations(1)"), Rows());
  EXPECT_EQ(rows("SELECT bit FROM stored_locations('list')"), Rows());
  EXPECT_EQ(rows("SELECT bit FROM stored_locations(?)"), Rows());
}

TEST_F(LocationFeedTest, CannotBeAskedWithoutAList) {
  EXPECT_EQ(rows("SELECT bit FROM stored_locations"), Rows{"no query solution"});
}

}  // namespace
}  // namespace consolidator::inspect
