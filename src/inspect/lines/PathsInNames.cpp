#include "inspect/lines/PathsInNames.h"

#include <cstddef>
#include <string>

namespace consolidator::inspect {

namespace {

// How many more than the bytes of a name.
constexpr std::size_t spareMatches = 64;

TextSearch searchFor(const TextNumbers& paths, std::string_view suffix) {
  std::vector<std::string> texts(paths.size());
  paths.forEach([&](std::string_view path, std::uint32_t number) {
    texts[number].append(path).append(suffix);
  });
  const std::vector<std::string_view> patterns(texts.begin(), texts.end());
  return TextSearch(patterns);
}

}  // namespace

PathsInNames::PathsInNames(const TextNumbers& paths)
    : paths_(searchFor(paths, "")), scopes_(searchFor(paths, "/")), seenBy_(paths.size()) {}

const PathsInNames::Found& PathsInNames::in(std::string_view name) {
  const std::size_t enough = name.size() + spareMatches;
  ++searchNumber_;
  found_.certain = scopes_.findSomeIn(name, enough);
  for (const std::uint32_t path : found_.certain) seenBy_[path] = searchNumber_;
  const std::vector<std::uint32_t>& all = paths_.findSomeIn(name, enough);
  found_.areAll = all.size() < enough;
  found_.doubtful.clear();
  for (const std::uint32_t path : all) {
    if (seenBy_[path] != searchNumber_) found_.doubtful.push_back(path);
  }
  return found_;
}

}  // namespace consolidator::inspect
