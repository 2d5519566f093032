#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace consolidator {

/// Collects what is written to std::cout and std::cerr while it lives, each apart.
class StreamCapture {
 public:
  StreamCapture()
      : shownOut_(std::cout.rdbuf(out_.rdbuf())), shownErr_(std::cerr.rdbuf(err_.rdbuf())) {}

  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  ~StreamCapture() {
    std::cout.rdbuf(shownOut_);
    std::cerr.rdbuf(shownErr_);
  }

  std::string out() const { return out_.str(); }

  std::string err() const { return err_.str(); }

 private:
  std::ostringstream out_;
  std::ostringstream err_;
  std::streambuf* shownOut_;
  std::streambuf* shownErr_;
};

}  // namespace consolidator
