#pragma once

#include "consolidated/StdioFile.h"

#include <sys/types.h>

#include <memory>
#include <string_view>

namespace consolidator::inspect {

/// Takes the bytes that a stream is given.
class StreamTarget {
 public:
  StreamTarget() = default;
  StreamTarget(const StreamTarget&) = delete;
  StreamTarget& operator=(const StreamTarget&) = delete;
  virtual ~StreamTarget() = default;

  /// Takes bytes that belong at this offset. Returns whether it took them all; the system's error
  /// number tells why not.
  virtual bool take(off64_t offset, std::string_view bytes) = 0;
};

/// A stream that is written and positioned like a file and gives all bytes to the target. Null when
/// there is no memory for one.
StdioFile openTargetStream(std::unique_ptr<StreamTarget> target);

}  // namespace consolidator::inspect
