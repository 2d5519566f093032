#include "model/Describe.h"
#include "model/KernelMerge.h"
#include "readers/KernelFile.h"
#include "readers/KernelWithArguments.h"
#include "support/MemoryFile.h"
#include "support/NamedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/Rounds.h"
#include "support/StreamCapture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

constexpr std::string_view refusal = "Could not parse kernel file\n";

// What comes out of a file: its records in a form to compare, or the message.
std::string readFrom(const std::string& path) {
  const StreamCapture capture;
  KernelFile reader(path.c_str());
  EXPECT_TRUE(reader.isValid());
  const bool isAccepted = reader.parse();
  EXPECT_EQ(capture.out(), "");
  EXPECT_EQ(capture.err(), isAccepted ? "" : refusal);
  EXPECT_TRUE(isAccepted || reader.kernels().empty());
  std::string records = capture.err();
  for (const KernelRecord& kernel : reader.kernels()) records += describe(kernel);
  return records;
}

std::string read(std::string_view document) {
  const MemoryFile file;
  file.write(document);
  return readFrom(file.path());
}

std::string inCore(std::string_view content) {
  return "<project><platform><device><core>" + std::string(content) +
         "</core></device></platform></project>";
}

std::string kernel(std::string_view name, std::initializer_list<Argument> arguments = {}) {
  KernelRecord record = kernelWithArguments(name, arguments);
  record.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  record.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
  return describe(record);
}

// The names of an argument that the document calls this.
std::string named(std::string_view name) {
  return read(inCore("<kernel name='k'><arg name='" + std::string(name) + "'/></kernel>"));
}

TEST(KernelFile, ReadsNamesTypesAndTheTwoConditions) {
  EXPECT_EQ(read(R"(<?xml version="1.0" encoding="UTF-8"?>
<project name="project">
  <platform vendor="vendor" name="platform">
    <device name="device">
      <core name="core" target="hw">
        <kernel name="vadd" language="c" workGroupSize="1">
          <port name="control" mode="slave"/>
          <arg name="a" addressQualifier="1" id="0" size="0x8" type="int*" origName="x"/>
          <arg name="begin_r" addressQualifier="0" id="1" size="0x4" type="unsigned int"/>
          <instance name="vadd_1"/>
        </kernel>
      </core>
    </device>
  </platform>
</project>
)"),
            kernel("vadd", {{"a", "a", "int*"}, {"begin", "begin_r", "unsigned int"}}));
}

TEST(KernelFile, NamesOfReservedWordsAreRestored) {
  EXPECT_EQ(named("reg_r"), kernel("k", {{"reg", "reg_r", ""}}));
  EXPECT_EQ(named("rtanif1_r"), kernel("k", {{"rtanif1", "rtanif1_r", ""}}));
}

TEST(KernelFile, KernelsAndTypesAreNotRestored) {
  EXPECT_EQ(read(inCore("<kernel name='reg_r'><arg name='a' type='reg_r'/></kernel>")),
            kernel("reg_r", {{"a", "a", "reg_r"}}));
}

TEST(KernelFile, KernelsHoldTheArgumentsOfThoseBeforeThem) {
  EXPECT_EQ(read(inCore("<kernel name='one'><arg name='a' type='1'/><arg name='b'/></kernel>"
                        "<kernel name='two'><arg name='c'/><arg name='a' type='2'/></kernel>"
                        "<kernel/>")),
            kernel("one", {{"a", "a", "1"}, {"b", "b", ""}}) +
                kernel("two", {{"a", "a", "1"}, {"b", "b", ""}, {"c", "c", ""}}) +
                kernel("", {{"a", "a", "1"}, {"b", "b", ""}, {"c", "c", ""}}));
}

TEST(KernelFile, KernelsAreWalkedInDocumentOrder) {
  EXPECT_EQ(read("<project>"
                 "<platform><device><core><kernel name='1'/></core><core/>"
                 "<core><kernel name='2'/><kernel name='3'/></core></device>"
                 "<device/><device><core><kernel name='4'/></core></device></platform>"
                 "<platform/><platform><device><core><kernel name='1'/></core></device></platform>"
                 "</project>"),
            kernel("1") + kernel("2") + kernel("3") + kernel("4") + kernel("1"));
}

TEST(KernelFile, AnArgumentIsStoredOnce) {
  EXPECT_EQ(read(inCore("<kernel name='k'><arg name='a' type='1'/><arg name='a' type='2'/>"
                        "<arg name='reg_r' type='3'/><arg name='reg' type='4'/></kernel>")),
            kernel("k", {{"a", "a", "1"}, {"reg", "reg_r", "3"}}));
}

TEST(KernelFile, WhatIsAbsentIsEmpty) {
  EXPECT_EQ(read(inCore("<kernel/>")), kernel(""));
  EXPECT_EQ(read(inCore("<kernel name=''><arg/><arg type='int'/></kernel>")),
            kernel("", {{"", "", ""}}));
}

TEST(KernelFile, AProjectWithoutKernelsGivesNoRecord) {
  for (const std::string_view document :
       {"<project/>", "<project><platform/></project>",
        "<project><platform><device/></platform></project>",
        "<project><platform><device><core/></device></platform></project>"}) {
    EXPECT_EQ(read(document), "") << document;
  }
}

