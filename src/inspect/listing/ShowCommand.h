#pragma once

#include "inspect/command/Command.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// Shows people what is in a file: all of it with counts, or single kernels in full.
class ShowCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

 private:
  static Status showFile(Console& console, const ConsolidatedInput& input);
  Status showKernels(Console& console, const ConsolidatedInput& input) const;

  std::string path_;
  std::vector<std::string> kernels_;
};

}  // namespace consolidator::inspect
