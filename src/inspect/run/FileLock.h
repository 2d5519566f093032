#pragma once

#include <string>

namespace consolidator::inspect {

/// A lock by a file of its own, which is removed with the lock. The system gives it up when the
/// process ends, however it ends.
class FileLock {
 public:
  /// Waits until no other process has the lock of that name. See isHeld().
  explicit FileLock(std::string path);
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock();

  bool isHeld() const { return descriptor_ >= 0; }

  /// The system's error number of why it is not held.
  int error() const { return error_; }

 private:
  bool isNamed() const;

  std::string path_;
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace consolidator::inspect
