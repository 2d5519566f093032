#include "inspect/explain/InstanceNets.h"

#include "lookup/KeyedHash.h"
#include "text/FindLast.h"

#include <algorithm>

namespace consolidator::inspect {

namespace {

constexpr std::size_t placeCount = 16384;

// The instances of a kernel are neighbours and hold nets of the same names, which a set that holds
// so many of them by one hash makes small.
constexpr std::uint32_t neighbours = 8;

NumbersByText indexPaths(const KernelList& kernels) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const std::string& path : kernels[i].instancePaths) notes.push_back({path, i});
  }
  return NumbersByText(notes);
}

TextSearch makeSearch(const NumbersByText& paths) {
  std::vector<std::string> patterns;
  patterns.reserve(paths.size());
  for (const std::string_view path : paths.texts()) patterns.push_back(std::string(path) + '/');
  const std::vector<std::string_view> views(patterns.begin(), patterns.end());
  return TextSearch(views);
}

}  // namespace

InstanceNets::InstanceNets(const KernelList& kernels)
    : paths_(indexPaths(kernels)),
      search_(makeSearch(paths_)),
      places_(placeCount),
      netsByPath_(paths_.size()) {}

// The nets of one place often follow one another, and come again. Places that push out each other
// cost a search each time, as new ones do.
const InstanceNets::Paths& InstanceNets::around(std::string_view hardwareName) {
  constexpr std::size_t mostPaths = 64;
  const std::string_view text = hardwareName.substr(0, findLast(hardwareName, '/') + 1);
  const std::uint64_t hash = keyedHash(text);
  Place& place = places_[hash % placeCount];
  if (place.hash != hash) {
    place.hash = hash;
    const Paths& found = search_.findIn(text);
    isLimited_ |= found.size() > mostPaths;
    place.paths.assign(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(
                                                          std::min(found.size(), mostPaths)));
  }
  return place.paths;
}

void InstanceNets::keep(std::string_view hardwareName, const Paths& paths) {
  constexpr std::size_t mostKept = 1'000'000;
  if (kept_ >= mostKept) {
    isLimited_ = true;
    return;
  }
  const std::uint64_t leaf = keyedHash(lastComponent(hardwareName));
  const auto number = static_cast<std::uint32_t>(nets_.size());
  for (const std::uint32_t path : paths) {
    if (!seen_.add(keyedHash(leaf + path / neighbours), path % neighbours)) continue;
    if (nets_.size() == number) nets_.emplace_back(hardwareName);
    netsByPath_[path].push_back(number);
    ++kept_;
  }
}

std::string_view lastComponent(std::string_view name) {
  return name.substr(findLast(name, '/') + 1);
}

}  // namespace consolidator::inspect
