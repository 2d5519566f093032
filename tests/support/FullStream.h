#pragma once

#include <sys/types.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace consolidator {

/// An unbuffered stdio stream for writing that takes a limited number of bytes and no more.
class FullStream {
 public:
  explicit FullStream(std::size_t capacity) : left_(capacity) {
    cookie_io_functions_t functions{};
    functions.write = [](void* self, const char*, std::size_t size) {
      return static_cast<FullStream*>(self)->take(size);
    };
    stream_ = fopencookie(this, "w", functions);
    std::setvbuf(stream_, nullptr, _IONBF, 0);
  }

  FullStream(const FullStream&) = delete;
  FullStream& operator=(const FullStream&) = delete;

  ~FullStream() { std::fclose(stream_); }

  std::FILE* get() const { return stream_; }

 private:
  ssize_t take(std::size_t size) {
    const std::size_t taken = std::min(size, left_);
    left_ -= taken;
    return static_cast<ssize_t>(taken);
  }

  std::size_t left_;
  std::FILE* stream_ = nullptr;
};

}  // namespace consolidator
