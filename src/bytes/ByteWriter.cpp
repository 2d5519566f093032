#include "bytes/ByteWriter.h"

#include <bit>
#include <charconv>
#include <limits>
#include <string_view>

namespace consolidator {

static_assert(std::endian::native == std::endian::little);

namespace {

constexpr std::size_t writeBlockSize = std::size_t{256} * 1024;

}  // namespace

void ByteWriter::writeDecimal(std::uint32_t value) {
  constexpr std::size_t mostDigits = std::numeric_limits<std::uint32_t>::digits10 + 1;
  writeUpTo(mostDigits, [&](char* to) { return std::to_chars(to, to + mostDigits, value).ptr; });
}

bool ByteWriter::flush() {
  if (used_ > 0) {
    const std::string_view waiting{block_.get(), used_};
    used_ = 0;
    room_ = writeBlockSize;
    send(waiting);
  }
  return !failed_;
}

bool ByteWriter::makeRoom() {
  if (!flush()) return false;
  if (!block_) block_ = std::make_unique_for_overwrite<char[]>(writeBlockSize);
  room_ = writeBlockSize;
  return true;
}

void ByteWriter::writeBeyondBlock(std::string_view bytes) {
  if (bytes.size() > room_) {
    if (!flush()) return;
    if (bytes.size() >= writeBlockSize) return send(bytes);
    if (!makeRoom()) return;
  }
  put(block_.get() + used_, bytes);
  advance(bytes.size());
}

void ByteWriter::writeTextBeyondBlock(std::string_view text) {
  writeU32(static_cast<std::uint32_t>(text.size()));
  write(text);
}

void ByteWriter::send(std::string_view bytes) {
  const std::size_t taken = std::fwrite(bytes.data(), 1, bytes.size(), stream_);
  accepted_ += taken;
  if (taken < bytes.size()) {
    failed_ = true;
    room_ = 0;
  }
}

}  // namespace consolidator
