// The same inputs give the same bytes and the same messages in every environment.

#include "endtoend/ExecutableTest.h"
#include "endtoend/TimedRun.h"
#include "endtoend/UsageText.h"
#include "endtoend/VaddBuild.h"

#include <sys/stat.h>

#include <cstddef>
#include <string>

namespace consolidator {
namespace {

class SameBytesTest : public ExecutableTest {
 protected:
  void SetUp() override {
    options_ = "-f out -p \xC3\x84\xC4\xB0i ";
    for (const InputOption& option : inputOptions()) {
      const std::string folder = option.name.substr(2);
      ASSERT_EQ(runScript("mkdir " + folder), silence());
      write(folder + "/vadd.txt", option.text);
      options_ += option.name + " " + folder + "/vadd.txt ";
    }
    write("newer", "version: 1234567.5\n");
    write("broken", "<project>\n");
    options_ += "-h newer -k broken";
    ASSERT_EQ(runScript("ln -s \"$0\" consolidator"), silence());
    usual_ = resultOf("umask 022; exec env LC_ALL=C TZ=UTC ");
    ASSERT_EQ(usual_.dumped, storedJson(usual_.file));
    ASSERT_NE(usual_.dumped.find("\"Cond\":\"== 3 $i/state\""), std::string::npos);
  }

  // What a run on inputs of all kinds and a dump of its document come to.
  struct Result {
    Outcome outcome;
    std::string file;
    std::string dumped;
    friend bool operator==(const Result&, const Result&) = default;
  };

  // Runs after the start of a command that sets up the environment.
  Result resultOf(const std::string& setUp) const {
    remove("out");
    remove("json");
    const Outcome outcome = runScript(setUp + timed + options_);
    EXPECT_EQ(runScript(setUp + timed + "-f out -j json"), silence());
    return {outcome, read("out"), read("json")};
  }

  void expectUsual(const std::string& setUp) const {
    SCOPED_TRACE(setUp);
    const Result result = resultOf(setUp);
    EXPECT_EQ(result.outcome, complained("Unsupported hierarchy file: newer\n"
                                         "Version: 1.23457e+06\n"
                                         "Supported Version: 1\n"
                                         "Could not parse kernel file\n"));
    EXPECT_TRUE(result == usual_);
    EXPECT_EQ(runScript(setUp + timed + "--version"),
              printed("Consolidated version: 1.1\nSupported hierarchy version: 1\n"));
    EXPECT_EQ(runScript(setUp + "./consolidator --help"), printed(usageText("./consolidator")));
    EXPECT_EQ(runScript(setUp + timed + "--PROJECT"),
              printed("Unknown option: unrecognised option '--PROJECT'\n"));
  }

  unsigned modeOf(const std::string& name) const {
    struct stat status {};

    EXPECT_EQ(stat(path(name).c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

 private:
  // The document of a file whose entries are project, DWARF, document and records.
  static std::string storedJson(const std::string& file) {
    constexpr std::size_t entry = 16 + 2 * 24;
    return file.substr(numberAt(file, entry + 8, 8), numberAt(file, entry + 16, 4));
  }

  std::string options_;
  Result usual_;
};

// These two write numbers and the case of the letter i in ways of their own.
TEST_F(SameBytesTest, InEveryLocale) {
  const TemporaryFolder locales;
  const std::string all = "exec env -u LC_ALL LOCPATH=" + locales.path("") + " ";
  for (const std::string language : {"de_DE", "tr_TR"}) {
    const std::string name = language + ".UTF-8";
    runScript("localedef -i " + language + " -f UTF-8 " + locales.path(name));
    if (runScript(all + "LC_ALL=" + name + " printf %.1f 1,5") != printed("1,5")) {
      GTEST_SKIP() << "the locale " << name << " cannot be made here";
    }
    expectUsual(all + "LC_ALL=" + name + " ");
    expectUsual(all + "LANG=" + name + " ");
  }
  expectUsual("exec env LC_ALL=no_SUCH.locale ");
  expectUsual("exec env -u LC_ALL -u LANG ");
}

TEST_F(SameBytesTest, InEveryTimeZone) {
  for (const std::string zone : {"", "Asia/Kathmandu", "XYZ-13:45", ":/dev/null"}) {
    expectUsual("exec env TZ=" + zone + " ");
  }
}

TEST_F(SameBytesTest, ForEveryTerminal) {
  expectUsual("exec env COLUMNS=20 LINES=5 TERM=dumb POSIXLY_CORRECT=1 ");
}

TEST_F(SameBytesTest, WithEveryUmaskWhichTellsTheModesOfNewFiles) {
  expectUsual("umask 000; exec ");
  EXPECT_EQ(modeOf("out"), 0666U);
  EXPECT_EQ(modeOf("json"), 0666U);
  expectUsual("umask 077; exec ");
  EXPECT_EQ(modeOf("out"), 0600U);
  EXPECT_EQ(modeOf("json"), 0600U);
}

TEST_F(SameBytesTest, AFileThatIsThereKeepsItsMode) {
  ASSERT_EQ(chmod(path("out").c_str(), 0640), 0);
  EXPECT_EQ(runScript("umask 000; exec " + timed + "-f out -h missing"), silence());
  EXPECT_EQ(modeOf("out"), 0640U);
}

TEST_F(SameBytesTest, WithoutAnEnvironment) { expectUsual("exec env -i PATH=\"$PATH\" "); }

}  // namespace
}  // namespace consolidator
