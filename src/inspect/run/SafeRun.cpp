#include "inspect/run/SafeRun.h"

#include "inspect/explain/ExplainedRun.h"
#include "inspect/files/FileBeside.h"
#include "inspect/files/SameFile.h"
#include "inspect/output/Numbered.h"
#include "inspect/run/FileLock.h"
#include "inspect/run/ResultCheck.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>
#include <variant>

namespace consolidator::inspect {

namespace {

std::string systemText(int error) { return std::generic_category().message(error); }

// Nobody replaces the file while it is read, except where there can be no lock, as in a folder that
// is not to be written to.
std::unique_ptr<FileLock> lockForReading(const std::string& path) {
  std::unique_ptr<FileLock> lock;
  const std::string place = placeOf(path);
  std::error_code error;
  if (std::filesystem::is_regular_file(place, error)) {
    lock = std::make_unique<FileLock>(lockNameOf(place));
  }
  return lock;
}

}  // namespace

RunResult SafeRun::run() {
  if (!line_.isWork()) {
    answer();
  } else if (!refuses()) {
    line_.options().dumpRequested() ? dump() : save();
  }
  return std::move(result_);
}

// Whoever asks for help or the version gets that. Where there would be work, it is not done.
void SafeRun::answer() {
  result_.explanation = observeRun(line_, files_);
  const ConsolidatorOptions& options = line_.options();
  const bool isAsked = line_.isParsed() && (options.help() || options.version());
  if (isAsked && line_.inputs().empty() && !options.dumpRequested() && file().empty()) {
    result_.status = Status::Holds;
    result_.isDone = true;
  } else if (!isObjected()) {
    fail(Status::Fails, "consolidator prints its version and does nothing else");
  }
}

bool SafeRun::refuses() {
  const ConsolidatorOptions& options = line_.options();
  if (options.dumpRequested()) {
    if (!dumpsOverItself(line_)) return false;
    refuse("usage", file() + ": the dump would empty the file that it is to read");
    return true;
  }
  const auto inputs = line_.inputs();
  const auto itself = std::ranges::find_if(
      inputs, [&](const NamedInput& input) { return isSameFile(input.path, file()); });
  if (itself == inputs.end()) return false;
  refuse("usage", itself->path + ": is the consolidated file itself, which is no input of its own");
  return true;
}

void SafeRun::save() {
  auto made = Replacement::make(file());
  if (const auto* const refusal = std::get_if<Replacement::Refusal>(&made)) {
    return refuse("cannot-write", fmt::format("{}: {}", file(), refusal->reason));
  }
  auto& replacement = std::get<Replacement>(made);
  files_.use(replacement);
  result_.explanation = observeRun(line_, files_);
  if (isObjected()) {
    return result_.messages.push_back(
        fmt::format("{}: {}", file(), replacement.replacesFile() ? "not changed" : "not made"));
  }
  if (files_.writeError() != 0) return fail(Status::Unasked, systemText(files_.writeError()));
  if (isSound(replacement)) place(replacement);
}

bool SafeRun::isObjected() {
  const auto objections = objectionsTo(result_.explanation, rules_.strict, file());
  for (const Objection& objection : objections) result_.messages.push_back(objection.message);
  if (!objections.empty()) result_.reason = objections.front().message;
  return !objections.empty();
}

// Each byte that the tool gave was written, and the tool rendered its text from the records that it
// stored, so that rendering it again could tell nothing new: that alone takes longer than all else
// here. What is left of a damaged file is looked at in full.
bool SafeRun::isSound(const Replacement& replacement) {
  const auto depth = result_.explanation.losses.empty() ? VerificationDepth::Structure
                                                        : VerificationDepth::Everything;
  const std::string why = whyUnsound(replacement.path(), depth);
  if (!why.empty()) fail(Status::Fails, "the result would not be sound: " + why);
  return why.empty();
}

void SafeRun::place(Replacement& replacement) {
  if (rules_.keepsEqual && areEqual(replacement.place(), replacement.path())) {
    result_.reason = "equal to what it holds";
    return succeed("left alone, since it would be equal");
  }

  struct stat made {};

  static_cast<void>(::fstat(replacement.descriptor(), &made));
  if (const auto refusal = replacement.takeName()) return fail(*refusal);
  succeed(fmt::format("written, {} bytes", made.st_size));
}

void SafeRun::dump() {
  const auto lock = lockForReading(file());
  removeLeftovers(placeOf(file()));
  result_.explanation = observeRun(line_, files_);
  if (files_.dumpError() != 0) {
    failDump(files_.dumpError());
  } else if (!isObjected()) {
    endDump();
  }
}

void SafeRun::endDump() {
  if (!files_.hasDump()) return fail(Status::Fails, "consolidator writes nothing");
  const auto& allowed = rules_.strict.allowed;
  const bool mayBeEmpty = std::ranges::find(allowed, "dump-empty") != allowed.end();
  if (files_.dumpedBytes() == 0 && !mayBeEmpty) return fail(Status::Fails, "the section is empty");
  if (const int error = files_.finishDump(); error != 0) return failDump(error);
  result_.status = Status::Holds;
  result_.isDone = true;
  if (files_.dumpsToOutput()) return;
  result_.summary =
      fmt::format("{}: {} bytes dumped from {}", line_.dumpPath(), files_.dumpedBytes(), file());
}

void SafeRun::failDump(int error) {
  result_.status = Status::Unasked;
  result_.reason = line_.dumpPath() + ": " + systemText(error);
  result_.messages.push_back(result_.reason);
}

void SafeRun::refuse(std::string_view code, const std::string& message) {
  result_.refusalCode = code;
  result_.status = Status::Unasked;
  result_.reason = message;
  result_.messages.push_back(message);
}

void SafeRun::fail(Status status, const std::string& reason) {
  result_.status = status;
  result_.reason = reason;
  result_.messages.push_back(file().empty() ? reason : fmt::format("{}: {}", file(), reason));
}

void SafeRun::fail(const Replacement::Refusal& refusal) {
  fail(refusal.isBySystem ? Status::Unasked : Status::Fails, refusal.reason);
}

void SafeRun::succeed(std::string_view what) {
  result_.status = Status::Holds;
  result_.isDone = true;
  result_.summary = fmt::format("{}: {}; {}", file(), what, inputSummary());
}

std::string SafeRun::inputSummary() const {
  const auto count = [&](InputOutcome outcome) {
    return std::ranges::count(result_.explanation.inputs, outcome, &ExplainedInput::outcome);
  };
  const auto used = count(InputOutcome::Used);
  const auto others = std::ssize(result_.explanation.inputs) - used;
  std::string text = numbered(static_cast<std::uint64_t>(used), "input") + " used";
  if (others > 0) text += fmt::format(", {} without effect", others);
  const std::size_t losses = result_.explanation.losses.size();
  if (losses > 0) text += fmt::format(", {} {} allowed", losses, losses == 1 ? "loss" : "losses");
  return text;
}

}  // namespace consolidator::inspect
