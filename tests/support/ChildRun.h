#pragma once

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <string>
#include <system_error>

namespace consolidator {

/// What a process returned and printed.
struct ChildResult {
  int status = -1;  ///< exit status; -1 when a signal ended it
  std::string out;  ///< standard output
  std::string err;  ///< standard error

  friend bool operator==(const ChildResult&, const ChildResult&) = default;
};

inline std::ostream& operator<<(std::ostream& out, const ChildResult& result) {
  return out << "status " << result.status << "\n--- out\n"
             << result.out << "--- err\n"
             << result.err;
}

/// Calls `run` in a process of its own, for functions that end the process. When `run` returns, the
/// exit status is `returned`.
template <typename Run>
ChildResult runInChild(Run run, int returned = 99) {
  const TemporaryFolder folder;
  std::cout.flush();
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) {
    constexpr mode_t mode = 0600;
    dup2(creat(folder.path("out").c_str(), mode), STDOUT_FILENO);
    dup2(creat(folder.path("err").c_str(), mode), STDERR_FILENO);
    run();
    std::cout.flush();
    std::fflush(nullptr);
    _exit(returned);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read("out"), folder.read("err")};
}

}  // namespace consolidator
