#include "inspect/explain/Progress.h"

#include "inspect/output/PlainText.h"

#include <fmt/format.h>
#include <unistd.h>

#include <string>

namespace consolidator::inspect {

namespace {

constexpr std::string_view clearLine = "\r\x1B[K";

void writeToTerminal(std::string_view text) {
  static_cast<void>(::write(STDERR_FILENO, text.data(), text.size()) < 0);
}

}  // namespace

Progress::Progress()
    : next_(Clock::now() + std::chrono::seconds(1)), isTerminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (hasSaid_) writeToTerminal(clearLine);
}

void Progress::say(std::string_view path, std::uint64_t bytes) {
  constexpr std::uint64_t megabyte = 1'000'000;
  constexpr std::chrono::milliseconds pause(200);
  if (!isTerminal_ || Clock::now() < next_) return;
  next_ = Clock::now() + pause;
  hasSaid_ = true;
  writeToTerminal(fmt::format("{}{}: {} MB", clearLine, plain(path), bytes / megabyte));
}

}  // namespace consolidator::inspect
