#pragma once

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

  void write(std::string_view bytes) {
    if (bytes.size() > room_) {
      writeBeyondBlock(bytes);
    } else {
      put(bytes);
    }
  }

  void writeU32(std::uint32_t value) {
    // Sent as the host holds it: the format is little-endian, and so is every supported host.
    write({reinterpret_cast<const char*>(&value), sizeof value});
  }

  /// Writes a text as the binary form has it: a u32 length followed by the bytes.
  void writeText(std::string_view text) {
    writeU32(static_cast<std::uint32_t>(text.size()));
    write(text);
  }

  /// Writes a number in decimal.
  void writeDecimal(std::uint32_t value);

  /// Hands the block to the stream. Returns whether the stream took every byte so far.
  bool flush();

  /// Number of bytes that the stream took so far, those that wait in the block included.
  std::uint64_t accepted() const { return accepted_ + used_; }

 private:
  void put(std::string_view bytes) {
    bytes.copy(block_.get() + used_, bytes.size());
    used_ += bytes.size();
    room_ -= bytes.size();
  }

  void writeBeyondBlock(std::string_view bytes);
  void send(std::string_view bytes);

  std::FILE* stream_;
  std::unique_ptr<char[]> block_;  // made at the first write
  std::size_t used_ = 0;
  std::size_t room_ = 0;
  std::uint64_t accepted_ = 0;
  bool failed_;
};

}  // namespace consolidator
