#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator {

/// The kinds of inputs in the order in which a run reads them.
enum class InputKind { Dwarf, Hierarchy, KernelXml, Hls, Auxiliary, LogicLocations, RamReport };

/// What an input gives to a kernel: bits are those of an argument or a variable, locations those of
/// a register.
enum class Item {
  Kernel,
  Type,
  Path,
  Argument,
  Variable,
  Bits,
  Register,
  Location,
  Condition,
  Bram,
};

/// A place in an input. Lines and columns count from 1; 0 where there is none to name.
struct InputPlace {
  std::uint64_t line = 0;
  std::uint64_t column = 0;
};

/// How far an input was read.
struct InputExtent {
  std::uint64_t bytes = 0;
  std::optional<std::uint64_t> lines;  ///< where they were counted
};

/// What a save does to one condition.
struct PreparedCondition {
  std::string_view kernel;
  bool isFirst = false;  ///< of its kernel's; several kernels may have one name
  std::uint32_t kind = 0;
  std::uint32_t line = 0;
  std::string_view file;
  std::string_view before;
  std::optional<std::string_view> after;  ///< nothing: it is removed
  bool isStored = false;                  ///< whether it was in the file before the run
};

/// Is told what happens in a run that its output does not show: what is skipped, refused, dropped,
/// ignored, lost. Nothing here changes what the run does, except isEmptied(). All texts are those
/// of the files, of any bytes, and hold during the call only.
///
/// The parts of the tool have a pointer to an observer, null as a rule, and ask for it where
/// something is left out, or once per input; only a run that is observed takes the time to look
/// more closely.
class RunObserver {
 public:
  RunObserver() = default;
  RunObserver(const RunObserver&) = delete;
  RunObserver& operator=(const RunObserver&) = delete;
  virtual ~RunObserver();

  /// The run turns to an input. All that is said of inputs up to onInputEnd() is about this one.
  virtual void onInputBegin(InputKind /*kind*/, std::string_view /*path*/) {}

  /// The input was read so far, and what it gave was merged.
  virtual void onInputEnd(const InputExtent& /*extent*/) {}

  /// The input could not be opened, for the system's reason with this number.
  virtual void onSkipped(int /*error*/) {}

  /// The input was opened, and nothing of it is taken because of a fault.
  virtual void onRefused(std::string_view /*reason*/, const InputPlace& /*place*/) {}

  /// The input was not looked at.
  virtual void onUnread(std::string_view /*reason*/) {}

  /// Something inside the input has no effect. The reason is a text of the tool.
  virtual void onIgnored(std::string_view /*reason*/, std::uint64_t /*line*/) {}

  /// A logic-location file names a bit of this net, which gave a location to `owners` kernels. The
  /// name has no "/" in front that the file does not give it.
  virtual void onNet(std::string_view /*net*/, std::uint64_t /*line*/, std::size_t /*owners*/) {}

  /// So many bytes of the input were read.
  virtual void onProgress(std::uint64_t /*bytes*/) {}

  /// Whether the run would have emptied or created the file at this path, which an observed run
  /// leaves alone: it reads as empty then.
  virtual bool isEmptied(const std::string& /*path*/) { return false; }

  /// A kernel got something new; `name` is empty where several things are counted.
  virtual void onGiven(std::string_view /*kernel*/, Item /*what*/, std::string_view /*name*/,
                       std::uint64_t /*count*/) {}

  /// What an input said about a kernel was not taken.
  virtual void onDropped(std::string_view /*kernel*/, Item /*what*/, std::string_view /*name*/,
                         std::uint64_t /*count*/, std::string_view /*reason*/) {}

  /// An entry of the table of the file that was read, as it is stored.
  virtual void onStoredSection(std::uint32_t /*kind*/, std::uint64_t /*offset*/,
                               std::uint32_t /*size*/) {}

  /// The run loses something that the file holds, or leaves the file wrong. The code is a word of
  /// the tool, the message a sentence, which may hold texts of the files.
  virtual void onLoss(std::string_view /*code*/, const std::string& /*message*/) {}

  virtual void onCondition(const PreparedCondition& /*condition*/) {}

  /// An entry of the table as it was saved; `isWritten` is false where the section begins at 2 GiB
  /// or beyond and found no place.
  virtual void onSavedSection(std::uint32_t /*kind*/, std::uint64_t /*offset*/,
                              std::uint32_t /*size*/, bool /*isWritten*/) {}
};

}  // namespace consolidator
