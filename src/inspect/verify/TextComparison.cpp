#include "inspect/verify/TextComparison.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace consolidator::inspect {

namespace {

// What "new" does in the end.
[[noreturn]] void endWithoutMemory() {
  if (const std::new_handler handler = std::get_new_handler()) handler();
  throw std::bad_alloc();
}

}  // namespace

TextComparison::TextComparison(std::string_view expected) : expected_(expected) {
  cookie_io_functions_t functions = {};
  functions.write = [](void* object, const char* bytes, std::size_t size) -> ssize_t {
    const bool isTaken = static_cast<TextComparison*>(object)->take({bytes, size});
    return isTaken ? static_cast<ssize_t>(size) : 0;
  };
  stream_.reset(::fopencookie(this, "w", functions));
  if (!stream_) endWithoutMemory();
  // It is written to in blocks.
  static_cast<void>(std::setvbuf(stream_.get(), nullptr, _IONBF, 0));
}

bool TextComparison::take(std::string_view written) {
  if (isDifferent_) return false;
  const std::string_view rest = expected_.substr(equalSize_, written.size());
  isDifferent_ = rest != written;
  if (!isDifferent_) {
    equalSize_ += written.size();
    return true;
  }
  const auto [inText, inWritten] =
      std::mismatch(rest.begin(), rest.end(), written.begin(), written.end());
  equalSize_ += static_cast<std::size_t>(inText - rest.begin());
  return false;
}

}  // namespace consolidator::inspect
