#include "inspect/lines/CompiledSources.h"
#include "inspect/lines/LineTableReader.h"
#include "inspect/lines/LineTables.h"
#include "support/MemoryFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

// Reads tables in this process, which only well-formed ones allow.
class LineTableReaderTest : public ::testing::Test {
 protected:
  SourceLines linesOf(const std::string& script) const {
    const MemoryFile file;
    file.write(sources_.compile(script));
    return readLineTables(::open(file.path().c_str(), O_RDONLY | O_CLOEXEC));
  }

  LineTables tablesOf(const std::string& script) const { return LineTables(linesOf(script)); }

  static bool hasLine(const LineTables& tables, std::string_view file, std::uint32_t line) {
    return tables.pathOf(file, line).has_value();
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

  // Links one unit for src/k.c and one for src/j.c, in this order, and changes a section by a
  // command of the shell. That finds its bytes in the file "section" and where the second unit
  // begins in $second.
  static std::string changeSection(const std::string& section, const std::string& command) {
    return "printf 'int j(int a)\\n{\\n  return a;\\n}\\n' >src/j.c\n"
           "gcc -O0 -g -gdwarf-4 -shared -fPIC src/k.c src/j.c -o whole\n"
           "objcopy --dump-section " +
           section +
           "=section whole\n"
           "second=$((4 + $(od -An -tu4 -N4 section)))\n" +
           command + "\nobjcopy --update-section " + section + "=section whole dwarf";
  }

  // Of such units of which the second cannot be read.
  static void expectFirstUnit(const LineTables& tables) {
    EXPECT_EQ(tables.state(), LineTableState::Read);
    EXPECT_EQ(tables.problem(), "1 of its units cannot be read");
    EXPECT_TRUE(hasLine(tables, "src/k.c", 4));
    EXPECT_FALSE(hasLine(tables, "src/j.c", 3));
  }

  CompiledSources sources_;
};

TEST_F(LineTableReaderTest, ReadsRelocatableObjects) {
  for (const char* const version : {"2", "3", "4", "5"}) {
    SCOPED_TRACE(version);
    expectLines(tablesOf("gcc -O0 -c -g -gdwarf-" + std::string(version) + " src/k.c -o dwarf"));
  }
}

TEST_F(LineTableReaderTest, ResolvesAgainstCompileDirectory) {
  for (const char* const version : {"4", "5"}) {
    const LineTables tables =
        tablesOf("cd build; gcc -O0 -c -g ../src/k.c -o ../dwarf -gdwarf-" + std::string(version));
    expectLines(tables);
    EXPECT_TRUE(hasLine(tables, sources_.path("src/k.c"), 4));
    EXPECT_FALSE(hasLine(tables, "build/k.c", 4));
  }
}

TEST_F(LineTableReaderTest, LeavesPathsRelativeWhereTheCompileDirectoryIs) {
  for (const char* const version : {"4", "5"}) {
    const LineTables tables =
        tablesOf("gcc -O0 -c -g \"-fdebug-prefix-map=$PWD=here\" src/k.c -o dwarf -gdwarf-" +
                 std::string(version));
    const std::string path(tables.pathOf("src/k.c", 4).value_or(""));
    EXPECT_NE(path, "");
    EXPECT_NE(path.substr(0, 1), "/") << path;
  }
}

TEST_F(LineTableReaderTest, ReadsCompressedSections) {
  expectLines(tablesOf("gcc -O0 -c -g -gz=zlib src/k.c -o dwarf"));
  expectLines(tablesOf("gcc -O0 -c -g -gz=zlib-gnu src/k.c -o dwarf"));
}

TEST_F(LineTableReaderTest, ReadsDebugSectionsAlone) {
  expectLines(
      tablesOf("gcc -O0 -g -shared -fPIC src/k.c -o whole\n"
               "objcopy --only-keep-debug whole dwarf"));
}

TEST_F(LineTableReaderTest, ReadsWhatSplitFileLeaves) {
  expectLines(tablesOf("gcc -O0 -c -g -gsplit-dwarf src/k.c -o dwarf"));
}

TEST_F(LineTableReaderTest, ReadsAllUnits) {
  const LineTables tables = tablesOf(changeSection(".debug_line", ":"));
  expectLines(tables);
  EXPECT_TRUE(hasLine(tables, "src/j.c", 3));
}

TEST_F(LineTableReaderTest, DoesNotCountCodeWithoutLine) {
  const LineTables tables = tablesOf(
      "sed -i 's/a += 3;/a += 3; __asm__(\".loc 1 0\\\\n nop\");/' src/k.c\n"
      "gcc -O0 -c -g src/k.c -o dwarf");
  expectLines(tables);
  EXPECT_FALSE(hasLine(tables, "k.c", 0));
}

TEST_F(LineTableReaderTest, CountsTheFirstLine) {
  EXPECT_TRUE(hasLine(tablesOf("echo 'int f(int a) { return a; }' >src/j.c\n"
                               "gcc -O0 -c -g src/j.c -o dwarf"),
                      "src/j.c", 1));
}

TEST_F(LineTableReaderTest, SaysThatThereAreNoTables) {
  for (const char* const script :
       {"gcc -c -g -gsplit-dwarf src/k.c -o object.o; mv object.dwo dwarf",
        "gcc -c -g0 src/k.c -o dwarf", "echo 'no DWARF at all' >dwarf"}) {
    const SourceLines lines = linesOf(script);
    EXPECT_FALSE(lines.isRead);
    EXPECT_TRUE(lines.files.empty());
    EXPECT_NE(lines.problem, "");
  }
}

TEST_F(LineTableReaderTest, SaysWhereAUnitLacksItsTable) {
  expectFirstUnit(tablesOf(changeSection(".debug_line", "truncate -s $((second + 20)) section")));
}

TEST_F(LineTableReaderTest, EndsAtAUnitOfAnUnknownVersion) {
  expectFirstUnit(tablesOf(changeSection(
      ".debug_info",
      "printf '\\377' | dd of=section bs=1 seek=$((second + 4)) conv=notrunc status=none")));
}

}  // namespace
}  // namespace consolidator::inspect
