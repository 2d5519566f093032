#include "endtoend/ExecutableRun.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <system_error>

namespace consolidator {

namespace {

void check(int error, const std::string& action) {
  if (error != 0) throw std::system_error(error, std::generic_category(), action);
}

double seconds(timeval time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// What the new process does before it becomes the program.
class SpawnActions {
 public:
  SpawnActions() { check(posix_spawn_file_actions_init(&actions_), "spawn actions"); }

  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

  void enter(const std::string& folder) {
    check(posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()), folder);
  }

  void readNothing() {
    check(posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0),
          "/dev/null");
  }

  void redirect(int descriptor, int to) {
    check(posix_spawn_file_actions_adddup2(&actions_, to, descriptor), "redirection");
  }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

pid_t spawnInOwnGroup(const std::string& path, const std::vector<std::string>& arguments,
                      const SpawnActions& actions) {
  std::vector<std::string> words = arguments;
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  posix_spawnattr_t attributes;
  check(posix_spawnattr_init(&attributes), "spawn attributes");
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  pid_t process = -1;
  const int error =
      posix_spawn(&process, path.c_str(), actions.get(), &attributes, pointers.data(), environ);
  posix_spawnattr_destroy(&attributes);
  check(error, path);
  return process;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
  return stream << "status " << outcome.status << "\n--- standard output\n"
                << outcome.out << "--- standard error\n"
                << outcome.err << "---";
}

ExecutableRun::ExecutableRun(const std::string& path, const std::vector<std::string>& arguments,
                             const std::string& folder) {
  std::array<Pipe, 2> pipes;
  SpawnActions actions;
  actions.enter(folder);
  actions.readNothing();
  for (std::size_t i = 0; i < pipes.size(); ++i) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) check(errno, "pipe");
    pipes[i] = {ends[0], ends[1]};
    actions.redirect(i == 0 ? STDOUT_FILENO : STDERR_FILENO, pipes[i].writeEnd);
  }
  process_ = spawnInOwnGroup(path, arguments, actions);
  const rlimit limit{cpuLimit, cpuLimit};
  if (prlimit(process_, RLIMIT_CPU, &limit, nullptr) != 0) check(errno, "limit");
  for (Pipe& pipe : pipes) close(pipe.writeEnd);
  collectOutput(pipes);
  awaitEnd();
}

// Reads both pipes until everybody who could write to them is gone.
void ExecutableRun::collectOutput(std::array<Pipe, 2>& pipes) {
  const auto deadline = std::chrono::steady_clock::now() + timeLimit;
  const std::array<std::string*, 2> texts{&outcome_.out, &outcome_.err};
  std::array<pollfd, 2> waiting{pollfd{pipes[0].readEnd, POLLIN, 0},
                                pollfd{pipes[1].readEnd, POLLIN, 0}};
  while (std::any_of(waiting.begin(), waiting.end(), [](pollfd p) { return p.fd >= 0; })) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    const int timeout = static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
    if (poll(waiting.data(), waiting.size(), timeout) == 0) kill(-process_, SIGKILL);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (waiting[i].fd < 0 || waiting[i].revents == 0) continue;
      std::array<char, 65536> block;
      const ssize_t got = read(waiting[i].fd, block.data(), block.size());
      if (got > 0) {
        texts[i]->append(block.data(), static_cast<std::size_t>(got));
      } else {
        close(waiting[i].fd);
        waiting[i].fd = -1;
      }
    }
  }
}

void ExecutableRun::awaitEnd() {
  int status = 0;
  rusage usage{};
  while (wait4(process_, &status, 0, &usage) < 0) {
    if (errno != EINTR) check(errno, "wait");
  }
  outcome_.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  peakMemory_ = usage.ru_maxrss;
  processorTime_ = seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace consolidator
