#pragma once

#include "inspect/command/Command.h"

#include <string>

namespace consolidator::inspect {

/// Writes a page that shows all that is in a file.
class ReportCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

 private:
  std::string path_;
  std::string output_;
  std::string sources_;
};

}  // namespace consolidator::inspect
