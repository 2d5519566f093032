#include "lmx60/LmxException.h"
#include "schema/DevpackXmlReaderWriterLMX.h"
#include "schema/Fill.h"
#include "schema/ReadElement.h"
#include "schema/SampleDocument.h"
#include "support/NamedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace Devpack {
namespace {

using consolidator::TemporaryFolder;

Project sampleProject() { return readElement<Project>(sampleDocument, "project"); }

TEST(ProjectTest, ReadsEveryElementIntoItsPlace) {
  const Project project = sampleProject();
  ASSERT_EQ(project.platform.count(), 1U);
  const Platform& platform = project.platform.get(0);
  EXPECT_EQ(platform.description.get(), "A platform & more");
  EXPECT_EQ(platform.buildFlow.get(), "flow 2");
  ASSERT_NE(platform.host.get(), nullptr);
  EXPECT_EQ(platform.host.get()->architecture.get(), "x86_64");
  const Board& board = platform.board.get(0);
  EXPECT_EQ(board.interfaces.get(0).interface.get(1).name.get(), "interface 2");
  EXPECT_EQ(board.id.get(0).device.get(), "0x9038");
  const Core& core = platform.device.get(0).core.get(0);
  EXPECT_EQ(core.kernelClocks.get()->clock.get(0).name.get(), "clock 2");
  EXPECT_EQ(core.memories.get(0).instance.get(0).addrRemap.get(0).range.get(), "0x80");
  EXPECT_EQ(core.profilers.get()->instance.get(0).slot.get(0).type.get(), "slot type 1");
  const Kernel& kernel = core.kernel.get(0);
  EXPECT_EQ(kernel.name.get(), "kernel 1");
  EXPECT_EQ(kernel.module.get(0).module.get(0).module.get(0).name.get(), "module 3");
  EXPECT_EQ(kernel.fifoInformation.get(0).fifoInst.get(0).interfaceList.get(0).interface.get(),
            "interface 3");
  ASSERT_EQ(kernel.arg.count(), 2U);
  EXPECT_EQ(kernel.arg.get(0).type.get(), "std::vector<int>&");
  EXPECT_EQ(kernel.arg.get(1).addressQualifier.get(), 4294967295U);
  EXPECT_FALSE(kernel.arg.get(1).origUse.isPresent());
}

TEST(ProjectTest, WritesWhatItHasRead) {
  EXPECT_EQ(sampleProject().writeToString(), sampleDocument);
}

TEST(ProjectTest, WritesAttributesAndChildrenInTheirOrderHoweverTheyCame) {
  const Project project = readElement<Project>(
      "<project><platform><device><core><pipes/><kernel workGroupSize='1' name='k'>"
      "<arg type='t' name='a'/><port/><arg name='b'/></kernel><kernelClocks/></core></device>"
      "<version/><host/></platform></project>",
      "project");
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
  const Project project = readElement<Project>(
      "<project><platform><host architecture='a'/><description>1</description><host/>"
      "<description>2</description></platform></project>",
      "project");
  EXPECT_FALSE(project.platform.get(0).host.get()->architecture.isPresent());
  EXPECT_EQ(project.platform.get(0).description.get(), "2");
}

TEST(ProjectTest, ElementsInAWrongPlaceAreUnknownThere) {
  const Project project = readElement<Project>(
      "<project><kernel/><arg addressQualifier='x'/><platform><platform/><device><kernel>"
      "<arg addressQualifier='x'/></kernel><core><arg addressQualifier='x'/><kernel>"
      "<kernel><arg/></kernel><port><arg addressQualifier='x'/></port></kernel></core></device>"
      "</platform></project>",
      "project");
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
    EXPECT_EQ(failureOf<Project>(documentWithArg("addressQualifier='" + std::string(value) + "'"),
                                 "project"),
              "line 1: attribute is not an unsigned integer in range" +
                  (value.empty() ? "" : " (" + std::string(value) + ")"));
  }
}

TEST(ProjectTest, TakesAnAddressQualifierWithLeadingZeros) {
  const Project project =
      readElement<Project>(documentWithArg("addressQualifier='00000000004294967295'"), "project");
  const Arg& arg = project.platform.get(0).device.get(0).core.get(0).kernel.get(0).arg.get(0);
  EXPECT_EQ(arg.addressQualifier.get(), 4294967295U);
}

TEST(ProjectTest, OtherAttributesHoldAnyText) {
  EXPECT_EQ(failureOf<Project>(documentWithArg("id='x' size='-1' offset=''"), "project"), "");
}

TEST(ProjectTest, ReadsAFile) {
  const TemporaryFolder folder;
  const std::string path = folder.write("kernel.xml", sampleDocument);
  lmx::error_code errorCode = lmx::error_code::not_written;
  const Project project(path.c_str(), errorCode);
  EXPECT_EQ(errorCode, lmx::error_code::ok);
  EXPECT_TRUE(project == sampleProject());
}

TEST(ProjectTest, ReadsNothingFromAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.path("missing"), folder.path(".")}) {
    lmx::error_code errorCode = lmx::error_code::ok;
    const Project project(path.c_str(), errorCode);
    EXPECT_EQ(errorCode, lmx::error_code::file_not_opened) << path;
    EXPECT_TRUE(project == Project()) << path;
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
  EXPECT_TRUE(Project(pipe.path().c_str(), errorCode) == sampleProject());
}

TEST(ProjectTest, ReadsANamedPipeThatIsOpenAlreadyAndWhoseWriterIsDone) {
  consolidator::NamedPipe pipe;
  pipe.write(sampleDocument);
  pipe.closeWriter();
  lmx::error_code errorCode{};
  EXPECT_TRUE(Project(pipe.path().c_str(), errorCode) == sampleProject());
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
  const Project project = readElement<Project>(
      "<project xmlns='urn:d' xmlns:p='urn:p'><platform xmlns:q='urn:q'/></project>", "project");
  EXPECT_EQ(project.namespaceMap, (lmx::c_namespace_map{{"", "urn:d"}, {"p", "urn:p"}}));
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
    EXPECT_EQ(project.namespaceMap.size(), result == lmx::error_code::ok ? 1U : 0U) << document;
  }
}

}  // namespace
}  // namespace Devpack
