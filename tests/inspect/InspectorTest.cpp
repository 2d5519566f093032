#include "inspect/InspectRun.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {
namespace {

TEST(InspectorTest, WantsACommand) {
  EXPECT_EQ(inspect({}),
            (Outcome{2, "", said("a command is missing (see \"consolidator-inspect --help\")")}));
}

TEST(InspectorTest, ListsAllCommands) {
  for (const char* const option : {"--help", "-h"}) {
    const Outcome help = inspect({option});
    EXPECT_EQ(help.status, 0);
    for (const std::string command : {"show", "json", "extract", "find", "verify", "diff",
                                      "coverage", "explain", "run", "report", "sql"}) {
      EXPECT_NE(help.out.find("\n  " + command + " "), std::string::npos) << command;
      EXPECT_EQ(inspect({command, "--help"}).status, 0);
    }
  }
}

TEST(InspectorTest, TellsItsVersion) {
  const Outcome version = inspect({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(version.out.starts_with("consolidator-inspect (consolidator) ")) << version.out;
}

TEST(InspectorTest, RefusesUnknownCommands) {
  const Outcome refused = inspect({"shwo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("shwo"), std::string::npos);
}

// A program that asked for a document gets one; where a command has none, it gets the message.
TEST(InspectorTest, AnswersWrongOptionsWithADocumentWhereOneIsAskedFor) {
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"find", "--format=json", "--wrong"},
                                             {"find", "--wrong", "--format", "json"},
                                             {"json", "--wrong"}}) {
    const Outcome refused = inspect(words);
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.out.find(R"("error":{"code":"usage")"), std::string::npos) << words[1];
  }
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"find", "--wrong"},
                                             {"find", "--wrong", "--", "--format=json"},
                                             {"find", "--wrong", "--format"},
                                             {"find", "--wrong", "--format", "text"},
                                             {"show", "--wrong", "--format=json"}}) {
    const Outcome refused = inspect(words);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, "") << words.back();
    EXPECT_NE(refused.err, "");
  }
}

// "script" gives a program a terminal.
TEST(InspectorTest, ColoursOnlyWhatATerminalShows) {
  const TemporaryFolder folder;
  folder.write("file", fullContainer());
  const auto hasColour = [&](const std::string& environment, const std::string& redirection) {
    const std::string script =
        environment + " script -qec \"$INSPECT show file" + redirection + "\" /dev/null";
    return startInspectScript(script, folder.path("")).outcome().out.find('\x1B') !=
           std::string::npos;
  };
  EXPECT_TRUE(hasColour("", ""));
  EXPECT_TRUE(hasColour("NO_COLOR=", ""));
  EXPECT_FALSE(hasColour("NO_COLOR=1", ""));
  EXPECT_FALSE(hasColour("", " | cat"));
}

}  // namespace
}  // namespace consolidator::inspect
