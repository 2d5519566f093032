#include "inspect/lines/LimitedChild.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <optional>

namespace consolidator::inspect {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view cannotStart = "no process can be started for it";

// Limits that are stricter already stay.
bool limitTo(rlim_t most, __rlimit_resource resource) {
  rlimit now{};
  if (::getrlimit(resource, &now) != 0) return false;
  now.rlim_max = std::min(now.rlim_max, most);
  now.rlim_cur = now.rlim_max;
  return ::setrlimit(resource, &now) == 0;
}

// The address space that this process has, of which a mapped file or a sanitizer may be the most.
rlim_t addressSpace() {
  std::uint64_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

// The descriptors that are open stay so.
bool limitChild(const ChildLimits& limits, pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) return false;
  const int nullDevice = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  return ::dup2(nullDevice, STDERR_FILENO) >= 0 && limitTo(0, RLIMIT_CORE) &&
         limitTo(static_cast<rlim_t>(limits.processor.count()), RLIMIT_CPU) &&
         limitTo(addressSpace() + limits.memory, RLIMIT_AS) && limitTo(0, RLIMIT_NOFILE);
}

// Anything that is thrown ends the child, too.
[[noreturn]] void beChild(const ChildLimits& limits, pid_t parent,
                          const std::function<bool(int)>& work, int output) noexcept {
  // Nothing of what the parent holds back may be written twice.
  ::_exit(limitChild(limits, parent) && work(output) ? 0 : 1);
}

// Waits until there is something to read, or the end. Returns false once the time is over.
bool waitForInput(int input, Clock::time_point end) {
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waiting{input, POLLIN, 0};
    const int ready =
        ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

// Reads to the end; returns why it cannot.
std::string readAnswer(int input, const ChildLimits& limits, std::string& bytes) {
  const Clock::time_point end = Clock::now() + limits.clock;
  std::array<char, 65536> block{};
  while (waitForInput(input, end)) {
    const ssize_t count = ::read(input, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return "its answer cannot be read";
    if (count == 0) return {};
    bytes.append(block.data(), static_cast<std::size_t>(count));
    if (bytes.size() > limits.answer) return "it holds too much";
  }
  return fmt::format("reading it takes more than {} seconds", limits.clock.count());
}

std::string failureOf(int status, const ChildLimits& limits) {
  if (WIFEXITED(status)) return WEXITSTATUS(status) == 0 ? "" : "reading it fails";
  const int signal = WTERMSIG(status);
  // The system sends the second where the first does not end a process.
  if (signal == SIGXCPU || signal == SIGKILL) {
    return fmt::format("reading it takes more than {} seconds", limits.processor.count());
  }
  if (signal == SIGABRT) return "reading it takes too much memory";
  return fmt::format("reading it ends with signal {}", signal);
}

int waitForEnd(pid_t child) {
  int status = 1;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

ChildAnswer awaitAnswer(pid_t child, int input, const ChildLimits& limits) {
  ChildAnswer answer;
  answer.failure = readAnswer(input, limits, answer.bytes);
  if (!answer.failure.empty()) ::kill(child, SIGKILL);
  const int status = waitForEnd(child);
  if (answer.failure.empty()) answer.failure = failureOf(status, limits);
  if (!answer.failure.empty()) answer.bytes.clear();
  return answer;
}

}  // namespace

ChildAnswer runLimited(const ChildLimits& limits, const std::function<bool(int)>& work) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return {{}, std::string(cannotStart)};
  const auto [input, output] = ends;
  // Where that signal is ignored, as it may be by what starts this process, no status is kept.
  const auto onChild = std::signal(SIGCHLD, SIG_DFL);
  const pid_t parent = ::getpid();
  const pid_t child = ::fork();
  if (child == 0) beChild(limits, parent, work, output);
  ::close(output);
  ChildAnswer answer{{}, std::string(cannotStart)};
  if (child > 0) answer = awaitAnswer(child, input, limits);
  ::close(input);
  static_cast<void>(std::signal(SIGCHLD, onChild));
  return answer;
}

}  // namespace consolidator::inspect
