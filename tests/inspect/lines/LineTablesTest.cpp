#include "inspect/lines/CompiledSources.h"
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

// Tables of lines that a compiler made.
class CompiledLinesTest : public ::testing::Test {
 protected:
  static std::string compile() {
    return CompiledSources().compile("gcc -O0 -c -g src/k.c -o dwarf");
  }
};

TEST_F(CompiledLinesTest, ReadsThemInAnotherProcess) {
  const LineTables tables = read(compile());
  EXPECT_EQ(tables.state(), LineTableState::Read);
  EXPECT_EQ(tables.problem(), "");
  EXPECT_TRUE(hasLine(tables, "src/k.c", 4));
  EXPECT_FALSE(hasLine(tables, "src/k.c", 1));
}

// What is damaged may be read in part or not at all.
TEST_F(CompiledLinesTest, SurvivesDamage) {
  const std::string whole = compile();
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

// A section that takes far more memory than the process may have left from before.
TEST_F(CompiledLinesTest, BoundsMemoryForCompressedSections) {
  const std::string dwarf = CompiledSources().compile(
      "gcc -O0 -c -g src/k.c -o object\n"
      "objcopy --dump-section .debug_info=section object\n"
      "truncate -s 64M section\n"
      "objcopy --update-section .debug_info=section object\n"
      "objcopy --compress-debug-sections=zlib object dwarf");
  EXPECT_LT(dwarf.size(), std::size_t{1} << 20U);
  EXPECT_EQ(read(dwarf).state(), LineTableState::Read);
  const LineTables tables =
      LineTables::of(dwarf, {0, limits.answer, limits.processor, limits.clock});
  EXPECT_EQ(tables.state(), LineTableState::Unreadable);
  EXPECT_NE(tables.problem(), "");
}

TEST_F(CompiledLinesTest, BoundsWhatIsRead) {
  const LineTables tables =
      LineTables::of(compile(), {limits.memory, 10, limits.processor, limits.clock});
  EXPECT_EQ(tables.state(), LineTableState::Unreadable);
  EXPECT_EQ(tables.problem(), "it holds too much");
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
