#include "inspect/InspectRun.h"
#include "inspect/lines/LineTables.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

constexpr ChildLimits limits{std::uint64_t{1} << 30U, std::uint64_t{1} << 28U,
                             std::chrono::seconds(60), std::chrono::seconds(600)};

LineTables read(std::string_view dwarf) { return LineTables::of(dwarf, limits); }

LineTables tablesOf(std::vector<SourceFileLines> files) {
  return LineTables(SourceLines{std::move(files), {}, true});
}

bool hasLine(const LineTables& tables, std::string_view file, std::uint32_t line) {
  return tables.pathOf(file, line).has_value();
}

TEST(LineTablesTest, MatchesLastComponentsOfPath) {
  const LineTables tables = tablesOf({{"/home/me/src/k.c", {3, 5}}});
  for (const char* const file : {"k.c", "src/k.c", "/home/me/src/k.c", "./src//k.c",
                                 "me/x/../src/k.c", "../src/k.c", "/src/k.c"}) {
    EXPECT_TRUE(hasLine(tables, file, 5)) << file;
    EXPECT_FALSE(hasLine(tables, file, 4)) << file;
  }
  for (const char* const file :
       {"", "/", "..", "c", ".c", "rc/k.c", "k", "k.cc", "src", "/x/home/me/src/k.c", "k.c/src"}) {
    EXPECT_FALSE(hasLine(tables, file, 5)) << file;
  }
}

TEST(LineTablesTest, LooksAtAllFilesOfTheSameName) {
  const LineTables tables =
      tablesOf({{"/c/k.c", {7}}, {"/a/k.c", {1, 7}}, {"/b/k.c", {2}}, {"/b/j.c", {3}}});
  EXPECT_EQ(tables.pathOf("k.c", 1), "/a/k.c");
  EXPECT_EQ(tables.pathOf("k.c", 2), "/b/k.c");
  EXPECT_EQ(tables.pathOf("k.c", 7), "/a/k.c");
  EXPECT_EQ(tables.pathOf("c/k.c", 7), "/c/k.c");
  EXPECT_EQ(tables.pathOf("c/k.c", 1), std::nullopt);
  EXPECT_EQ(tables.pathOf("k.c", 3), std::nullopt);
  EXPECT_EQ(tables.pathOf("d/k.c", 7), std::nullopt);
}

TEST(LineTablesTest, RefusesWhatIsNoElf) {
  for (const std::string_view bytes : {"", "\177ELF", "no DWARF at all"}) {
    const LineTables tables = read(bytes);
    EXPECT_EQ(tables.state(), LineTableState::Unreadable);
    EXPECT_NE(tables.problem(), "");
    EXPECT_FALSE(hasLine(tables, "k.c", 1));
  }
}

// Sources of which the compiler makes tables of lines.
class CompiledLinesTest : public ::testing::Test {
 protected:
  // Runs a script in a folder with sources; returns the tables of the file "dwarf" that it makes.
  LineTables compile(const std::string& script) {
    const std::string head =
        "mkdir -p src include build\n"
        "printf 'static inline int twice(int x)\\n{\\n  return 2 * x;\\n}\\n' >include/twice.h\n"
        "printf '#include \"../include/twice.h\"\\nint k(int a)\\n{\\n  a += 3;\\n"
        "  return twice(a);\\n}\\n' >src/k.c\n";
    EXPECT_EQ(startInspectScript("set -e\n" + head + script, folder_.path("")).outcome(),
              holds(""));
    return read(folder_.read("dwarf"));
  }

  static void expectLines(const LineTables& tables) {
    EXPECT_EQ(tables.state(), LineTableState::Read) << tables.problem();
    EXPECT_EQ(tables.problem(), "");
    EXPECT_TRUE(hasLine(tables, "src/k.c", 4));
    EXPECT_TRUE(hasLine(tables, "k.c", 5));
    EXPECT_TRUE(hasLine(tables, "include/twice.h", 3));
    EXPECT_FALSE(hasLine(tables, "k.c", 1));
    EXPECT_FALSE(hasLine(tables, "k.c", 7));
    EXPECT_FALSE(hasLine(tables, "k.h", 4));
  }

  TemporaryFolder folder_;
};

