#include "inspect/explain/Progress.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace consolidator::inspect {
namespace {

// Standard error of this process is a terminal while this lives.
class TerminalAsError {
 public:
  TerminalAsError() : terminal_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)), own_(dup(2)) {
    grantpt(terminal_);
    unlockpt(terminal_);
    const int end = open(ptsname(terminal_), O_RDWR | O_NOCTTY);
    dup2(end, 2);
    close(end);
  }

  TerminalAsError(const TerminalAsError&) = delete;
  TerminalAsError& operator=(const TerminalAsError&) = delete;

  ~TerminalAsError() {
    dup2(own_, 2);
    close(own_);
    close(terminal_);
  }

  // What was written since the last call.
  std::string shown() const {
    std::array<char, 1024> block{};
    const ssize_t got = read(terminal_, block.data(), block.size());
    return {block.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
  }

 private:
  int terminal_;
  int own_;
};

TEST(Progress, SpeaksAfterASecondAndRemovesWhatItSaid) {
  const TerminalAsError terminal;
  {
    Progress progress;
    progress.say("path", 5'000'000);
    EXPECT_EQ(terminal.shown(), "");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    progress.say("pa\x1Bth", 5'000'000);
    progress.say("path", 6'000'000);
    const std::string shown = terminal.shown();
    EXPECT_TRUE(shown.starts_with("\r\x1B[Kpa")) << shown;
    EXPECT_TRUE(shown.ends_with("th: 5 MB")) << shown;
  }
  EXPECT_EQ(terminal.shown(), "\r\x1B[K");
}

TEST(Progress, IsSilentInAShortRun) {
  const TerminalAsError terminal;
  { Progress().say("path", 5'000'000); }
  EXPECT_EQ(terminal.shown(), "");
}

}  // namespace
}  // namespace consolidator::inspect
