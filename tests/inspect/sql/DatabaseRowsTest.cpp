#include "inspect/diff/Differences.h"
#include "inspect/sql/SqlFixture.h"
#include "model/RandomKernels.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/StrictJson.h"

#include <cstdint>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

class DatabaseRowsTest : public SqlFixture {
 protected:
  /// The database must hold what the document of the command "json" holds, and nothing else.
  void expectDocument(const std::string& bytes) const {
    const std::string stored = databaseOf(bytes).row(documentQuery());
    rapidjson::Document found;
    rapidjson::Document wanted;
    ASSERT_EQ(jsonFault(stored, found), "");
    ASSERT_EQ(jsonFault(inspect({"json", path("file")}).out, wanted), "");
    wanted.RemoveMember("format");
    wanted.RemoveMember("path");
    EXPECT_TRUE(found == wanted) << stored;
  }
};

TEST_F(DatabaseRowsTest, HoldWhatTheDocumentHolds) {
  expectDocument(fullContainer());
  expectDocument(header(0));
  expectDocument(header(1, 7));
  RandomKernels random(3);
  for (int round = 0; round < 30; ++round) {
    expectDocument(fileOf({random.next(6), random.next(6), random.next(6)}));
  }
}

TEST_F(DatabaseRowsTest, HoldWhatIsThereOfDamagedFiles) {
  const std::string whole = fullContainer();
  for (std::size_t size = fullContainerTableEnd; size < whole.size(); size += 7) {
    expectDocument(whole.substr(0, size));
  }
}

TEST_F(DatabaseRowsTest, CutTextsAtZeroBytesAndMendThem) {
  const std::string records =
      u32(1) + kernelRecord(std::string("na\0me", 5), 4, {"/top/\xC3(\xFF", "/top/\x1B"});
  const std::string bytes =
      container({{SectionKind::ProjectName, "p\xE2\x82"}, {SectionKind::KernelRecords, records}});
  expectDocument(bytes);
  const DatabaseQuery database = databaseOf(bytes);
  EXPECT_EQ(database.row("SELECT project, lossy_texts FROM file"), "p\xEF\xBF\xBD|2");
  EXPECT_EQ(database.row("SELECT name FROM kernel"), "na");
  EXPECT_EQ(database.rows("SELECT path FROM instance_path ORDER BY position"),
            (std::vector<std::string>{"/top/\xEF\xBF\xBD(\xEF\xBF\xBD", "/top/\x1B"}));
}

TEST_F(DatabaseRowsTest, TellAnEmptyTextFromNone) {
  EXPECT_EQ(databaseOf(header(0)).row("SELECT project IS NULL FROM file"), "1");
  const std::string empty = container({{SectionKind::ProjectName, ""}});
  EXPECT_EQ(databaseOf(empty).row("SELECT project = '' FROM file"), "1");
}

TEST_F(DatabaseRowsTest, HoldOffsetsThatAreNoIntegersAsTexts) {
  const std::uint64_t largest = 0x7FFF'FFFF'FFFF'FFFF;
  const DatabaseQuery database = databaseOf(header(2) + entry(SectionKind::Dwarf, largest, 1) +
                                            entry(SectionKind::Dwarf, largest + 1, 1));
  EXPECT_EQ(database.rows("SELECT typeof(offset), offset FROM section ORDER BY position"),
            (std::vector<std::string>{"integer|9223372036854775807", "text|9223372036854775808"}));
}

TEST_F(DatabaseRowsTest, CountFromZero) {
  const DatabaseQuery database = databaseOf(fullContainer());
  for (const std::string table : {"section", "kernel", "instance_path", "argument", "variable",
                                  "hardware_variable", "breakable_condition", "bram"}) {
    EXPECT_EQ(database.row("SELECT min(position) FROM " + table), "0") << table;
  }
  EXPECT_EQ(database.row("SELECT min(instance), min(bit) FROM instance_bit"), "0|0");
  EXPECT_EQ(database.row("SELECT min(bit) FROM logic_location"), "0");
}

TEST_F(DatabaseRowsTest, NameTheRegisterAfterTheLastSlash) {
  KernelRecord kernel;
  kernel.setLogicLocation("/top/a/i_r", 2, 5, 6);
  kernel.setLogicLocation("bare", 0, 0, 0);
  EXPECT_EQ(
      databaseOf(fileOf({kernel}))
          .rows(
              "SELECT register, logic_locations, bits, highest FROM hardware_variable ORDER BY id"),
      (std::vector<std::string>{"i_r|3|1|2", "bare|1|0|0"}));
}

}  // namespace
}  // namespace consolidator::inspect
