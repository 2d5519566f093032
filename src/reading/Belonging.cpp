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

}  // namespace

Belonging belonging(const HardwareVariable& hardware, const Variable& variable,
                    std::string_view instancePath) noexcept {
  if (hardware.registerName() != variable.second().view()) return Belonging::None;
  const std::string_view name = hardware.rtlName().view();
  const std::size_t first = findText(name, instancePath, 0);
  if (first == std::string_view::npos) return Belonging::None;
  if (name.substr(first + instancePath.size(), 1) == "/") return Belonging::Certain;
  const std::string scope = std::string(instancePath) + '/';
  return findText(name, scope, first) == std::string_view::npos ? Belonging::Doubtful
                                                                : Belonging::Certain;
}

}  // namespace consolidated
