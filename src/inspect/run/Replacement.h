#pragma once

#include "inspect/files/FileBeside.h"
#include "inspect/run/FileLock.h"

#include <sys/stat.h>

#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace consolidator::inspect {

/// A new file that takes the place of another one, or one where nothing is yet, once it is right.
/// Whatever happens until then, the process being killed included, the name stands for the old
/// file, whole; from then on for the new one, whole and on the disk.
///
/// The new file is empty at first: the run that writes it reads the old one. Symbolic links are
/// followed. Processes that replace one file wait for one another, and remove what killed ones
/// left.
class Replacement {
 public:
  /// Why something is not done: a sentence without the file's name.
  struct Refusal {
    std::string reason;
    bool isBySystem = false;  ///< that could not do it
  };

  /// Waits until nobody else replaces the file, and notes what it is like. Refuses what is neither
  /// regular nor missing, a file with several hard links, since the others would keep the old
  /// contents, and one that cannot be read or whose owner, mode or attributes a new file cannot
  /// have.
  static std::variant<Replacement, Refusal> make(const std::string& path);

  /// Name of the file once links are followed.
  const std::string& place() const { return file_.place(); }

  /// Whether there is an old file.
  bool replacesFile() const { return exists_; }

  /// Name of the new file.
  const std::string& path() const { return file_.path(); }

  /// To write the new file.
  int descriptor() const { return file_.descriptor(); }

  /// Gives the new file the name once its bytes are on the disk. Returns why nothing happened, if
  /// so: the name leads to another file by now, or that has other contents or another name besides,
  /// or the system says no.
  std::optional<Refusal> takeName();

 private:
  Replacement(std::unique_ptr<FileLock> lock, std::string path, const std::string& place);

  std::optional<Refusal> prepare() const;
  std::optional<Refusal> takeTraits() const;
  bool isUnchanged() const;

  std::unique_ptr<FileLock> lock_;  // longer than the file
  std::string path_;                // before links are followed

  struct stat old_ {};

  bool exists_ = false;
  FileBeside file_;
};

}  // namespace consolidator::inspect
