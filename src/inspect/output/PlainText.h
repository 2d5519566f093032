#pragma once

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Whether a character may be shown as it is: it is no control character, line separator or mark of
/// writing direction.
bool isShowable(char32_t c);

/// A text from a file as it may be shown: valid UTF-8 on one line, in which nothing can move the
/// cursor, change colours or reverse the order of what is read. Control characters, line separators
/// and marks of writing direction become "\x1B" or "\u{202E}", what is not UTF-8 becomes U+FFFD. A
/// text without any of these is returned unchanged.
std::string plain(std::string_view stored);

}  // namespace consolidator::inspect
