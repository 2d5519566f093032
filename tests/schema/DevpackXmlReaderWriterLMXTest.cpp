#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/XmlReader.h"
#include "schema/DevpackXmlReaderWriterLMX.h"
#include "schema/ReadProject.h"
#include "schema/SampleDocument.h"
#include "support/NamedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace Devpack {
namespace {

using consolidator::TemporaryFolder;

Project sampleProject() { return readProject(sampleDocument); }

TEST(ProjectTest, ReadsEveryElementIntoItsPlace) {
  const Project project = sampleProject();
  ASSERT_EQ(project.field<"platform">().count(), 1U);
  const Platform& platform = project.get<"platform">(0);
  EXPECT_EQ(platform.get<"description">(), "A platform & more");
  EXPECT_EQ(platform.get<"build_flow">(), "flow 2");
  ASSERT_NE(platform.get<"host">(), nullptr);
  EXPECT_EQ(platform.get<"host">()->get<"architecture">(), "x86_64");
  const Board& board = platform.get<"board">(0);
  EXPECT_EQ(board.get<"interfaces">(0).get<"interface">(1).get<"name">(), "interface 2");
  EXPECT_EQ(board.get<"id">(0).get<"device">(), "0x9038");
  const Core& core = platform.get<"device">(0).get<"core">(0);
  EXPECT_EQ(core.get<"kernelClocks">()->get<"clock">(0).get<"name">(), "clock 2");
  EXPECT_EQ(core.get<"memories">(0).get<"instance">(0).get<"addrRemap">(0).get<"range">(), "0x80");
  EXPECT_EQ(core.get<"profilers">()->get<"instance">(0).get<"slot">(0).get<"type">(),
            "slot type 1");
  const Kernel& kernel = core.get<"kernel">(0);
  EXPECT_EQ(kernel.get<"name">(), "kernel 1");
  EXPECT_EQ(kernel.get<"module">(0).get<"module">(0).get<"module">(0).get<"name">(), "module 3");
  EXPECT_EQ(kernel.get<"FIFOInformation">(0)
                .get<"FIFOInst">(0)
                .get<"InterfaceList">(0)
                .get<"Interface">(),
            "interface 3");
  ASSERT_EQ(kernel.field<"arg">().count(), 2U);
  EXPECT_EQ(kernel.get<"arg">(0).get<"type">(), "std::vector<int>&");
  EXPECT_EQ(kernel.get<"arg">(1).get<"addressQualifier">(), 4294967295U);
  EXPECT_FALSE(kernel.get<"arg">(1).field<"origUse">().isPresent());
}

TEST(ProjectTest, WritesWhatItHasRead) {
  EXPECT_EQ(sampleProject().writeToString(), sampleDocument);
}

TEST(ProjectTest, WritesAttributesAndChildrenInTheirOrderHoweverTheyCame) {
  const Project project = readProject(
      "<project><platform><device><core><pipes/><kernel workGroupSize='1' name='k'>"
      "<arg type='t' name='a'/><port/><arg name='b'/></kernel><kernelClocks/></core></device>"
      "<version/><host/></platform></project>");
  EXPECT_EQ(project.writeToString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<project>
  <platform>
    <version/>
    <host/>
    <device>
      <core>
        <kernelClocks/>
        <kernel name="k" workGroupSize="1">
          <port/>
          <arg name="a" type="t"/>
          <arg name="b"/>
        </kernel>
        <pipes/>
      </core>
    </device>
  </platform>
</project>
)");
}

TEST(ProjectTest, LastOneCountsOfWhatOccursOnce) {
  const Project project = readProject(
      "<project><platform><host architecture='a'/><description>1</description><host/>"
      "<description>2</description></platform></project>");
  EXPECT_FALSE(project.get<"platform">(0).get<"host">()->field<"architecture">().isPresent());
  EXPECT_EQ(project.get<"platform">(0).get<"description">(), "2");
}

TEST(ProjectTest, ElementsInAWrongPlaceAreUnknownThere) {
  const Project project = readProject(
      "<project><kernel/><arg addressQualifier='x'/><platform><platform/><device><kernel>"
      "<arg addressQualifier='x'/></kernel><core><arg addressQualifier='x'/><kernel>"
      "<kernel><arg/></kernel><port><arg addressQualifier='x'/></port></kernel></core></device>"
      "</platform></project>");
  EXPECT_EQ(project.writeToString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<project>
  <platform>
    <device>
      <core>
        <kernel>
          <port/>
        </kernel>
      </core>
    </device>
  </platform>
</project>
)");
}

std::string documentWithArg(std::string_view attributes) {
  return "<project><platform><device><core><kernel><arg " + std::string(attributes) +
         "/></kernel></core></device></platform></project>";
}

TEST(ProjectTest, RefusesAnAddressQualifierThatIsNoUnsignedInteger) {
  constexpr std::string_view refused[] = {"",   "x",  "-1",  "+1",         " 1",
                                          "1 ", "1x", "1.0", "4294967296", "99999999999999999999"};
  for (const std::string_view value : refused) {
    EXPECT_EQ(failureOf(documentWithArg("addressQualifier='" + std::string(value) + "'")),
              "line 1: attribute is not an unsigned integer in range" +
                  (value.empty() ? "" : " (" + std::string(value) + ")"));
  }
}

TEST(ProjectTest, TakesAnAddressQualifierWithLeadingZeros) {
  const Project project = readProject(documentWithArg("addressQualifier='00000000004294967295'"));
  const Arg& arg =
      project.get<"platform">(0).get<"device">(0).get<"core">(0).get<"kernel">(0).get<"arg">(0);
  EXPECT_EQ(arg.get<"addressQualifier">(), 4294967295U);
}

TEST(ProjectTest, OtherAttributesHoldAnyText) {
  EXPECT_EQ(failureOf(documentWithArg("id='x' size='-1' offset=''")), "");
}

TEST(ProjectTest, ReadsAFile) {
  const TemporaryFolder folder;
  const std::string path = folder.write("kernel.xml", sampleDocument);
  lmx::error_code errorCode = lmx::error_code::not_written;
  const Project project(path.c_str(), errorCode);
  EXPECT_EQ(errorCode, lmx::error_code::ok);
  EXPECT_EQ(project.writeToString(), sampleDocument);
}

TEST(ProjectTest, ReadsNothingFromAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.path("missing"), folder.path(".")}) {
    lmx::error_code errorCode = lmx::error_code::ok;
    const Project project(path.c_str(), errorCode);
    EXPECT_EQ(errorCode, lmx::error_code::file_not_opened) << path;
    EXPECT_EQ(project.writeToString(), Project().writeToString()) << path;
  }
}

