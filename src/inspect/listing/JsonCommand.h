#pragma once

#include "inspect/command/Command.h"

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Writes all that is in a file as one strict JSON document.
class JsonCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-inspect/1"; }

  bool alwaysWritesDocument() const override { return true; }

 private:
  std::string path_;
  bool isPretty_ = false;
};

}  // namespace consolidator::inspect
