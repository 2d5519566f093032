#pragma once

#include "inspect/command/Command.h"
#include "inspect/run/SafeRun.h"

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Runs the tool so that the old file survives whatever goes wrong, and the status tells the truth.
class RunCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-run/1"; }

 private:
  void writeDocument(Console& console, const RunResult& result) const;
  void writeText(Console& console, const RunResult& result) const;

  RunRules rules_;
  bool isQuiet_ = false;
  std::vector<std::string> words_;  // the tool's command line
};

}  // namespace consolidator::inspect
