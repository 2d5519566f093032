#pragma once

#include "endtoend/Expected.h"

#include <string>
#include <vector>

namespace consolidator {

/// A list of a kernel as both sections hold it.
struct StoredList {
  std::string json;
  std::string record;
};

/// The kernel vadd, with an instance path and a variable unless something else is put there.
struct VaddKernel {
  StoredList paths{R"("/top/vadd_1/inst")", u32(1) + text("/top/vadd_1")};
  StoredList arguments{"", u32(0)};
  StoredList variables{R"([ "sum", "sum_reg", "int", 32])",
                       u32(1) + text("sum") + text("sum_reg") + text("int") + u32(0)};
  StoredList hardwareVariables{"", u32(0)};
  StoredList conditions{"", u32(0)};

  std::string json() const;
  std::string record() const;

  /// The consolidated file that holds this kernel alone.
  std::string file() const { return container({jsonSection(json()), recordsSection({record()})}); }
};

/// An option that names an input file, and what a run with it has to do to VaddKernel().file().
struct InputOption {
  std::string name;
  std::string text;         ///< an input of its kind
  std::string read;         ///< what becomes of the file by that input
  std::string readEmpty;    ///< what becomes of it by an empty input
  std::string complaint{};  ///< what is printed about an empty input
  bool seeks = false;       ///< whether pipes are skipped
};

InputOption hierarchyOption();

/// The consolidated file that the input of hierarchyOption() alone gives.
std::string createdFromHierarchy();

/// All options that name input files, each with an input that adds to the kernel vadd. An HLS file
/// names its kernel by its own name, so all inputs have to be called "vadd" and four characters.
std::vector<InputOption> inputOptions();

}  // namespace consolidator
