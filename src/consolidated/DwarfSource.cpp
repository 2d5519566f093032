#include "consolidated/DwarfSource.h"

#include "bytes/ByteReader.h"
#include "consolidated/SectionEntry.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace consolidator {

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

std::optional<std::uint32_t> DwarfSource::openFile(const std::string& path) {
  constexpr std::uint64_t largestSize = std::numeric_limits<std::int32_t>::max();
  StdioFile file = openStdioFile(path, "r");
  const std::uint64_t size = ByteReader(file.get()).remaining();
  if (size == 0 || size > largestSize || !holdsBytes(file.get(), size)) return std::nullopt;
  file_ = std::move(file);
  return static_cast<std::uint32_t>(size);
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
