#pragma once

#include "inspect/command/Options.h"
#include "inspect/output/Messages.h"
#include "inspect/output/OutputSink.h"
#include "inspect/output/Status.h"
#include "inspect/records/ConsolidatedInput.h"

#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Where a command writes.
struct Console {
  OutputSink& out;         ///< standard output
  Messages& messages;      ///< standard error
  bool hasColour = false;  ///< whether standard output takes colours
};

/// A command of the inspector: declares its options, which are stored in the object, and runs with
/// them once.
class Command {
 public:
  Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  /// Declares description, options and operands.
  virtual void declare(Options& options) = 0;

  /// Runs with the options that were stored. Data goes to standard output, all else to the
  /// messages. Whether standard output could be written is not the command's to check.
  virtual Status run(Console& console) = 0;

  /// The name and version of its JSON document ("consolidator-find/1"), or empty where the command
  /// has none. Used before the options are known, too.
  virtual std::string_view documentFormat() const { return {}; }

  /// Whether standard output gets a JSON document in any case, also without --format json.
  virtual bool alwaysWritesDocument() const { return false; }

 protected:
  /// Declares "--format text|json", for writesDocument().
  void declareFormat(Options& options);

  bool writesDocument() const { return alwaysWritesDocument() || format_ == "json"; }

  /// Opens the only file of a command. A problem is said, in the JSON document where there is one.
  /// Says in addition that a file is of a newer version than the tool takes.
  std::optional<ConsolidatedInput> openOnlyFile(Console& console, const std::string& path) const;

  /// Whether an output, which may be "-", would replace the file that is read. Says so.
  static bool isInput(Console& console, const std::string& output, const std::string& path);

  /// Says that not all of a file could be read, and why, a sentence; nothing where that is empty or
  /// where the file was cut meanwhile.
  static void sayIncomplete(Console& console, const ConsolidatedInput& input, std::string_view why);

  /// The same of the fault that ended the reading, if any.
  static void sayIncomplete(Console& console, const ConsolidatedInput& input,
                            const std::optional<consolidated::Fault>& fault);

  /// Status of a command that has read all that it wanted of a file: says that it was cut
  /// meanwhile.
  static Status statusOf(Console& console, const ConsolidatedInput& input, bool isComplete);

 private:
  std::string format_ = "text";
};

/// Writes the document that stands for an answer that cannot be given: `format` names the document
/// that was wanted; codes are "usage", "cannot-open", "no-consolidated-file" and "cannot-write".
void writeErrorDocument(OutputSink& out, std::string_view format, std::string_view code,
                        std::string_view message);

}  // namespace consolidator::inspect
