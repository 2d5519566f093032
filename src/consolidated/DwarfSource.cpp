#include "consolidated/DwarfSource.h"

#include "bytes/ByteReader.h"
#include "consolidated/SectionEntry.h"
#include "observer/RunObserver.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace consolidator {

namespace {

constexpr std::uint64_t largestSize = std::numeric_limits<std::int32_t>::max();

// Why a file that is open is not taken; one that is empty is taken for what it is.
void tellRefusal(RunObserver& observer, std::FILE* file, std::uint64_t size) {
  struct stat status {};

  if (fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
    observer.onSkipped(EISDIR);
  } else if (size > largestSize) {
    observer.onRefused("a file of 2 GiB or more", {});
  } else if (size > 0) {
    observer.onRefused("a file that cannot be read to its end", {});
  } else if (fseek(file, 0, SEEK_CUR) != 0) {
    observer.onRefused("a pipe, whose size cannot be known", {});
  }
}

}  // namespace

void DwarfSource::readSection(std::FILE* in, const SectionEntry& entry) {
  bytes_.reset();
  size_ = 0;
  if (!entry.seek(in)) return;
  ByteReader reader(in);
  if (reader.remaining() < entry.size) return;
  auto bytes = std::make_unique_for_overwrite<char[]>(entry.size);
  if (!reader.readBytes(bytes.get(), entry.size)) return;
  bytes_ = std::move(bytes);
  size_ = entry.size;
}

std::optional<std::uint32_t> DwarfSource::openFile(const std::string& path, RunObserver* observer) {
  if (observer != nullptr && observer->isEmptied(path)) return std::nullopt;
  StdioFile file = openStdioFile(path, "r");
  if (observer != nullptr && !file) observer->onSkipped(errno);
  const std::uint64_t size = ByteReader(file.get()).remaining();
  if (size == 0 || size > largestSize || !holdsBytes(file.get(), size)) {
    if (observer != nullptr && file) tellRefusal(*observer, file.get(), size);
    return std::nullopt;
  }
  file_ = std::move(file);
  return static_cast<std::uint32_t>(size);
}

bool DwarfSource::isSameAs(std::FILE* file) const {
  ByteReader reader(file);
  if (reader.remaining() != size_) return false;
  const auto bytes = std::make_unique_for_overwrite<char[]>(size_);
  return reader.readBytes(bytes.get(), size_) &&
         std::equal(bytes.get(), bytes.get() + size_, bytes_.get());
}

std::uint32_t DwarfSource::write(std::FILE* out, std::uint32_t size) const {
  if (!file_) {
    static_cast<void>(std::fwrite(bytes_.get(), 1, std::min<std::size_t>(size, size_), out));
    return size;
  }
  if (std::fseek(file_.get(), 0, SEEK_SET) != 0) return size;
  return copyBytes(file_.get(), out, size);
}

}  // namespace consolidator
