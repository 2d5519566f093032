#include "ProcessRunner.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>

namespace consolidator {

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Starts a program in the way that charges it least for its parent: without a copy of the parent's
// page tables. Returns its id, or -1.
pid_t start(const std::vector<std::string>& words, int output) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  pid_t child = -1;
  const int error =
      posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? child : -1;
}

}  // namespace

ProcessRunner::ProcessRunner() : output_(memfd_create("output", MFD_CLOEXEC)) {}

ProcessRunner::~ProcessRunner() {
  if (output_ >= 0) close(output_);
}

std::optional<ProcessCost> ProcessRunner::run(const std::vector<std::string>& words) const {
  int status = 0;
  rusage usage{};
  const pid_t child = start(words, output_);
  if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) != 0) {
    std::cerr << "Failed:";
    for (const std::string& word : words) std::cerr << ' ' << word;
    std::cerr << std::endl;
    return std::nullopt;
  }
  return ProcessCost{seconds(usage.ru_utime) + seconds(usage.ru_stime),
                     static_cast<std::uint64_t>(usage.ru_maxrss) * 1024};
}

}  // namespace consolidator
