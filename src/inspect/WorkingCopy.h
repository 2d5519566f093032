#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <variant>

namespace consolidator::inspect {

class FileLock;

/// A copy of a file, beside it, to work on, which takes the file's name in the end. Whatever
/// happens until then, the process being killed included, the name stands for the old file, whole;
/// from then on for the new one, whole and on the disk.
///
/// Symbolic links are followed. Processes that make working copies of one file wait for one
/// another. What a killed one leaves is named ".NAME.consolidator-*" and is removed by the next.
class WorkingCopy {
 public:
  /// Why there is no working copy: a sentence without the file's name.
  struct Refusal {
    std::string reason;
  };

  /// Copies the file, which may be missing; then the copy is empty. Refuses what is neither regular
  /// nor missing, a file with several hard links, since the others would keep the old contents, and
  /// one whose owner, mode or attributes the copy cannot have.
  static std::variant<WorkingCopy, Refusal> make(const std::string& path);

  WorkingCopy(WorkingCopy&& other) noexcept;
  WorkingCopy& operator=(WorkingCopy&& other) = delete;

  /// Removes the copy unless it took the name.
  ~WorkingCopy();

  /// Name of the copy.
  const std::string& path() const { return copy_; }

  /// Name of the file once links are followed.
  const std::string& place() const { return place_; }

  /// Gives the copy the file's name once its bytes are on the disk. Returns an empty text, or why
  /// nothing happened: the file is another one by now, or has other contents, or the system says
  /// no.
  std::string takeName();

 private:
  WorkingCopy(std::string place, std::unique_ptr<FileLock> lock);

  std::string fill();
  std::string copyContents(int from);
  bool isUnchanged() const;

  std::string place_;
  std::string copy_;
  bool exists_ = false;

  struct stat old_ {};

  std::unique_ptr<FileLock> lock_;
};

}  // namespace consolidator::inspect
