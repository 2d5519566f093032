#pragma once

#include "inspect/output/OutputSink.h"

#include <string_view>

namespace consolidator::inspect {

/// The messages of a command on standard error: one line each, which begins with the program's
/// name. Texts from files must have gone through plain().
class Messages {
 public:
  /// Writes to a descriptor, which stays the caller's.
  explicit Messages(int descriptor) : out_(descriptor) {}

  /// Writes a line at once.
  void say(std::string_view message);

 private:
  OutputSink out_;
};

}  // namespace consolidator::inspect
