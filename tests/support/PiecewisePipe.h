#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace consolidator {

/// A pipe whose writer is done and which hands out its bytes in given pieces: every read returns
/// one piece, or its start when less is asked for (the rest of the piece is lost then).
class PiecewisePipe {
 public:
  static constexpr std::size_t largestPiece = 4096;  // what the kernel keeps together
  static constexpr std::size_t mostPieces = 256;     // what a pipe of 1 MiB takes

  explicit PiecewisePipe(const std::vector<std::string_view>& pieces) {
    constexpr int capacity = 1024 * 1024;
    if (pipe2(ends_.data(), O_CLOEXEC | O_DIRECT) != 0) fail();
    if (fcntl(ends_[1], F_SETPIPE_SZ, capacity) < 0) fail();
    for (const std::string_view piece : pieces) {
      if (piece.empty()) continue;
      if (write(ends_[1], piece.data(), piece.size()) != static_cast<ssize_t>(piece.size())) fail();
    }
    close(ends_[1]);
  }

  PiecewisePipe(const PiecewisePipe&) = delete;
  PiecewisePipe& operator=(const PiecewisePipe&) = delete;

  ~PiecewisePipe() { close(ends_[0]); }

  /// A file name under which the pipe can be opened for reading, once.
  std::string path() const { return "/proc/self/fd/" + std::to_string(ends_[0]); }

 private:
  [[noreturn]] static void fail() {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }

  std::array<int, 2> ends_{};
};

/// Cuts a text into pieces of `size` bytes, the last one shorter; larger ones when there would be
/// more pieces than a pipe takes.
inline std::vector<std::string_view> pieces(std::string_view text, std::size_t size) {
  const std::size_t enough = text.size() / PiecewisePipe::mostPieces + 1;
  const std::size_t step = size < enough ? enough : size;
  std::vector<std::string_view> result;
  for (std::size_t start = 0; start < text.size(); start += step) {
    result.push_back(text.substr(start, step));
  }
  return result;
}

}  // namespace consolidator
