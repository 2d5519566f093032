#include "inspect/lines/SourcePath.h"

#include <algorithm>
#include <cstddef>

namespace consolidator::inspect {

std::string reversedComponents(std::string_view path) {
  std::string reversed;
  std::size_t dropped = 0;  // components that those after them have taken back
  while (!path.empty()) {
    const std::size_t start = path.rfind('/') + 1;
    const std::string_view component = path.substr(start);
    path = path.substr(0, start == 0 ? 0 : start - 1);
    if (component.empty() || component == ".") continue;
    if (component == "..") {
      ++dropped;
    } else if (dropped > 0) {
      --dropped;
    } else {
      reversed.append(component).append("/");
    }
  }
  return reversed;
}

}  // namespace consolidator::inspect
