#include "inspect/diff/Differences.h"
#include "inspect/sql/SqlFixture.h"
#include "support/FullContainer.h"
#include "support/MemoryFile.h"

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

class SqlCommandTest : public SqlFixture {
 protected:
  std::size_t countFiles() const {
    const fs::directory_iterator files(path(""));
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  /// How many rows all tables of the database have.
  std::string countRows() const {
    std::string query = "SELECT ''";
    for (const std::string& table :
         database().rows("SELECT name FROM sqlite_schema WHERE type = 'table'")) {
      query += ", (SELECT count(*) FROM " + table + ")";
    }
    return database().row(query);
  }
};

std::string kernelFile(const std::string& name) {
  return container({{SectionKind::KernelRecords, u32(1) + kernelRecord(name, 4, {"/top/a"})}});
}

TEST_F(SqlCommandTest, PutsFilesIntoOneDatabase) {
  folder_.write("a", kernelFile("a"));
  folder_.write("b", kernelFile("b"));
  EXPECT_EQ(sql({"a", "b"}), holds(""));
  EXPECT_EQ(database().rows("SELECT f.path, f.real_path, k.name FROM kernel k JOIN file f ON "
                            "f.id = k.file_id ORDER BY k.id"),
            (std::vector<std::string>{path("a") + "|" + fs::canonical(path("a")).string() + "|a",
                                      path("b") + "|" + fs::canonical(path("b")).string() + "|b"}));
  EXPECT_EQ(countFiles(), 3U);
}

TEST_F(SqlCommandTest, ReplacesTheDatabase) {
  folder_.write("a", kernelFile("a"));
  folder_.write("db", "before");
  EXPECT_EQ(sql({"a"}), holds(""));
  EXPECT_EQ(sql({"a"}), holds(""));
  EXPECT_EQ(database().row("SELECT count(*) FROM file"), "1");
}

TEST_F(SqlCommandTest, RefusesToReplaceAFileItReads) {
  folder_.write("a", kernelFile("a"));
  folder_.write("db", kernelFile("b"));
  const std::string refusal = saidOf("db", "is an input, so it cannot be the output");
  EXPECT_EQ(sql({"a", "db"}), (Outcome{2, "", refusal}));
  EXPECT_EQ(sql({"a", "db"}, true), (Outcome{2, "", refusal}));
  EXPECT_EQ(folder_.read("db"), kernelFile("b"));
}

TEST_F(SqlCommandTest, AnswersForIncompleteFilesButFails) {
  folder_.write("whole", kernelFile("a"));
  folder_.write("damaged", kernelFile("b") + "more");
  folder_.write("cut", header(2) + kernelFile("b").substr(16));
  EXPECT_EQ(sql({"whole", "damaged"}).status, 0);
  EXPECT_EQ(sql({"whole", "cut"}),
            (Outcome{1, "",
                     saidOf("cut", "not complete: The section goes beyond the end of the file.")}));
  EXPECT_EQ(database().rows("SELECT complete FROM file ORDER BY id"),
            (std::vector<std::string>{"1", "0"}));
}

TEST_F(SqlCommandTest, TakesTheOthersWhereAFileCannotBeOpened) {
  folder_.write("a", kernelFile("a"));
  folder_.write("text", "a text that is long enough");
  EXPECT_EQ(
      sql({"missing", "text", "a"}),
      (Outcome{
          2, "",
          saidOf("missing", "No such file or directory") +
              saidOf("text", "The file does not begin with the magic of a consolidated file.")}));
  EXPECT_EQ(database().row("SELECT name FROM kernel"), "a");
}

TEST_F(SqlCommandTest, LeavesTheOldDatabaseWhereNoFileCanBeOpened) {
  folder_.write("db", "before");
  EXPECT_EQ(sql({"missing"}).status, 2);
  EXPECT_EQ(folder_.read("db"), "before");
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(SqlCommandTest, TakesAFileOnce) {
  folder_.write("a", kernelFile("a"));
  fs::create_symlink(path("a"), path("link"));
  EXPECT_EQ(sql({"a", "link", "a"}), holds(""));
  EXPECT_EQ(database().row("SELECT count(*) FROM file"), "1");
}

TEST_F(SqlCommandTest, AppendsToADatabase) {
  folder_.write("a", kernelFile("a"));
  folder_.write("b", kernelFile("b"));
  EXPECT_EQ(sql({"a"}, true), holds(""));
  EXPECT_EQ(sql({"b"}, true), holds(""));
  EXPECT_EQ(database().rows("SELECT name FROM kernel ORDER BY id"),
            (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(database().row("PRAGMA integrity_check"), "ok");
}

TEST_F(SqlCommandTest, ReplacesAllOfAFileOfTheSameRealPath) {
  folder_.write("a", fullContainer());
  folder_.write("b", fullContainer());
  ASSERT_EQ(sql({"a", "b"}), holds(""));
  const std::string before = countRows();
  fs::create_symlink(path("a"), path("link"));
  EXPECT_EQ(sql({"link"}, true), holds(""));
  EXPECT_EQ(countRows(), before);
  EXPECT_EQ(database().rows("SELECT path FROM file ORDER BY path"),
            (std::vector<std::string>{path("b"), path("link")}));
  EXPECT_TRUE(database().rows("PRAGMA foreign_key_check").empty());
}

TEST_F(SqlCommandTest, TellsRealPathsApartThatAreNoUtf8) {
  folder_.write("a\xFE", kernelFile("a"));
  folder_.write("a\xFF", kernelFile("b"));
  ASSERT_EQ(sql({"a\xFE"}, true), holds(""));
  ASSERT_EQ(sql({"a\xFF"}, true), holds(""));
  ASSERT_EQ(sql({"a\xFF"}, true), holds(""));
  EXPECT_EQ(database().rows("SELECT typeof(real_path), lossy_texts FROM file"),
            (std::vector<std::string>{"blob|0", "blob|0"}));
  EXPECT_EQ(database().row("SELECT path FROM file LIMIT 1"), path("a\xEF\xBF\xBD"));
}

TEST_F(SqlCommandTest, AddsAgainWhatHasNoRealPath) {
  const MemoryFile file;
  file.write(kernelFile("a"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(inspect({"sql", "--append", "-o", path("db"), file.path()}), holds(""));
  }
  EXPECT_EQ(database().rows("SELECT real_path IS NULL FROM file"),
            (std::vector<std::string>{"1", "1"}));
}

TEST_F(SqlCommandTest, DoesNotAppendToWhatIsNotItsOwn) {
  folder_.write("a", kernelFile("a"));
  folder_.write("db", "no database at all, but a text");
  EXPECT_EQ(sql({"a"}, true), (Outcome{2, "", saidOf("db", "file is not a database")}));
  EXPECT_EQ(folder_.read("db"), "no database at all, but a text");
  folder_.write("db", "");
  const std::string refusal = saidOf("db", "no database that this version can add to");
  EXPECT_EQ(sql({"a"}, true), (Outcome{2, "", refusal}));
  EXPECT_EQ(folder_.read("db"), "");
}

TEST_F(SqlCommandTest, DoesNotAppendToAnotherVersion) {
  folder_.write("a", kernelFile("a"));
  ASSERT_EQ(sql({"a"}).status, 0);
  std::string bytes = folder_.read("db");
  bytes[63] = 2;  // the last byte of the version, by the format of SQLite
  folder_.write("db", bytes);
  EXPECT_EQ(sql({"a"}, true),
            (Outcome{2, "", saidOf("db", "no database that this version can add to")}));
  EXPECT_EQ(folder_.read("db"), bytes);
}

TEST_F(SqlCommandTest, SaysWhyItCannotWrite) {
  folder_.write("a", kernelFile("a"));
  EXPECT_EQ(inspect({"sql", path("a"), "-o", "/dev/full"}),
            (Outcome{2, "", said("/dev/full: No space left on device")}));
  EXPECT_EQ(inspect({"sql", path("a"), "-o", path("missing/db")}),
            (Outcome{2, "", saidOf("missing/db", "No such file or directory")}));
  EXPECT_EQ(inspect({"sql", path("a"), "--append", "-o", path("")}).status, 2);
}

TEST_F(SqlCommandTest, WritesToPipesAndStandardOutput) {
  folder_.write("a", kernelFile("a"));
  EXPECT_EQ(runScript("$INSPECT sql a -o - >out && $INSPECT sql a -o >(cat >piped; touch done) && "
                      "while [[ ! -e done ]]; do sleep 0.1; done"),
            holds(""));
  for (const char* const name : {"out", "piped"}) {
    EXPECT_EQ(DatabaseQuery(path(name)).row("SELECT name FROM kernel"), "a");
  }
}

TEST_F(SqlCommandTest, ReadsPipesAndStandardInput) {
  folder_.write("a", kernelFile("a"));
  EXPECT_EQ(runScript("$INSPECT sql - <(cat a) -o db < <(cat a)"), holds(""));
  EXPECT_EQ(database().row("SELECT count(*) FROM kernel"), "2");
}

TEST_F(SqlCommandTest, NoticesAFullDisk) {
  folder_.write("a", fullContainer());
  folder_.write("db", "before");
  const Outcome outcome = runScript("ulimit -f 64; $INSPECT sql a -o db");
  EXPECT_EQ(outcome, (Outcome{2, "", said("db: File too large")}));
  EXPECT_EQ(folder_.read("db"), "before");
  EXPECT_EQ(countFiles(), 2U);
}

TEST_F(SqlCommandTest, TakesNamesThatMeanSomethingToTheLibrary) {
  folder_.write("a", kernelFile("a"));
  folder_.write("b", kernelFile("b"));
  for (const std::string name : {"file:db", ":memory:"}) {
    EXPECT_EQ(runScript("$INSPECT sql a -o " + name + " && $INSPECT sql b --append -o " + name +
                        " && mv " + name + " db"),
              holds(""));
    EXPECT_EQ(database().row("SELECT count(*) FROM file"), "2");
  }
}

TEST_F(SqlCommandTest, AppendsNothingToAFileNamedLikeStandardOutput) {
  folder_.write("a", kernelFile("a"));
  EXPECT_EQ(runScript("echo text >-; $INSPECT sql a --append -o - >db && cat ./-"),
            holds("text\n"));
  EXPECT_EQ(database().row("SELECT count(*) FROM file"), "1");
}

TEST_F(SqlCommandTest, KeepsWhatWasThereWhenAFullDiskEndsAnAddition) {
  folder_.write("a", kernelFile("a"));
  folder_.write("b", fileOf(std::vector<KernelRecord>(20'000)));
  ASSERT_EQ(sql({"a"}), holds(""));
  const Outcome outcome = runScript("ulimit -f 1000; $INSPECT sql --append b -o db");
  EXPECT_EQ(outcome, (Outcome{2, "", said("db: File too large")}));
  EXPECT_EQ(database().row("SELECT count(*) FROM file"), "1");
  EXPECT_EQ(database().row("PRAGMA integrity_check"), "ok");
}

// The second file is a pipe that nobody writes to.
TEST_F(SqlCommandTest, LeavesTheOldDatabaseWhenItIsKilled) {
  folder_.write("a", fullContainer());
  folder_.write("db", "before");
  EXPECT_EQ(runScript("mkfifo pipe; $INSPECT sql a pipe -o db & sleep 0.3; kill -9 $!; wait $!"
                      " 2>/dev/null; echo $?"),
            holds("137\n"));
  EXPECT_EQ(folder_.read("db"), "before");
}

TEST_F(SqlCommandTest, LeavesADatabaseThatWasAddedToWholeWhenItIsKilled) {
  folder_.write("a", kernelFile("a"));
  folder_.write("b", fileOf(std::vector<KernelRecord>(100'000)));
  ASSERT_EQ(sql({"a"}), holds(""));
  const Outcome outcome = runScript(
      "for i in 1 2 3 4 5; do timeout -s KILL 0.$((i * 5))s $INSPECT sql --append b -o db; "
      "test $? = 0 || killed=yes; done 2>/dev/null; echo $killed");
  EXPECT_EQ(outcome, holds("yes\n"));
  EXPECT_EQ(inspect({"sql", "--append", path("a"), "-o", path("db")}), holds(""));
  const std::string kernels = database().row("SELECT count(*) FROM kernel");
  EXPECT_TRUE(kernels == "1" || kernels == "100001") << kernels;
  EXPECT_EQ(database().row("PRAGMA integrity_check"), "ok");
}

// The command has opened the file and waits for another user of the database when it is cut. Where
// it was cut too early, it is just short; so try again.
TEST_F(SqlCommandTest, LeavesOutAFileThatIsCutMeanwhile) {
  const std::string large = fileOf(std::vector<KernelRecord>(10'000));
  Outcome outcome;
  for (int delay = 200; delay < 20'000 && outcome.status != 2; delay *= 2) {
    folder_.write("a", kernelFile("a"));
    ASSERT_EQ(sql({"a"}), holds(""));
    folder_.write("a", large);
    sqlite3* other = nullptr;
    sqlite3_open(path("db").c_str(), &other);
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    std::thread run([&] {
      outcome = startInspect({"sql", "--append", "a", "-o", "db"}, path("")).outcome();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    fs::resize_file(path("a"), 100);
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    run.join();
  }
  EXPECT_EQ(outcome, (Outcome{2, "", said("a: cut while it was read")}));
  EXPECT_EQ(database().row("SELECT name FROM kernel"), "a");
}

}  // namespace
}  // namespace consolidator::inspect
