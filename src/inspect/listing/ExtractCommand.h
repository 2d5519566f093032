#pragma once

#include "inspect/command/Command.h"

#include <string>

namespace consolidator::inspect {

/// Writes the bytes of one section to a file.
class ExtractCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

 private:
  Status write(Console& console, const ConsolidatedInput& input, std::string_view bytes) const;

  std::string path_;
  std::string section_;
  std::string output_;
};

}  // namespace consolidator::inspect
