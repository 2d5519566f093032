#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace consolidator {

/// An owned array of bytes whose size is fixed when it is made: a section of up to 4 GiB that is
/// held as a whole. It is mapped memory, backed by huge pages where the system has them: faulting
/// it in page by page costs more than copying the bytes.
class ByteBlock {
 public:
  /// Throws std::bad_alloc when there is no memory.
  explicit ByteBlock(std::size_t size);

  char* data() { return bytes_.get(); }

  std::size_t size() const { return size_; }

  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  struct Unmap {
    std::size_t size;
    void operator()(char* bytes) const;
  };

  std::size_t size_;
  std::unique_ptr<char[], Unmap> bytes_;
};

}  // namespace consolidator
