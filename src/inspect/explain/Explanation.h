#pragma once

#include "consolidated/Section.h"
#include "observer/RunObserver.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace consolidator::inspect {

/// What became of an input.
enum class InputOutcome {
  Skipped,  ///< not opened, or a folder
  Refused,  ///< opened, nothing taken because of a fault
  Ignored,  ///< not looked at
  Nothing,  ///< read to its end, gave nothing new
  Used,
};

/// Something that an input gave or that was dropped of it.
struct GivenItem {
  std::optional<std::string> kernel;
  std::string what;
  std::optional<std::string> name;
  std::uint64_t count = 0;
  std::optional<std::string> reason;
};

/// Lines of an input that have no effect for one reason.
struct IgnoredLines {
  std::string reason;
  std::uint64_t count = 0;
  std::vector<std::uint64_t> firstLines;
};

/// A net that the tool takes for one of an instance whose path it merely begins like.
struct DoubtfulNet {
  std::string kernel;
  std::string instance;
  std::string net;
  std::uint64_t count = 0;  ///< of lines
  std::uint64_t firstLine = 0;
};

struct ExplainedInput {
  std::string path;
  InputKind kind = InputKind::Dwarf;
  InputOutcome outcome = InputOutcome::Ignored;
  std::optional<std::string> reason;
  std::optional<std::uint64_t> line;
  std::optional<std::uint64_t> lines;
  std::uint64_t bytes = 0;
  std::vector<GivenItem> gave;
  std::vector<GivenItem> dropped;
  std::vector<IgnoredLines> ignored;
  std::vector<DoubtfulNet> doubtful;
};

/// A register for which there is no net in an instance.
struct NeverFound {
  std::string kernel;
  std::string instance;
  std::string variable;
  std::string reg;
  std::optional<std::string> closest;  ///< the net that may have been meant
};

struct Loss {
  std::string code;
  std::string message;
};

/// What a run would do.
struct Explanation {
  int status = 0;
  std::string out;  ///< what it prints on standard output
  std::string err;  ///< and on standard error
  bool isUsage =
      false;  ///< whether it answers with its usage, an error of the command line included
  std::vector<ExplainedInput> inputs;
  std::vector<NeverFound> neverFound;
  bool isNeverFoundLimited = false;  ///< whether there are more than are listed
  bool isClosestLimited = false;     ///< whether some were not compared with all nets
  std::vector<Loss> losses;
  std::vector<consolidated::Section> before;
  std::vector<consolidated::Section> after;
};

}  // namespace consolidator::inspect
