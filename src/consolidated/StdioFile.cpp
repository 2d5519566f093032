#include "consolidated/StdioFile.h"

#include "bytes/ByteReader.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>

namespace consolidator {

namespace {

bool isNamedPipe(const char* path) {
  struct stat status {};

  return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

// Lack of memory for a stream says nothing about its file.
StdioFile own(std::FILE* stream) {
  if (stream == nullptr && errno == ENOMEM) throw std::bad_alloc();
  return StdioFile(stream);
}

}  // namespace

StdioFile openStdioFile(const std::string& path, const char* mode) {
  return own(std::fopen(path.c_str(), mode));
}

// Only pipes are opened without waiting: a file on which another process holds a lease is worth the
// wait.
StdioFile openStdioFileAtOnce(const std::string& path, const char* mode) {
  if (!isNamedPipe(path.c_str())) return openStdioFile(path, mode);
  const int direction = std::string_view(mode) == "r" ? O_RDONLY : O_WRONLY;
  const int descriptor = open(path.c_str(), direction | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  std::FILE* const stream = fdopen(descriptor, mode);
  if (stream == nullptr) close(descriptor);
  return own(stream);
}

bool awaitBytes(std::FILE* stream) {
  constexpr int second = 1000;
  pollfd waiting{fileno(stream), POLLIN, 0};
  return poll(&waiting, 1, second) != 0;
}

bool holdsBytes(std::FILE* stream, std::uint64_t size) {
  if (ByteReader(stream).remaining() < size) return false;
  return size == 0 ||
         (fseeko(stream, static_cast<off_t>(size - 1), SEEK_CUR) == 0 && std::fgetc(stream) != EOF);
}

// The blocks are small enough to stay in the processor's cache.
std::uint32_t copyBytes(std::FILE* from, std::FILE* to, std::uint32_t size) {
  constexpr std::size_t blockSize = std::size_t{256} * 1024;
  const auto block = std::make_unique_for_overwrite<char[]>(blockSize);
  std::uint32_t copied = 0;
  bool isTaken = true;
  while (copied < size) {
    const std::size_t wanted = std::min<std::size_t>(blockSize, size - copied);
    const std::size_t got = std::fread(block.get(), 1, wanted, from);
    isTaken = isTaken && std::fwrite(block.get(), 1, got, to) == got;
    copied += static_cast<std::uint32_t>(got);
    if (got < wanted) break;
  }
  return copied;
}

}  // namespace consolidator
