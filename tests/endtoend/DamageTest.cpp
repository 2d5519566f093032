#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::size_t headerSize = 16;
constexpr std::size_t entrySize = 24;

enum class Kind : std::uint32_t { ProjectName = 0, Dwarf = 1, KernelRecords = 2, Json = 3 };

// An entry of the section table as a file holds it.
struct StoredEntry {
  Kind kind;
  std::size_t offset;
  std::size_t size;

  StoredEntry(std::string_view file, std::size_t index) {
    const std::size_t start = headerSize + entrySize * index;
    kind = static_cast<Kind>(numberAt(file, start, 4));
    offset = numberAt(file, start + 8, 8);
    size = numberAt(file, start + 16, 4);
  }
};

// Whether the sections stand behind the table and behind each other, up to the end of the file, and
// one of them is a JSON document. Bytes of DWARF and of unknown sections may be missing.
testing::AssertionResult isWellFormed(std::string_view file) {
  if (file.size() < headerSize) return testing::AssertionFailure() << "no header";
  const auto count = static_cast<std::size_t>(numberAt(file, 12, 4));
  std::size_t end = headerSize + entrySize * count;
  if (file.size() < end) return testing::AssertionFailure() << "no table of " << count;
  bool anyJson = false;
  for (std::size_t i = 0; i < count; ++i) {
    const StoredEntry entry(file, i);
    const std::size_t next = i + 1 < count ? StoredEntry(file, i + 1).offset : file.size();
    if (entry.offset != end) return testing::AssertionFailure() << "gap before section " << i;
    if (next < end || next > file.size() || next - end > entry.size) {
      return testing::AssertionFailure() << "section " << i << " has no such size";
    }
    const bool mayLackBytes = entry.kind == Kind::Dwarf || entry.kind > Kind::Json;
    if (!mayLackBytes && next - end != entry.size) {
      return testing::AssertionFailure() << "section " << i << " lacks bytes";
    }
    if (entry.kind == Kind::Json) {
      anyJson = true;
      const std::string_view json = file.substr(end, entry.size);
      if (!json.starts_with("{  \"Kernels\" : [ ") ||
          !json.ends_with(std::string_view(" ] }\0", 5)))
        return testing::AssertionFailure() << "section " << i << " is no JSON document";
    }
    end = next;
  }
  if (!anyJson) return testing::AssertionFailure() << "no JSON document";
  return testing::AssertionSuccess();
}

// Runs on a small file of all section kinds in which something is wrong.
class DamageTest : public ExecutableTest {
 protected:
  // Expects that a run which adds nothing refuses the file for its version, with the version that
  // can be read from it, or rewrites it.
  void expectRewrittenOrRefused(const std::string& damaged) const {
    write("out", damaged);
    std::string versions = header(0).substr(0, 12);
    versions.replace(0, damaged.substr(0, 12).size(), damaged.substr(0, 12));
    const auto majorVersion = static_cast<std::int32_t>(numberAt(versions, 4, 4));
    const auto minorVersion = static_cast<std::int32_t>(numberAt(versions, 8, 4));

    const Outcome outcome = run({"-f", "out", "-h", "missing"});
    if (majorVersion > 1) {
      EXPECT_EQ(outcome, failed("Error: consolidated file out is version " +
                                std::to_string(majorVersion) + "." + std::to_string(minorVersion) +
                                " and only versions up to 1.1 are supported.\n"));
      EXPECT_TRUE(folderHolds({{"out", ""}}));
    } else {
      EXPECT_EQ(outcome, silence());
      EXPECT_EQ(read("out").substr(0, 12), versions);
      EXPECT_TRUE(isWellFormed(read("out")));
    }
  }

  const std::string dwarf_ = "DW";
  const std::string file_ =
      container({projectSection("p"), dwarfSection(dwarf_), section(3, "j"),
                 recordsSection({text("k") + u32(1) + text("/") + u32(4) + u32(0) + u32(0) +
                                 u32(0) + u32(1) + u32(0) + text("a") + u32(1) + text("m")})});
};

TEST_F(DamageTest, UndamagedFileIsRewritten) {
  write("out", file_);
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(isWellFormed(read("out")));
  EXPECT_EQ(dumpedJson("out"),
            R"({  "Kernels" : [ { "Name" : "k", "Instance Paths" : [ "//inst" ], "Type" : "HLS", )"
            R"("Arguments" : [ ], "Variables" : [ ], )"
            R"("Breakable Conditions" : [{ "Start":true, "Cond":"$i/a"}], "BRAMs" : [ "m"] } ] })");
}

TEST_F(DamageTest, FileCutAtAnyByteIsRewritten) {
  for (std::size_t size = 0; size < file_.size(); ++size) {
    SCOPED_TRACE(size);
    expectRewrittenOrRefused(file_.substr(0, size));
  }
}

TEST_F(DamageTest, FileCutAtAnyByteGivesAllOrNothingOfASection) {
  const std::size_t dwarfEnd = file_.find(dwarf_) + dwarf_.size();
  for (std::size_t size = 0; size < file_.size(); ++size) {
    SCOPED_TRACE(size);
    const std::string damaged = file_.substr(0, size);
    write("out", damaged);
    EXPECT_EQ(run({"-f", "out", "-u", "dwarf"}), silence());
    EXPECT_TRUE(
        folderHolds({{"out", damaged}, {"dwarf", size < dwarfEnd ? std::string() : dwarf_}}));
  }
}

TEST_F(DamageTest, FlippedBitInAnyByteIsNoMoreThanARefusedVersion) {
  for (std::size_t position = 0; position < file_.size(); ++position) {
    SCOPED_TRACE(position);
    std::string damaged = file_;
    damaged[position] = static_cast<char>(damaged[position] ^ (1 << position % 8));
    expectRewrittenOrRefused(damaged);
  }
}

}  // namespace
}  // namespace consolidator
