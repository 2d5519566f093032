#include "inspect/NullStream.h"

#include <sys/types.h>

#include <cstdio>
#include <memory>

namespace consolidator::inspect {

namespace {

struct Cookie {
  off64_t position = 0;
  off64_t end = 0;
  std::string* copy = nullptr;
};

ssize_t writeToCookie(void* opaque, const char* bytes, size_t size) {
  auto& cookie = *static_cast<Cookie*>(opaque);
  if (cookie.copy != nullptr) cookie.copy->append(bytes, size);
  cookie.position += static_cast<off64_t>(size);
  if (cookie.position > cookie.end) cookie.end = cookie.position;
  return static_cast<ssize_t>(size);
}

int seekInCookie(void* opaque, off64_t* offset, int whence) {
  auto& cookie = *static_cast<Cookie*>(opaque);
  off64_t target = *offset;
  if (whence == SEEK_CUR) target += cookie.position;
  if (whence == SEEK_END) target += cookie.end;
  if (target < 0) return -1;
  *offset = cookie.position = target;
  return 0;
}

int closeCookie(void* opaque) {
  std::unique_ptr<Cookie>(static_cast<Cookie*>(opaque)).reset();
  return 0;
}

}  // namespace

StdioFile openNullStream(std::string* copy) {
  auto cookie = std::make_unique<Cookie>();
  cookie->copy = copy;
  StdioFile stream(
      fopencookie(cookie.get(), "w", {nullptr, writeToCookie, seekInCookie, closeCookie}));
  if (stream) static_cast<void>(cookie.release());  // the stream owns it
  return stream;
}

}  // namespace consolidator::inspect