TEST(KernelFile, ElementsInAWrongPlaceAreNotRead) {
  EXPECT_EQ(read("<project><kernel/><platform><kernel/><core><kernel/></core><device><kernel/>"
                 "</device></platform><x><platform><device><core><kernel/></core></device>"
                 "</platform></x></project>"),
            "");
  EXPECT_EQ(read(inCore("<p:kernel/><Kernel/><kernel name='k'><x><arg name='a'/></x>"
                        "<port><arg name='b'/></port><kernel name='inner'/></kernel>")),
            kernel("k"));
}

TEST(KernelFile, UnknownElementsAndAttributesAreSkipped) {
  EXPECT_EQ(read(inCore("<x name='1'><kernel/></x><kernel x='2' name='k' p:name='3'>text"
                        "<arg x='4' name='a'><arg name='b'/></arg></kernel>")),
            kernel("k", {{"a", "a", ""}}));
}

TEST(KernelFile, ValuesArriveAsUtf8AfterReferencesAndNormalisation) {
  EXPECT_EQ(named("&lt;&#x20AC;&#10;\n&quot;"),
            kernel("k", {{"<\xE2\x82\xAC\n \"", "<\xE2\x82\xAC\n \"", ""}}));
  EXPECT_EQ(read("<?xml version='1.0' encoding='ISO-8859-1'?>" + inCore("<kernel name='\xE9'/>")),
            kernel("\xC3\xA9"));
}

TEST(KernelFile, AMalformedDocumentIsRefusedWhereverTheFaultStands) {
  const std::string good = inCore("<kernel name='k'><arg name='a'/></kernel>");
  for (const std::string& document :
       {std::string(), std::string(" \n"), std::string("kernel"), "x" + good, good + "x",
        good + "<project/>", good + "<!-- c", good.substr(0, good.size() - 1),
        inCore("<kernel name='k'/><core>"), inCore("<kernel name='k' name='l'/>"),
        inCore("<kernel name='k'/>&undefined;"), inCore("<kernel name='k'/>\x01"),
        inCore("<kernel><arg addressQualifier='x'/></kernel>"),
        "<!DOCTYPE project [<!ENTITY a 'b'>]>" + good}) {
    EXPECT_EQ(read(document), refusal) << document;
  }
}

TEST(KernelFile, AnotherRootIsRefused) {
  EXPECT_EQ(read("<kernel/>"), refusal);
  EXPECT_EQ(read("<p:project xmlns:p='urn:p'/>"), refusal);
}

TEST(KernelFile, ReadsAPipeThatIsOpenedTwice) {
  const std::string document = inCore("<kernel name='k'><arg name='a'/></kernel>");
  const PiecewisePipe pipe(pieces(document, 7));
  EXPECT_EQ(readFrom(pipe.path()), kernel("k", {{"a", "a", ""}}));
}

TEST(KernelFile, ReadsANamedPipeWhoseWriterIsDone) {
  NamedPipe pipe;
  pipe.write(inCore("<kernel name='k'/>"));
  KernelFile reader(pipe.path().c_str());
  pipe.closeWriter();
  ASSERT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 1U);
  EXPECT_EQ(describe(reader.kernels().front()), kernel("k"));
}

TEST(KernelFile, IsNotValidWithoutAFile) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.path("missing"), folder.path("."), std::string()}) {
    const StreamCapture capture;
    EXPECT_FALSE(KernelFile(path.c_str()).isValid()) << path;
    EXPECT_EQ(capture.out() + capture.err(), "");
  }
}

TEST(KernelFile, AFileThatIsGoneWhenItIsReadGivesNoRecord) {
  const StreamCapture capture;
  KernelFile reader("missing");
  EXPECT_TRUE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

// Few names, so that kernels and arguments come again.
std::string randomName(std::mt19937& random) {
  return std::string(1, static_cast<char>('a' + random() % 5));
}

std::string randomKernels(std::mt19937& random) {
  std::string kernels;
  for (std::size_t i = random() % 8; i > 0; --i) {
    kernels += "<kernel name='" + randomName(random) + "'>";
    for (std::size_t j = random() % 4; j > 0; --j) {
      kernels += "<arg name='" + randomName(random) + "' type='" + randomName(random) + "'/>";
    }
    kernels += "</kernel>";
  }
  return inCore(kernels);
}

// Stored lists may hold equal names, and all that kernel XML does not tell.
KernelList randomKnown(std::mt19937& random) {
  KernelList known;
  for (std::size_t i = random() % 4; i > 0; --i) {
    KernelRecord record;
    record.name = randomName(random);
    record.type = random() % 2 == 0 ? KernelType::Unknown : KernelType::HLS;
    for (std::size_t j = random() % 4; j > 0; --j) {
      const std::string name = randomName(random);
      record.arguments.append({name, "known", "known"}).instanceBits.resize(random() % 2);
    }
    if (random() % 2 == 0) record.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
    record.addBRAM("ram");
    known.append(std::move(record));
  }
  return known;
}

TEST(KernelFile, MergingGivesWhatMergingRecordByRecordGives) {
  std::mt19937 random(23);
  for (int round = 0; round < rounds(4000); ++round) {
    const std::string document = randomKernels(random);
    const MemoryFile file;
    file.write(document);
    KernelFile reader(file.path().c_str());
    ASSERT_TRUE(reader.parse());
    KernelList known = randomKnown(random);
    KernelList expected = known;
    for (const KernelRecord& record : reader.kernels()) mergeKernel(expected, record);
    reader.mergeInto(known);
    ASSERT_TRUE(known == expected) << document;
  }
}

}  // namespace
}  // namespace consolidator
