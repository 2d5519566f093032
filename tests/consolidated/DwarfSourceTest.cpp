#include "consolidated/DwarfSource.h"
#include "consolidated/Samples.h"
#include "support/AllocationGauge.h"
#include "support/MemoryStream.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace consolidator {
namespace {

// What is written for an entry of that size, and the size that the entry gets.
struct Written {
  std::string bytes;
  std::uint32_t size;

  friend bool operator==(const Written&, const Written&) = default;
};

void PrintTo(const Written& written, std::ostream* out) {
  *out << "\"" << written.bytes << "\" of size " << written.size;
}

Written written(const DwarfSource& source, std::uint32_t size) {
  const MemoryStream out;
  const std::uint32_t written = source.write(out.get(), size);
  return {out.bytes(), written};
}

TEST(DwarfSource, HoldsNothingAtFirst) {
  EXPECT_EQ(written(DwarfSource(), 0), (Written{"", 0}));
  EXPECT_EQ(written(DwarfSource(), 5), (Written{"", 5}));
}

TEST(DwarfSource, WritesAStoredSectionCutToEachSize) {
  const MemoryStream stream("..DWARF..");
  DwarfSource source;
  source.readSection(stream.get(), {SectionKind::Dwarf, 2, 5});
  EXPECT_EQ(written(source, 5), (Written{"DWARF", 5}));
  EXPECT_EQ(written(source, 2), (Written{"DW", 2}));
  EXPECT_EQ(written(source, 9), (Written{"DWARF", 9}));
}

TEST(DwarfSource, HoldsNothingOfASectionThatCannotBeRead) {
  const MemoryStream stream("..DWARF..");
  for (const SectionEntry& unreadable :
       {SectionEntry{SectionKind::Dwarf, 2, 8}, SectionEntry{SectionKind::Dwarf, 0x80000000U, 1},
        SectionEntry{SectionKind::Dwarf, 2, 0xFFFFFFFEU}}) {
    DwarfSource source;
    source.readSection(stream.get(), {SectionKind::Dwarf, 2, 5});
    const AllocationGauge gauge;
    source.readSection(stream.get(), unreadable);
    EXPECT_LT(gauge.total(), 10'000U) << unreadable;
    EXPECT_EQ(written(source, 5), (Written{"", 5})) << unreadable;
  }
}

TEST(DwarfSource, WritesAFileFromItsStartEachTime) {
  const TemporaryFolder folder;
  const std::string path = folder.write("dwarf", "DWARF");
  DwarfSource source;
  EXPECT_EQ(source.openFile(path), 5U);
  EXPECT_EQ(written(source, 5), (Written{"DWARF", 5}));
  EXPECT_EQ(written(source, 5), (Written{"DWARF", 5}));
}

TEST(DwarfSource, WritesWhatIsLeftOfAFileThatShrank) {
  const TemporaryFolder folder;
  const std::string path = folder.write("dwarf", std::string(100'000, 'x'));
  DwarfSource source;
  EXPECT_EQ(source.openFile(path), 100'000U);
  std::filesystem::resize_file(path, 50'000);
  EXPECT_EQ(written(source, 100'000), (Written{std::string(50'000, 'x'), 50'000}));
}

TEST(DwarfSource, TakesNoFileThatIsMissingEmptyOrTooLarge) {
  const TemporaryFolder folder;
  DwarfSource source;
  EXPECT_EQ(source.openFile(folder.write("dwarf", "DWARF")), 5U);
  const std::string large = folder.write("large", "");
  EXPECT_EQ(source.openFile(folder.path("missing")), std::nullopt);
  EXPECT_EQ(source.openFile(folder.path("")), std::nullopt);
  EXPECT_EQ(source.openFile(large), std::nullopt) << "empty so far";
  std::filesystem::resize_file(large, std::uintmax_t{1} << 31U);  // a hole: takes no room
  EXPECT_EQ(source.openFile(large), std::nullopt);
  EXPECT_EQ(written(source, 5), (Written{"DWARF", 5})) << "the one before is kept";
  std::filesystem::resize_file(large, (std::uintmax_t{1} << 31U) - 1);
  EXPECT_EQ(source.openFile(large), 0x7FFFFFFFU);
}

}  // namespace
}  // namespace consolidator
