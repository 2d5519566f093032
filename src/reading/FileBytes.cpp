#include "reading/FileBytes.h"

#include "consolidated/Cursor.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <utility>

namespace consolidated {

namespace {

constexpr std::uint32_t magic = 0xBEEFDAD4U;

// Memory that grows as bytes arrive. It is mapped, and so is never copied to grow.
class GrowingBlock {
 public:
  GrowingBlock() = default;
  GrowingBlock(const GrowingBlock&) = delete;
  GrowingBlock& operator=(const GrowingBlock&) = delete;

  ~GrowingBlock() {
    if (capacity_ > 0) munmap(bytes_, capacity_);
  }

  std::string_view view() const { return {bytes_, size_}; }

  // Makes room for at least one more byte.
  bool grow() {
    if (size_ < capacity_) return true;
    constexpr std::size_t firstCapacity = std::size_t{64} * 1024;
    return capacity_ == 0 ? map(firstCapacity) : remap(2 * capacity_);
  }

  // Reads into the room there is, as `read` does.
  ssize_t readFrom(int descriptor) {
    const ssize_t got = read(descriptor, bytes_ + size_, capacity_ - size_);
    if (got > 0) size_ += static_cast<std::size_t>(got);
    return got;
  }

  // Hands the mapping over, without the room that is left.
  std::string_view release() {
    remap(size_);
    capacity_ = 0;
    return view();
  }

 private:
  bool map(std::size_t capacity) {
    constexpr int access = PROT_READ | PROT_WRITE;
    return hold(mmap(nullptr, capacity, access, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0), capacity);
  }

  bool remap(std::size_t capacity) {
    return hold(mremap(bytes_, capacity_, capacity, MREMAP_MAYMOVE), capacity);
  }

  bool hold(void* bytes, std::size_t capacity) {
    if (bytes == MAP_FAILED) return false;
    bytes_ = static_cast<char*>(bytes);
    capacity_ = capacity;
    return true;
  }

  char* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// Whether a read that failed is to be tried again, once there is something to read.
bool isWorthAnotherTry(int descriptor) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN) return false;
  pollfd waiting{descriptor, POLLIN, 0};
  return poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

std::optional<Fault> headerFault(std::string_view bytes) noexcept {
  if (bytes.size() < headerSize) return Fault{FaultCode::ShortHeader, std::nullopt, 0, 0};
  if (detail::u32At(bytes.data()) != magic) return Fault{FaultCode::WrongMagic, std::nullopt, 0, 0};
  return std::nullopt;
}

std::string_view mapFile(int descriptor) noexcept {
  struct stat status {};

  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0 ||
      std::uint64_t(status.st_size) > std::numeric_limits<std::size_t>::max() ||
      lseek(descriptor, 0, SEEK_CUR) != 0) {
    return {};
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (bytes == MAP_FAILED) return {};
  return {static_cast<const char*>(bytes), size};
}

Result<std::string_view> readFile(int descriptor) noexcept {
  GrowingBlock block;
  for (;;) {
    if (!block.grow()) return Fault{FaultCode::OutOfMemory, std::nullopt, 0, 0};
    const ssize_t got = block.readFrom(descriptor);
    if (got == 0) break;
    if (got < 0 && !isWorthAnotherTry(descriptor)) {
      return Fault{FaultCode::CannotRead, std::nullopt, 0, errno};
    }
    if (block.view().size() < headerSize) continue;
    if (const auto fault = headerFault(block.view())) return *fault;
  }
  if (const auto fault = headerFault(block.view())) return *fault;
  return block.release();
}

}  // namespace consolidated
