#include "inspect/InspectRun.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {
namespace {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(ShowCommand, ShowsHeaderSectionsAndKernelsWithTheirCounts) {
  const std::string bytes = fullContainer();
  const Outcome shown = inspectBytes(bytes, {"show", "FILE"});
  EXPECT_EQ(shown.status, 0);
  EXPECT_EQ(shown.err, "");
  EXPECT_TRUE(contains(shown.out, "FILE\n  version: 1.1\n  size: " + std::to_string(bytes.size()) +
                                      " bytes\n\nSections: 5\n"))
      << shown.out;
  EXPECT_TRUE(contains(shown.out, "        0x88           4    0.8%  project_name (0)\n"))
      << shown.out;
  EXPECT_TRUE(contains(shown.out, "Project: \"name\"\nDWARF: 14 bytes at 0x8c\n")) << shown.out;
  EXPECT_TRUE(contains(shown.out,
                       "  OpenCL          1          2          1          1          2           3"
                       "      2  second\n  2 in all\n\nComplete: yes\n"))
      << shown.out;
}

TEST(ShowCommand, ShowsKernelsInFull) {
  const Outcome shown =
      inspectBytes(fullContainer(), {"show", "--kernel", "second", "FILE", "--kernel=first"});
  EXPECT_EQ(shown.status, 0);
  EXPECT_TRUE(contains(shown.out, "Kernel first\n  type: HLS (4)\n")) << shown.out;
  EXPECT_TRUE(contains(shown.out, "    0: /top/first_1\n    1: /top/first_2\n")) << shown.out;
  EXPECT_TRUE(contains(shown.out,
                       "    a: int*, 64 bits, register a_r\n"
                       "      2 bits in instance 0\n"
                       "             0: 0x1:2 0x3:4\n"
                       "      0 bits in instance 1\n"
                       "    x: char, 8 bits, register \n"))
      << shown.out;
  EXPECT_TRUE(contains(shown.out, "    reg: 2 bits\n           0: 0x5:6 0x7:8\n")) << shown.out;
  EXPECT_TRUE(contains(shown.out,
                       "    start: (x == 1)\n    stop: (1'b1 == 1'b1)\n"
                       "    source_line k.c:42: y & z\n"))
      << shown.out;
}

TEST(ShowCommand, FailsForAKernelThatIsNotThere) {
  EXPECT_EQ(inspectBytes(fullContainer(), {"show", "--kernel", "third", "FILE"}),
            (Outcome{1, "", said("FILE: there is no kernel \"third\"")}));
}

TEST(ShowCommand, ShowsWhatThereIsOfAnIncompleteFile) {
  const std::string bytes = fullContainer();
  const Outcome shown = inspectBytes(bytes.substr(0, bytes.size() - 10), {"show", "FILE"});
  EXPECT_EQ(shown.status, 1);
  EXPECT_TRUE(contains(shown.out, "  1 in all\n\nComplete: no; ")) << shown.out;
}

TEST(ShowCommand, TellsHowManySectionsAreClaimed) {
  const Outcome shown = inspectBytes(header(70000), {"show", "FILE"});
  EXPECT_EQ(shown.status, 1);
  EXPECT_TRUE(contains(shown.out, "Sections: 0 of the 70000 that the header claims\n"));
}

TEST(ShowCommand, WarnsOfANewerVersion) {
  const Outcome shown = inspectBytes(header(0, 2, 5), {"show", "FILE"});
  EXPECT_EQ(shown.status, 0);
  EXPECT_EQ(shown.err, said("FILE: written by a newer version (2.5); consolidator refuses it"));
}

TEST(ShowCommand, ColoursOnlyWhereColoursAreTaken) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", fullContainer());
  EXPECT_TRUE(contains(inspect({"show", file}, true).out, "\x1B[1m"));
  EXPECT_FALSE(contains(inspect({"show", file}, false).out, "\x1B"));
}

}  // namespace
}  // namespace consolidator::inspect
