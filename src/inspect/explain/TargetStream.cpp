#include "inspect/explain/TargetStream.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace consolidator::inspect {

namespace {

struct Cookie {
  off64_t position = 0;
  off64_t end = 0;
  std::unique_ptr<StreamTarget> target;
};

ssize_t writeCookie(void* opaque, const char* bytes, size_t size) {
  auto& cookie = *static_cast<Cookie*>(opaque);
  if (!cookie.target->take(cookie.position, {bytes, size})) return 0;  // which is an error here
  cookie.position += static_cast<off64_t>(size);
  cookie.end = std::max(cookie.end, cookie.position);
  return static_cast<ssize_t>(size);
}

int seekCookie(void* opaque, off64_t* offset, int whence) {
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

StdioFile openTargetStream(std::unique_ptr<StreamTarget> target) {
  auto cookie = std::make_unique<Cookie>();
  cookie->target = std::move(target);
  StdioFile stream(fopencookie(cookie.get(), "w", {nullptr, writeCookie, seekCookie, closeCookie}));
  if (stream) static_cast<void>(cookie.release());  // the stream owns it
  return stream;
}

}  // namespace consolidator::inspect
