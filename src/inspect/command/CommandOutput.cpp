#include "inspect/command/CommandOutput.h"

#include "inspect/output/PlainText.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

namespace consolidator::inspect {

CommandOutput::CommandOutput(Console& console, const std::string& path)
    : console_(&console), path_(path) {
  if (path != "-") file_.emplace(path);
}

Status CommandOutput::finish(Status status, const ConsolidatedInput& input) {
  if (!file_ || input.wasCut() || file_->finish()) return status;
  if (file_->error() != EPIPE) {
    console_->messages.say(
        fmt::format("{}: {}", plain(path_), std::generic_category().message(file_->error())));
  }
  return Status::Unasked;
}

}  // namespace consolidator::inspect
