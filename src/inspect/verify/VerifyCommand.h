#pragma once

#include "inspect/command/Command.h"
#include "inspect/verify/Verification.h"
#include "inspect/verify/VerifyReport.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Says whether files are sound, and what is wrong with them.
class VerifyCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-verify/1"; }

 private:
  ReportRules reportRules() const;
  std::unique_ptr<VerifyReport> makeReport(Console& console) const;

  std::vector<std::string> paths_;
  std::vector<std::string> strict_;
  std::vector<std::string> required_;
  bool listsNotes_ = false;
  bool listsAll_ = false;
  bool isQuiet_ = false;
};

}  // namespace consolidator::inspect
