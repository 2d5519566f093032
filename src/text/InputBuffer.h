#pragma once

#include "observer/RunObserver.h"
#include "text/WhiteSpace.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <streambuf>
#include <string_view>

namespace consolidator {

/// One line of an input whose lines have a greatest length.
struct BoundedLine {
  std::string_view text;   ///< up to the first zero byte; empty when the line is over the bound
  bool overBound = false;  ///< whether the line, zero bytes included, is longer than the bound
};

/// Stream buffer of the readers: one forward pass over a file (or a text in memory) in large
/// blocks. It never seeks, so it can read pipes. Words are handed out as views into the block,
/// which makes readers fast; the few fields that must be extracted exactly as by a standard stream
/// are read by an `std::istream` on the same buffer, and both may be mixed freely.
///
/// White space is that of the C locale. A read error ends the input as the end of the file does.
class InputBuffer : public std::streambuf {
 public:
  /// Opens a file for reading. A directory, which can be opened but not read, counts as not open.
  explicit InputBuffer(const char* fileName);

  /// Reads from a text that must outlive the buffer.
  explicit InputBuffer(std::string_view text);

  InputBuffer(const InputBuffer&) = delete;
  InputBuffer& operator=(const InputBuffer&) = delete;
  ~InputBuffer() override;

  bool isOpen() const { return isOpen_; }

  /// The system's error number if the file could not be opened, else 0.
  int openError() const { return openError_; }

  /// Counts lines and bytes from now on and tells the observer, which must outlive the buffer, how
  /// many bytes were read. To be called before anything is read.
  void observe(RunObserver& observer) { observer_ = &observer; }

  /// Makes the input an empty one that is open.
  void becomeEmpty();

  /// The number of the line, from 1, in which a byte lies: one that was read since the last block
  /// was, or the one that is next. Only of an observed buffer, and never of a byte before another
  /// one that was asked for.
  std::uint64_t lineOf(const char* byte);

  /// The number of the line that is next.
  std::uint64_t line() { return lineOf(gptr()); }

  /// Whether a line that was just read had a zero byte, where its text ends.
  bool endsInZeroByte(std::string_view text) const {
    const char* const end = text.data() + text.size();
    return text.data() != nullptr && end < gptr() && *end == '\0';
  }

  /// How much was read of an observed buffer.
  InputExtent extent();

  /// Whether something was asked for at the end of the input, which is when a standard stream
  /// reports the end of the file.
  bool hasMetEnd() const { return hasMetEnd_; }

  /// The next bytes, as far as they are in memory already, for a quick look ahead; may be empty
  /// before the end of the input. The view holds until the next read.
  std::string_view buffered() const { return {gptr(), available()}; }

  /// Skips so many of the buffered() bytes.
  void skip(std::size_t count) { setg(eback(), gptr() + count, egptr()); }

  /// Skips white space. Returns false at the end of the input.
  bool skipWhiteSpace() {
    do {
      const char* next = gptr();
      while (next != egptr() && isWhiteSpace(*next)) ++next;
      skip(static_cast<std::size_t>(next - gptr()));
      if (available() > 0) return true;
    } while (readMore());
    return false;
  }

  /// Skips white space and reads one word of any length, zero bytes included; empty at the end of
  /// the input. The view holds until the next read. Memory grows with the longest word.
  std::string_view readWord() {
    if (!skipWhiteSpace()) return {};
    const std::size_t length = wordLength(buffered());
    return length < available() ? take(length) : readLongWord(length);
  }

  /// Skips the rest of the line, its end included, however long it is.
  void skipLine();

  /// Reads the rest of the line; its end is consumed and not part of it. Nothing at the end of the
  /// input. The view holds until the next read. A line over the bound is not consumed, since it may
  /// never end: call skipLine() to go on after it.
  std::optional<BoundedLine> readLine(std::size_t bound);

 protected:
  int_type underflow() override;

 private:
  std::size_t available() const { return static_cast<std::size_t>(egptr() - gptr()); }

  std::size_t lengthUpTo(char c, std::size_t from) const;

  std::string_view take(std::size_t length) {
    const std::string_view bytes{gptr(), length};
    skip(length);
    return bytes;
  }

  std::string_view readLongWord(std::size_t length);

  bool readMore();
  bool readBlock();
  void makeRoom();

  int descriptor_ = -1;
  int openError_ = 0;
  bool isOpen_ = false;
  bool atEnd_ = false;
  bool hasMetEnd_ = false;
  std::unique_ptr<char[]> block_;  // made at the first read
  std::size_t capacity_ = 0;
  RunObserver* observer_ = nullptr;
  std::uint64_t bytesRead_ = 0;
  std::uint64_t lineEnds_ = 0;     // before counted_
  bool endsInsideLine_ = false;    // what is before it
  const char* counted_ = nullptr;  // in the block
};

}  // namespace consolidator
