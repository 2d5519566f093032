#include "readers/HlsFunctionRecord.h"

#include "readers/LeadingDecimal.h"

#include <algorithm>

namespace consolidator {

void HlsFunctionRecord::clear() {
  name.clear();
  files.clear();
  lines.clear();
  locals.clear();
}

void HlsFunctionRecord::addLocation(std::string_view position) {
  const std::size_t colon = std::min(position.find(':'), position.size());
  const std::string_view file = position.substr(0, colon);
  const std::string_view digits = position.substr(std::min(colon + 1, position.size()));
  const auto line = static_cast<std::uint32_t>(leadingDecimal(digits));
  if (!files.contains(file)) files.append(std::string(file));
  if (!lines.contains(line)) lines.append(line);
}

}  // namespace consolidator
