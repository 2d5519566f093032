#include "inspect/records/ConsolidatedInput.h"

#include "inspect/output/PlainText.h"

#include <fmt/format.h>
#include <unistd.h>

#include <system_error>
#include <utility>

namespace consolidator::inspect {

namespace {

using consolidated::Access;
using consolidated::Fault;
using consolidated::FaultCode;
using consolidated::File;

consolidated::Result<File> openFile(const std::string& path, Access access) {
  if (path == "-") return File::fromDescriptor(STDIN_FILENO, access);
  return File::open(path.c_str(), access);
}

bool isNoConsolidatedFile(FaultCode code) {
  return code == FaultCode::ShortHeader || code == FaultCode::WrongMagic;
}

InputProblem problemOf(const std::string& path, const Fault& fault) {
  std::string reason = fault.sentence();
  if (fault.systemError != 0) reason = std::generic_category().message(fault.systemError);
  return {isNoConsolidatedFile(fault.code) ? "no-consolidated-file" : "cannot-open",
          fmt::format("{}: {}", plain(path), reason), fault};
}

}  // namespace

ConsolidatedInput::ConsolidatedInput(std::string path, File file,
                                     std::unique_ptr<CutFileGuard> guard)
    : path_(std::move(path)), guard_(std::move(guard)), file_(std::move(file)) {}

std::variant<ConsolidatedInput, InputProblem> ConsolidatedInput::open(const std::string& path) {
  auto guard = std::make_unique<CutFileGuard>();
  auto opened = openFile(path, guard->isGuarding() ? Access::Mapped : Access::Read);
  if (!opened) return problemOf(path, opened.fault());
  guard->guardOnly(opened->bytes());
  return ConsolidatedInput(path, std::move(*opened), std::move(guard));
}

}  // namespace consolidator::inspect
