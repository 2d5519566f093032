#include "inspect/report/SourceFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

// What a file without bytes counts.
constexpr std::size_t leastSize = 4096;

// Empty if there is nothing.
std::string canonicalOf(const fs::path& path) {
  std::error_code error;
  return fs::canonical(path, error).string();
}

std::optional<std::string> readAll(int descriptor, std::size_t size) {
  std::string text(size, '\0');
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = ::read(descriptor, text.data() + filled, size - filled);
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  text.resize(filled);
  return text;
}

}  // namespace

SourceFolder::SourceFolder(const std::string& path) : folder_(canonicalOf(path)) {
  if (!folder_.empty() && !folder_.ends_with('/')) folder_ += '/';
}

const SourceText* SourceFolder::linesOf(const std::string& path) {
  const std::string real = realPathOf(path);
  if (real.empty()) return nullptr;
  const auto known = files_.find(real);
  if (known != files_.end()) return &known->second;
  auto text = read(real);
  if (!text) return nullptr;
  bytesLeft_ -= std::min(bytesLeft_, std::max(text->size(), leastSize));
  return &files_.emplace(real, std::move(*text)).first->second;
}

std::string SourceFolder::realPathOf(const std::string& path) const {
  if (folder_.empty() || path.empty() || path.find('\0') != std::string::npos) return {};
  std::string real = canonicalOf(fs::path(folder_) / path);  // an absolute path replaces the folder
  return real.starts_with(folder_) ? real : std::string();
}

// The real path has no link left; one that takes a place in it meanwhile is not followed at its
// end.
std::optional<std::string> SourceFolder::read(const std::string& realPath) const {
  const int descriptor =
      ::open(realPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | O_NOFOLLOW);
  if (descriptor < 0) return std::nullopt;

  struct stat found {};

  std::optional<std::string> text;
  if (::fstat(descriptor, &found) == 0 && S_ISREG(found.st_mode) &&
      std::max(static_cast<std::size_t>(found.st_size), leastSize) <= bytesLeft_) {
    text = readAll(descriptor, static_cast<std::size_t>(found.st_size));
  }
  ::close(descriptor);
  return text;
}

}  // namespace consolidator::inspect
