#pragma once

#include "inspect/command/Command.h"
#include "inspect/explain/Explanation.h"

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Says what a run of the tool would do, without touching a file.
class ExplainCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-explain/1"; }

 private:
  bool isObjected(const Explanation& explanation) const;

  std::string strict_;
  std::vector<std::string> words_;  // the tool's command line
};

}  // namespace consolidator::inspect
