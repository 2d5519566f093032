#include "inspect/lines/LineTables.h"

#include "inspect/lines/LineTableReader.h"
#include "inspect/lines/SourcePath.h"
#include "inspect/output/OutputSink.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace consolidator::inspect {

namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;

// Line tables take up to some 30 bytes of memory for each byte, and sections may be compressed.
ChildLimits limitsFor(std::size_t size) {
  return {256 * mebibyte + 32 * size, 64 * mebibyte + 8 * size, std::chrono::seconds(30),
          std::chrono::seconds(300)};
}

// The bytes as the system lets libraries open them; closed with the object.
class AnonymousFile {
 public:
  explicit AnonymousFile(std::string_view bytes)
      : descriptor_(::memfd_create("dwarf", MFD_CLOEXEC)) {
    OutputSink out(descriptor_);
    out.write(bytes);
    isWhole_ = out.flush() && ::lseek(descriptor_, 0, SEEK_SET) == 0;
  }

  AnonymousFile(const AnonymousFile&) = delete;
  AnonymousFile& operator=(const AnonymousFile&) = delete;

  ~AnonymousFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  bool isWhole() const { return isWhole_; }

  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
  bool isWhole_ = false;
};

bool answerWithTables(int dwarf, int output) {
  OutputSink out(output);
  out.write(encode(readLineTables(dwarf)));
  return out.flush();
}

}  // namespace

std::string_view nameOf(LineTableState state) {
  constexpr std::array<std::string_view, 3> names{"read", "none", "unreadable"};
  return names.at(static_cast<std::size_t>(state));
}

LineTables LineTables::of(const consolidated::File& file) {
  const auto dwarf = file.dwarf();
  if (!dwarf) return {LineTableState::None, {}};
  return of(dwarf->stored(), limitsFor(dwarf->stored().size()));
}

LineTables LineTables::of(std::string_view dwarf, const ChildLimits& limits) {
  const AnonymousFile file(dwarf);
  if (!file.isWhole()) return {LineTableState::Unreadable, "there is no room to read it"};
  const ChildAnswer answer =
      runLimited(limits, [&](int output) { return answerWithTables(file.descriptor(), output); });
  if (!answer.failure.empty()) return {LineTableState::Unreadable, answer.failure};
  auto lines = decode(answer.bytes);
  if (!lines) return {LineTableState::Unreadable, "reading it fails"};
  return LineTables(std::move(*lines));
}

LineTables::LineTables(LineTableState state, std::string problem)
    : state_(state), problem_(std::move(problem)) {}

LineTables::LineTables(SourceLines lines)
    : LineTables(lines.isRead ? LineTableState::Read : LineTableState::Unreadable,
                 std::move(lines.problem)) {
  if (state_ != LineTableState::Read) return;
  std::vector<std::pair<std::string, SourceFileLines*>> order;
  for (SourceFileLines& file : lines.files) {
    order.emplace_back(reversedComponents(file.path), &file);
  }
  std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
    return std::tie(a.first, a.second->path) < std::tie(b.first, b.second->path);
  });
  for (auto& [reversed, file] : order) {
    const auto rank = static_cast<std::uint32_t>(files_.size());
    for (const std::uint32_t line : file->lines) lines_.push_back({line, rank});
    files_.push_back({std::move(reversed), std::move(file->path)});
  }
  std::sort(lines_.begin(), lines_.end());
}

std::optional<std::string_view> LineTables::pathOf(std::string_view file,
                                                   std::uint32_t line) const {
  const std::string wanted = reversedComponents(file);
  if (wanted.empty()) return std::nullopt;
  const auto beginning = [&](const SourceFile& source) {
    return std::string_view(source.reversed).substr(0, wanted.size());
  };
  const auto first = std::partition_point(files_.begin(), files_.end(),
                                          [&](const auto& f) { return beginning(f) < wanted; });
  const auto rank = static_cast<std::uint32_t>(first - files_.begin());
  const auto found = std::lower_bound(lines_.begin(), lines_.end(), Line{line, rank});
  if (found == lines_.end() || found->line != line) return std::nullopt;
  const SourceFile& source = files_[found->rank];
  if (beginning(source) != wanted) return std::nullopt;
  return source.path;
}

}  // namespace consolidator::inspect
