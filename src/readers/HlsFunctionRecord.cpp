#include "readers/HlsFunctionRecord.h"

#include "text/LeadingDecimal.h"

#include <algorithm>

namespace consolidator {

void HlsFunctionRecord::clear() {
  name.clear();
  file.clear();
  line.reset();
  locals.clear();
}

void HlsFunctionRecord::addLocation(std::string_view position) {
  if (line) return;
  const std::size_t colon = std::min(position.find(':'), position.size());
  file = position.substr(0, colon);
  const std::string_view digits = position.substr(std::min(colon + 1, position.size()));
  line = static_cast<std::uint32_t>(leadingDecimal(digits));
}

}  // namespace consolidator
