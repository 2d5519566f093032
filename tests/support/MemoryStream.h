#pragma once

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"
#include "model/KernelJson.h"

#include <sys/mman.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>

namespace consolidator {

/// A stdio stream over bytes in memory, open for reading and writing; behaves as a regular file.
class MemoryStream {
 public:
  /// The stream holds `bytes` and stands before the first of them.
  explicit MemoryStream(std::string_view bytes = {})
      : stream_(fdopen(memfd_create("MemoryStream", MFD_CLOEXEC), "w+")) {
    if (stream_ == nullptr) throw std::system_error(errno, std::generic_category(), "MemoryStream");
    std::fwrite(bytes.data(), 1, bytes.size(), stream_);
    std::rewind(stream_);
  }

  MemoryStream(const MemoryStream&) = delete;
  MemoryStream& operator=(const MemoryStream&) = delete;

  ~MemoryStream() { std::fclose(stream_); }

  std::FILE* get() const { return stream_; }

  /// All bytes that the stream holds by now; it stands after the last of them then.
  std::string bytes() const {
    std::fflush(stream_);
    std::fseek(stream_, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(std::ftell(stream_)), '\0');
    std::rewind(stream_);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream_));
    return bytes;
  }

 private:
  std::FILE* stream_;
};

/// The bytes that `write`, called with a ByteWriter, writes.
template <typename Write>
std::string written(Write write) {
  MemoryStream stream;
  ByteWriter out(stream.get());
  write(out);
  out.flush();
  return stream.bytes();
}

/// The binary form of a record.
template <typename Record>
std::string encode(const Record& record) {
  return written([&](ByteWriter& out) { record.writeBinary(out); });
}

/// Reads the binary form into `record`; returns what its readBinary() returned.
template <typename Record>
bool decode(std::string_view bytes, Record& record) {
  const MemoryStream stream(bytes);
  ByteReader in(stream.get());
  return record.readBinary(in);
}

/// The JSON object of one kernel, its conditions as they are.
inline std::string json(const KernelRecord& kernel) {
  return written([&](ByteWriter& out) { kernel.writeJson(out); });
}

/// The JSON document; prepares the conditions of the kernels.
inline std::string json(KernelList& kernels) {
  return written([&](ByteWriter& out) { writeKernelsJson(kernels, out); });
}

}  // namespace consolidator
