#include "consolidated/Kernel.h"

#include <cstring>

namespace consolidated {

namespace {

// Where one text occurs in another, from a position on. Unlike the search of std::string_view, that
// of the C library takes linear time.
std::size_t findText(std::string_view text, std::string_view wanted, std::size_t from) {
  const void* const found =
      memmem(text.data() + from, text.size() - from, wanted.data(), wanted.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// Whether a text that occurs in another, for the first time at a position, does so somewhere with a
// slash behind it. Takes linear time, and no memory, which might not be there. Occurrences that
// overlap by half or more are those of a period; the same byte follows all of them but the last,
// which is the next one to be looked at.
bool occursBeforeSlash(std::string_view text, std::string_view wanted, std::size_t at) {
  while (at + wanted.size() < text.size()) {
    if (text[at + wanted.size()] == '/') return true;
    const std::size_t next = findText(text, wanted, at + 1);
    if (next == std::string_view::npos) return false;
    const std::size_t period = next - at;
    at = next;
    if (period > wanted.size() / 2) continue;
    std::size_t end = at + wanted.size();
    while (end < text.size() && text[end] == text[end - period]) ++end;
    at += (end - at - wanted.size()) / period * period;
  }
  return false;
}

}  // namespace

Belonging belonging(const HardwareVariable& hardware, const Variable& variable,
                    std::string_view instancePath) noexcept {
  if (hardware.registerName() != variable.second().view()) return Belonging::None;
  const std::string_view name = hardware.rtlName().view();
  const std::size_t first = findText(name, instancePath, 0);
  if (first == std::string_view::npos) return Belonging::None;
  return occursBeforeSlash(name, instancePath, first) ? Belonging::Certain : Belonging::Doubtful;
}

}  // namespace consolidated
