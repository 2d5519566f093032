#include "ReadingFixture.h"
#include "consolidated/File.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace consolidated {
namespace {

using consolidator::SectionKind;

std::string_view storedOf(const std::optional<Text>& text) {
  return text ? text->stored() : "nothing";
}

class FileTest : public ReadingFixture {
 protected:
  static std::string faultOf(std::string_view bytes) {
    const Result<File> file = File::fromBytes(bytes);
    return file ? "none" : describe(file.fault());
  }

  std::string_view projectOf(const std::string& bytes) {
    const auto project = read(bytes).project();
    return project ? project->view() : "none";
  }
};

TEST_F(FileTest, NeedsAHeaderOf16Bytes) {
  EXPECT_EQ(faultOf(""), "short-header section none at 0");
  EXPECT_EQ(faultOf(header(0).substr(0, 15)), "short-header section none at 0");
  EXPECT_EQ(faultOf(header(0)), "none");
}

TEST_F(FileTest, NeedsTheMagic) {
  EXPECT_EQ(faultOf(header(0, 1, 1, 0xBEEFDAD5)), "wrong-magic section none at 0");
  EXPECT_EQ(faultOf(header(0, 1, 1, 0xD4DAEFBE)), "wrong-magic section none at 0");
}

TEST_F(FileTest, TellsTheHeaderAsStored) {
  const File& file = read(header(7, -2, 0x01020304));
  EXPECT_EQ(file.majorVersion(), -2);
  EXPECT_EQ(file.minorVersion(), 0x01020304);
  EXPECT_EQ(file.claimedSections(), 7U);
  EXPECT_EQ(file.sections().size(), 0U);
}

TEST_F(FileTest, ShowsTheEntriesThatAreThere) {
  const std::string table = entry(3, 1, 2) + entry(9, 3, 4);
  EXPECT_EQ(read(header(2) + table).sections().size(), 2U);
  EXPECT_EQ(read(header(2) + table + table).sections().size(), 2U);
  EXPECT_EQ(read(header(0xFFFFFFFF) + table).sections().size(), 2U);
  EXPECT_EQ(read(header(2) + table.substr(0, 47)).sections().size(), 1U);
  EXPECT_EQ(read(header(0)).sections().size(), 0U);
}

TEST_F(FileTest, ShowsTheBytesOfTheFirstSectionOfAKind) {
  const File& file = read(container(
      {{SectionKind::Json, "{}"}, {SectionKind::Dwarf, "ELF"}, {SectionKind::Dwarf, "other"}}));
  EXPECT_EQ(storedOf(file.dwarf()), "ELF");
  EXPECT_EQ(file.dwarf()->offset(), 16U + 72 + 2);
  EXPECT_EQ(storedOf(file.json()), "{}");
  EXPECT_EQ(storedOf(file.bytesOf(file.sections()[2])), "other");
  EXPECT_FALSE(file.firstOf(consolidated::SectionKind::KernelRecords));
}

// The first one counts, even if another could be had.
TEST_F(FileTest, HasNoDwarfUnlessAllItsBytesAreThere) {
  const std::string cut =
      header(2) + entry(SectionKind::Dwarf, 64, 4) + entry(SectionKind::Dwarf, 64, 3) + "ELF";
  EXPECT_EQ(storedOf(read(cut).dwarf()), "nothing");
  EXPECT_EQ(storedOf(read(cut + "x").dwarf()), "ELFx");
}

TEST_F(FileTest, FindsDwarfWhateverIsWrongElsewhere) {
  const std::string dwarf = entry(SectionKind::Dwarf, 64, 3);
  EXPECT_EQ(storedOf(read(header(2) + entry(7, 0, 0) + dwarf + "ELF").dwarf()), "ELF");
  EXPECT_EQ(storedOf(read(header(9) + entry(7, 0, 0) + dwarf + "ELF").dwarf()), "ELF");
}

TEST_F(FileTest, CutsTheOffsetOfDwarf) {
  const auto dwarfAt = [&](std::uint64_t offset, std::uint32_t size) {
    return storedOf(read(header(1) + entry(SectionKind::Dwarf, offset, size) + "ELF").dwarf());
  };
  EXPECT_EQ(dwarfAt(0x500000028, 3), "ELF");
  EXPECT_EQ(dwarfAt(0x580000028, 3), "nothing");
  EXPECT_EQ(dwarfAt(0x580000028, 0), "nothing");
  EXPECT_EQ(dwarfAt(44, 0), "");
  EXPECT_EQ(dwarfAt(42, 2), "nothing");
}

TEST_F(FileTest, LastProjectCounts) {
  EXPECT_EQ(projectOf(container({{SectionKind::ProjectName, "one"},
                                 {SectionKind::Json, ""},
                                 {SectionKind::ProjectName, "two"}})),
            "two");
  EXPECT_EQ(
      projectOf(container({{SectionKind::ProjectName, "one"}, {SectionKind::ProjectName, ""}})),
      "");
}

TEST_F(FileTest, ProjectEndsAtItsFirstZeroByte) {
  const std::string stored("de\0mo", 5);
  EXPECT_EQ(projectOf(container({{SectionKind::ProjectName, stored}})), "de");
}

TEST_F(FileTest, MayHaveNoProject) {
  EXPECT_EQ(projectOf(header(0)), "none");
  EXPECT_EQ(projectOf(container({{SectionKind::Json, ""}})), "none");
}

TEST_F(FileTest, LastProjectBeforeTheDamageCounts) {
  const consolidator::Section one{SectionKind::ProjectName, "one"};
  const consolidator::Section two{SectionKind::ProjectName, "two"};
  const consolidator::Section damage{SectionKind::KernelRecords, "x"};
  EXPECT_EQ(projectOf(container({one, damage, two})), "one");
  EXPECT_EQ(projectOf(container({one, two, damage})), "two");
  EXPECT_EQ(projectOf(container({damage, two})), "none");
  // The name itself is cut.
  const std::string whole = container({one, two});
  EXPECT_EQ(projectOf(whole.substr(0, whole.size() - 1)), "one");
  EXPECT_EQ(projectOf(header(2) + entry(SectionKind::ProjectName, 40, 4)), "none");
}

TEST_F(FileTest, FindsTheFirstKernelOfAName) {
  const std::string records =
      u32(3) + kernelRecord("a", 0) + kernelRecord("b", 1) + kernelRecord("b", 2);
  const File& file = readRecords(records);
  EXPECT_EQ(file.findKernel("b")->type(), KernelType::C);
  EXPECT_FALSE(file.findKernel("c"));
}

TEST_F(FileTest, ViewsHoldWhenItIsMoved) {
  const std::string bytes = container({{SectionKind::ProjectName, "demo"}});
  Result<File> file = File::fromBytes(bytes);
  const Text project = *file->project();
  File moved = std::move(*file);
  EXPECT_EQ(project.view(), "demo");
  EXPECT_EQ(moved.project()->view(), "demo");
  Result<File> other = File::fromBytes(bytes);
  *other = std::move(moved);
  EXPECT_EQ(other->bytes(), bytes);
}

}  // namespace
}  // namespace consolidated
