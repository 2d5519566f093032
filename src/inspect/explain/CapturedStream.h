#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace consolidator::inspect {

/// Takes what is printed on a standard stream in its lifetime.
class CapturedStream {
 public:
  explicit CapturedStream(std::ostream& stream) : stream_(stream), own_(stream.rdbuf()) {
    stream.rdbuf(text_.rdbuf());
  }

  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;

  ~CapturedStream() { stream_.rdbuf(own_); }

  std::string text() const { return text_.str(); }

 private:
  std::ostream& stream_;
  std::streambuf* own_;
  std::ostringstream text_;
};

}  // namespace consolidator::inspect
