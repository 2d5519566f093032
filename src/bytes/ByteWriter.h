#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

namespace consolidator {

/// Writer of bytes and little-endian numbers that collects them in a block before it hands them to
/// a stdio stream. The owner calls flush() at the end; without it the last block is lost.
///
/// Once the stream took fewer bytes than it was given, everything else is dropped. A null stream
/// takes nothing.
class ByteWriter {
 public:
  explicit ByteWriter(std::FILE* stream) : stream_(stream), failed_(stream == nullptr) {}

  void write(std::string_view bytes) { writeViews(bytes); }

  /// Writes texts one after the other.
  template <typename... Texts>
  void write(std::string_view first, std::string_view second, const Texts&... others) {
    writeViews(first, second, std::string_view(others)...);
  }

  /// Writes what `fill` puts at the place that it is given: at most `size` bytes, which is at most
  /// 1 KiB. It returns the end of what it put there.
  template <typename Fill>
  void writeUpTo(std::size_t size, Fill fill) {
    if (size > room_ && !makeRoom()) return;
    char* const start = block_.get() + used_;
    advance(static_cast<std::size_t>(fill(start) - start));
  }

  void writeU32(std::uint32_t value) { write(bytesOf(value)); }

  /// Writes texts as the binary form has them: for each a u32 length followed by the bytes.
  template <typename... Texts>
  void writeText(const Texts&... texts) {
    writeTextViews(std::string_view(texts)...);
  }

  /// Writes a number in decimal.
  void writeDecimal(std::uint32_t value);

  /// Hands the block to the stream. Returns whether the stream took every byte so far.
  bool flush();

  /// Number of bytes that the stream took so far, including those that wait in the block.
  std::uint64_t accepted() const { return accepted_ + used_; }

  /// How many were accepted since accepted() returned `before`; none where the stream failed since
  /// and took fewer bytes than waited for it then.
  std::uint64_t acceptedSince(std::uint64_t before) const {
    return accepted() - std::min(before, accepted());
  }

 private:
  // The bytes as the host holds them: every supported host is little-endian, as the format is.
  static std::string_view bytesOf(const std::uint32_t& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
  }

  // Puts bytes at a place that has room for them and returns where they end.
  static char* put(char* to, std::string_view bytes) {
    return std::copy(bytes.begin(), bytes.end(), to);
  }

  // The room is checked once for all texts: one by one, saving a hierarchy takes 4 % more
  // instructions.
  template <typename... Views>
  void writeViews(Views... texts) {
    const std::size_t size = (texts.size() + ...);
    if (size > room_) return (writeBeyondBlock(texts), ...);
    char* to = block_.get() + used_;
    ((to = put(to, texts)), ...);
    advance(size);
  }

  template <typename... Views>
  void writeTextViews(Views... texts) {
    const std::size_t size = ((sizeof(std::uint32_t) + texts.size()) + ...);
    if (size > room_) return (writeTextBeyondBlock(texts), ...);
    char* to = block_.get() + used_;
    ((to = put(put(to, bytesOf(static_cast<std::uint32_t>(texts.size()))), texts)), ...);
    advance(size);
  }

  void advance(std::size_t size) {
    used_ += size;
    room_ -= size;
  }

  bool makeRoom();
  void writeBeyondBlock(std::string_view bytes);
  void writeTextBeyondBlock(std::string_view text);
  void send(std::string_view bytes);

  std::FILE* stream_;
  std::unique_ptr<char[]> block_;  // made at the first write
  std::size_t used_ = 0;
  std::size_t room_ = 0;
  std::uint64_t accepted_ = 0;
  bool failed_;
};

}  // namespace consolidator
