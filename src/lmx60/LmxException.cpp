#include "lmx60/LmxException.h"

#include <string>

namespace lmx {

namespace {

// For example "line 3: document not well-formed (mismatched tag)".
std::string message(error_code code, std::uint64_t line, std::string_view detail) {
  std::string text = "line " + std::to_string(line) + ": ";
  text += get_error_description(code);
  if (!detail.empty()) text.append(" (").append(detail).append(")");
  return text;
}

}  // namespace

c_lmx_exception::c_lmx_exception(error_code code, std::uint64_t line, std::string_view detail)
    : std::runtime_error(message(code, line, detail)), code_(code), line_(line) {}

}  // namespace lmx
