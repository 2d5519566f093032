#include "endtoend/ExecutableTest.h"
#include "endtoend/UsageText.h"

#include <string>

namespace consolidator {
namespace {

const char* const versionText =
    "Consolidated version: 1.1\n"
    "Supported hierarchy version: 1\n";

class VersionAndHelpTest : public ExecutableTest {};

TEST_F(VersionAndHelpTest, VersionIsTwoLines) {
  EXPECT_EQ(run({"--version"}), printed(versionText));
  EXPECT_EQ(run({"-v"}), printed(versionText));
}

TEST_F(VersionAndHelpTest, VersionLooksAtNoOtherOption) {
  write("old", "kept");
  EXPECT_EQ(run({"-v", "-c", "-f", "old", "-h", "missing", "-p", "name"}), printed(versionText));
  EXPECT_EQ(run({"-v", "-f", "old", "-j", "json", "-u", "dwarf"}), printed(versionText));
  EXPECT_TRUE(folderHolds({{"old", "kept"}}));
}

TEST_F(VersionAndHelpTest, HelpIsTheUsageText) { EXPECT_EQ(run({"--help"}), printed(usageText())); }

TEST_F(VersionAndHelpTest, HelpLooksAtNoOtherOption) {
  write("old", "kept");
  EXPECT_EQ(run({"--help", "-c", "-f", "old", "-h", "missing"}), printed(usageText()));
  EXPECT_EQ(run({"--help", "-f", "old", "-j", "json"}), printed(usageText()));
  EXPECT_TRUE(folderHolds({{"old", "kept"}}));
}

TEST_F(VersionAndHelpTest, HelpWinsOverVersion) {
  EXPECT_EQ(run({"--version", "--help"}), printed(usageText()));
  EXPECT_EQ(run({"--help", "-v"}), printed(usageText()));
}

TEST_F(VersionAndHelpTest, UsageNamesTheProgramAsItWasStarted) {
  for (const std::string name : {"./some folder/tool", "/opt/tool", "%s", ""}) {
    EXPECT_EQ(start({"--help"}, name).outcome(), printed(usageText(name)));
  }
}

}  // namespace
}  // namespace consolidator
