#include "inspect/lines/SourceLines.h"

#include <cstddef>
#include <cstring>

namespace consolidator::inspect {

namespace {

void addNumber(std::string& bytes, std::size_t number) {
  const auto word = static_cast<std::uint32_t>(number);
  bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
}

void addText(std::string& bytes, std::string_view text) {
  addNumber(bytes, text.size());
  bytes += text;
}

bool takeBytes(std::string_view& bytes, void* target, std::size_t size) {
  if (bytes.size() < size) return false;
  if (size > 0) std::memcpy(target, bytes.data(), size);
  bytes.remove_prefix(size);
  return true;
}

bool takeNumber(std::string_view& bytes, std::uint32_t& number) {
  return takeBytes(bytes, &number, sizeof number);
}

bool takeText(std::string_view& bytes, std::string& text) {
  std::uint32_t size = 0;
  if (!takeNumber(bytes, size) || size > bytes.size()) return false;
  text = bytes.substr(0, size);
  bytes.remove_prefix(size);
  return true;
}

bool takeFile(std::string_view& bytes, SourceFileLines& file) {
  std::uint32_t count = 0;
  if (!takeText(bytes, file.path) || !takeNumber(bytes, count)) return false;
  if (count > bytes.size() / sizeof count) return false;
  file.lines.resize(count);
  return takeBytes(bytes, file.lines.data(), count * sizeof count);
}

}  // namespace

std::string encode(const SourceLines& lines) {
  std::string bytes(1, lines.isRead ? '\1' : '\0');
  addText(bytes, lines.problem);
  for (const SourceFileLines& file : lines.files) {
    addText(bytes, file.path);
    addNumber(bytes, file.lines.size());
    for (const std::uint32_t line : file.lines) addNumber(bytes, line);
  }
  return bytes;
}

std::optional<SourceLines> decode(std::string_view bytes) {
  SourceLines lines;
  char isRead = '\0';
  if (!takeBytes(bytes, &isRead, 1) || !takeText(bytes, lines.problem)) return std::nullopt;
  lines.isRead = isRead != '\0';
  while (!bytes.empty()) {
    if (!takeFile(bytes, lines.files.emplace_back())) return std::nullopt;
  }
  return lines;
}

}  // namespace consolidator::inspect