TEST(ProjectTest, ThrowsTheFaultOfAFile) {
  const TemporaryFolder folder;
  const std::string path = folder.write("kernel.xml", "<project>\n</projekt>");
  lmx::error_code errorCode = lmx::error_code::ok;
  try {
    const Project project(path.c_str(), errorCode);
    FAIL() << "nothing was thrown";
  } catch (const lmx::c_lmx_exception& failure) {
    EXPECT_STREQ(failure.what(), "line 2: document not well-formed (mismatched tag)");
  }
  EXPECT_EQ(errorCode, lmx::error_code::not_well_formed);
}

TEST(ProjectTest, ReadsAPipeThatIsOpenAlready) {
  const consolidator::PiecewisePipe pipe(consolidator::pieces(sampleDocument, 100));
  const std::ifstream first(pipe.path());
  lmx::error_code errorCode{};
  EXPECT_EQ(Project(pipe.path().c_str(), errorCode).writeToString(), sampleDocument);
}

TEST(ProjectTest, ReadsANamedPipeThatIsOpenAlreadyAndWhoseWriterIsDone) {
  consolidator::NamedPipe pipe;
  pipe.write(sampleDocument);
  pipe.closeWriter();
  lmx::error_code errorCode{};
  EXPECT_EQ(Project(pipe.path().c_str(), errorCode).writeToString(), sampleDocument);
}

TEST(ProjectTest, WritesToAFile) {
  const TemporaryFolder folder;
  folder.write("out.xml", std::string(100000, 'x'));
  EXPECT_EQ(sampleProject().writeToFile(folder.path("out.xml").c_str()), lmx::error_code::ok);
  EXPECT_EQ(folder.read("out.xml"), sampleDocument);
}

TEST(ProjectTest, ReportsAFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  EXPECT_EQ(Project().writeToFile(folder.path("missing/out.xml").c_str()),
            lmx::error_code::not_written);
  EXPECT_EQ(Project().writeToFile("/dev/full"), lmx::error_code::not_written);
}

TEST(ProjectTest, KeepsNamespaceDeclarationsOfTheRootOnly) {
  const Project project =
      readProject("<project xmlns='urn:d' xmlns:p='urn:p'><platform xmlns:q='urn:q'/></project>");
  EXPECT_EQ(project.field<"xmlns">(), (lmx::c_namespace_map{{"", "urn:d"}, {"p", "urn:p"}}));
}

// Sanitized builds see a map that is written to when it is gone.
TEST(ProjectTest, LeavesNoNamespaceMapInTheReader) {
  for (const std::string_view document : {"<project xmlns='urn:d'/>", "", "<other/>"}) {
    lmx::error_code result{};
    lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
    Project project;
    try {
      project.unmarshal(reader, "project");
    } catch (const lmx::c_lmx_exception&) {
      EXPECT_NE(result, lmx::error_code::ok);
    }
    reader.add_namespace_mapping("late", "urn:late");
    EXPECT_EQ(project.field<"xmlns">().size(), result == lmx::error_code::ok ? 1U : 0U) << document;
  }
}

}  // namespace
}  // namespace Devpack
