#pragma once

#include "NamedPipe.h"

#include <pthread.h>

#include <chrono>
#include <csignal>
#include <string>
#include <string_view>
#include <thread>

namespace consolidator {

/// A named pipe into which a thread writes bytes, but only after signals that interrupt the thread
/// that made the pipe, which should wait for the bytes by then. One at a time, since it takes over
/// SIGUSR1.
class InterruptedPipe {
 public:
  /// The bytes must outlive the pipe.
  explicit InterruptedPipe(std::string_view bytes) {
    struct sigaction action {};  // does not start interrupted calls again

    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, &before_);
    writer_ = std::thread([this, bytes, reader = pthread_self()] {
      for (int signals = 0; signals < 3; ++signals) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        pthread_kill(reader, SIGUSR1);
      }
      pipe_.write(bytes);
      pipe_.closeWriter();
    });
  }

  InterruptedPipe(const InterruptedPipe&) = delete;
  InterruptedPipe& operator=(const InterruptedPipe&) = delete;

  ~InterruptedPipe() {
    writer_.join();
    sigaction(SIGUSR1, &before_, nullptr);
  }

  const std::string& path() const { return pipe_.path(); }

 private:
  NamedPipe pipe_;

  struct sigaction before_ {};

  std::thread writer_;
};

}  // namespace consolidator
