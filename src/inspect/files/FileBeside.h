#pragma once

#include <sys/types.h>

#include <string>

namespace consolidator::inspect {

/// The file that a name leads to once symbolic links are followed, also when there is nothing yet.
std::string placeOf(const std::string& path);

/// The name of the lock of a place, which is in the same folder.
std::string lockNameOf(const std::string& place);

/// Removes what killed processes left beside a place; what living ones are at work on stays.
void removeLeftovers(const std::string& place);

/// A new file in the folder of a place, which takes the place in the end. It is named
/// ".NAME.consolidator-..." until then.
class FileBeside {
 public:
  /// Creates the file. See descriptor() and error().
  FileBeside(std::string place, mode_t mode);
  FileBeside(FileBeside&& other) noexcept;
  FileBeside& operator=(FileBeside&& other) = delete;

  /// Closes the file and removes it unless it took the place.
  ~FileBeside();

  const std::string& place() const { return place_; }

  const std::string& path() const { return path_; }

  /// To write to; negative after an error.
  int descriptor() const { return descriptor_; }

  /// The system's error number of what failed first, or 0.
  int error() const { return error_; }

  /// Closes the file and gives it the name of the place. Returns whether that and all before was
  /// done.
  bool takePlace();

 private:
  bool isLockedByName() const;
  void note(bool isDone);

  std::string place_;
  std::string path_;  // empty where there is nothing to remove
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace consolidator::inspect
