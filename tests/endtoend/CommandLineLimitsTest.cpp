// What the longest command lines cost that the system lets in.

#include "endtoend/ExecutableTest.h"
#include "endtoend/UsageText.h"
#include "support/Rounds.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

// The longest word that the system lets in, its zero byte included, is this long.
constexpr std::size_t longestWord = std::size_t{128} * 1024;

// How many bytes there are for words and pointers to them, beside the environment and a reserve.
// Builds that check each step get fewer.
std::size_t room() {
  std::size_t taken = std::size_t{64} * 1024;
  for (char** text = environ; *text != nullptr; ++text) {
    taken += std::strlen(*text) + 1 + sizeof(char*);
  }
  const std::size_t all = static_cast<std::size_t>(sysconf(_SC_ARG_MAX)) - taken;
  return std::max(all * static_cast<std::size_t>(rounds(20)) / 20, 3 * longestWord);
}

std::size_t roomOf(const std::string& word) { return word.size() + 1 + sizeof(char*); }

// Sanitizers make a run take several times as long.
#ifdef CONSOLIDATOR_ALLOCATION_FAULTS
constexpr double longestTime = 1;
#else
constexpr double longestTime = 10;
#endif

class CommandLineLimitsTest : public ExecutableTest {
 protected:
  // The words, as often as they go on a command line after these.
  static Arguments filledUp(Arguments start, const Arguments& words) {
    std::size_t size = 0;
    for (const std::string& word : words) size += roomOf(word);
    std::size_t left = room();
    for (const std::string& word : start) left -= roomOf(word);
    for (; left > size; left -= size) start.insert(start.end(), words.begin(), words.end());
    return start;
  }

  // Expects a run on such a command line to say this and to take no longer than a second.
  void expectInTime(const Outcome& expected, const Arguments& start, const Arguments& words) const {
    const ExecutableRun run = this->start(filledUp(start, words));
    EXPECT_EQ(run.outcome(), expected) << words.front().substr(0, 20);
    EXPECT_LT(run.processorTime(), longestTime) << words.front().substr(0, 20);
  }
};

TEST_F(CommandLineLimitsTest, InputsTakeNoLongerThanASecond) {
  const Outcome expected =
      printed("Error: A consolidated file must be specified\n" + std::string(usageText()));
  for (const Arguments& words :
       {Arguments{"-hx"}, Arguments{"-k", ""}, Arguments{"-k", "--"}, Arguments{"-l", "-z"},
        Arguments{"--kernel=x"}, Arguments{"--ker=x"}, Arguments{"--hls", "--x"},
        Arguments{"-x" + std::string(longestWord - 3, 'x')},
        Arguments{"-r", "-" + std::string(longestWord - 2, 'a')},
        Arguments{"--ra=" + std::string(longestWord - 6, '=')}}) {
    expectInTime(expected, {}, words);
  }
}

TEST_F(CommandLineLimitsTest, InputsThatAreMissingTakeNoLongerThanASecond) {
  expectInTime(silence(), {"-c", "-f", "out"}, {"-kx"});
}

TEST_F(CommandLineLimitsTest, RepetitionsTakeNoLongerThanASecond) {
  const auto repeated = [](const std::string& name) {
    return printed("Unsupported multiple occurrences of : --" + name + "\n");
  };
  expectInTime(repeated("add"), {}, {"-a"});
  expectInTime(repeated("create"), {}, {"--create"});
  expectInTime(repeated("version"), {}, {"-va"});
  expectInTime(repeated("add"), {"-v"}, {"-" + std::string(longestWord - 2, 'a')});
  expectInTime(repeated("project"), {}, {"-px"});
}

TEST_F(CommandLineLimitsTest, WordsThatAreWrongTakeNoLongerThanASecond) {
  const std::string message = "Unknown option: unrecognised option '";
  for (const std::string& word :
       {"--" + std::string(longestWord - 3, 'x'), "-" + std::string(longestWord - 3, 'a') + "z",
        "-a" + std::string(longestWord - 3, '%'), "--" + std::string(longestWord - 3, '-')}) {
    expectInTime(printed(message + word + "'\n"), {}, {word});
  }
  std::string prefixes = "--";
  while (prefixes.size() + 8 < longestWord) prefixes += "%prefix%";
  expectInTime(printed(message + std::string(2 + (prefixes.size() - 2) / 4, '-') + "'\n"), {},
               {prefixes});
}

TEST_F(CommandLineLimitsTest, BareWordsTakeNoLongerThanASecond) {
  const Outcome expected = printed(
      "Unknown option: too many positional options have been specified on the command line\n");
  for (const std::string word : {"", "x", "-", "--", "--=x"}) {
    expectInTime(expected, {"-h", "x"}, {word});
  }
  expectInTime(expected, {"--"}, {"-hx"});
}

}  // namespace
}  // namespace consolidator