TEST_F(CompiledLinesTest, ReadsRelocatableObjects) {
  for (const char* const version : {"2", "3", "4", "5"}) {
    SCOPED_TRACE(version);
    expectLines(compile("gcc -O0 -c -g -gdwarf-" + std::string(version) + " src/k.c -o dwarf"));
  }
}

TEST_F(CompiledLinesTest, ResolvesAgainstCompileDirectory) {
  for (const char* const version : {"4", "5"}) {
    const LineTables tables =
        compile("cd build; gcc -O0 -c -g ../src/k.c -o ../dwarf -gdwarf-" + std::string(version));
    expectLines(tables);
    const std::string source = folder_.path("src/k.c");
    EXPECT_TRUE(hasLine(tables, source, 4));
    EXPECT_FALSE(hasLine(tables, "build/k.c", 4));
  }
}

TEST_F(CompiledLinesTest, ReadsCompressedSections) {
  expectLines(compile("gcc -O0 -c -g -gz=zlib src/k.c -o dwarf"));
  expectLines(compile("gcc -O0 -c -g -gz=zlib-gnu src/k.c -o dwarf"));
}

TEST_F(CompiledLinesTest, ReadsDebugSectionsAlone) {
  expectLines(
      compile("gcc -O0 -g -shared -fPIC src/k.c -o whole\n"
              "objcopy --only-keep-debug whole dwarf"));
}

TEST_F(CompiledLinesTest, ReadsWhatSplitFileLeaves) {
  expectLines(compile("gcc -O0 -c -g -gsplit-dwarf src/k.c -o dwarf"));
}

TEST_F(CompiledLinesTest, SaysThatThereAreNoTables) {
  for (const char* const script :
       {"gcc -c -g -gsplit-dwarf src/k.c -o object.o; mv object.dwo dwarf",
        "gcc -c -g0 src/k.c -o dwarf"}) {
    const LineTables tables = compile(script);
    EXPECT_EQ(tables.state(), LineTableState::Unreadable);
    EXPECT_NE(tables.problem(), "");
  }
}

// What is damaged may be read in part or not at all.
TEST_F(CompiledLinesTest, SurvivesDamage) {
  compile("gcc -O0 -c -g src/k.c -o dwarf");
  const std::string whole = folder_.read("dwarf");
  std::mt19937 random(1);
  int unreadable = 0;
  for (int round = 0; round < 200; ++round) {
    std::string damaged = whole;
    for (int i = 0; i < 20; ++i) damaged[random() % whole.size()] = static_cast<char>(random());
    if (round % 2 == 0) damaged.resize(random() % whole.size());
    const LineTables tables = read(damaged);
    if (tables.state() == LineTableState::Read) continue;
    EXPECT_NE(tables.problem(), "");
    ++unreadable;
  }
  EXPECT_GT(unreadable, 20);
  EXPECT_LT(unreadable, 200);
}

TEST_F(CompiledLinesTest, EndsReadingAtItsLimits) {
  compile("gcc -O0 -c -g src/k.c -o dwarf");
  const std::string dwarf = folder_.read("dwarf");
  const auto problem = [&](const ChildLimits& strict) {
    const LineTables tables = LineTables::of(dwarf, strict);
    EXPECT_EQ(tables.state(), LineTableState::Unreadable);
    return tables.problem();
  };
  EXPECT_NE(problem({0, limits.answer, limits.processor, limits.clock}), "");
  EXPECT_EQ(problem({limits.memory, 10, limits.processor, limits.clock}), "it holds too much");
}

// Debian's debugging symbols: their sections are compressed, and what several of them share is in
// another file.
TEST(LineTablesTest, ReadsSymbolsOfTheSystem) {
  const std::filesystem::path folder = "/usr/lib/debug/.build-id";
  if (!std::filesystem::exists(folder)) GTEST_SKIP() << "libc6-dbg is not installed";
  std::uintmax_t largest = 0;
  std::filesystem::path symbolsOfLibc;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file() || entry.file_size() <= largest) continue;
    largest = entry.file_size();
    symbolsOfLibc = entry.path();
  }
  const LineTables tables = read(readFile(symbolsOfLibc.string()));
  EXPECT_EQ(tables.state(), LineTableState::Read);
  EXPECT_EQ(tables.problem(), "");
  int lines = 0;
  for (std::uint32_t line = 1; line < 100; ++line) lines += hasLine(tables, "printf.c", line);
  EXPECT_GT(lines, 2);
}

}  // namespace
}  // namespace consolidator::inspect
