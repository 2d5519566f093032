#include "consolidated/Variable.h"

#include <string_view>

namespace consolidated {

std::uint32_t Variable::bitWidth() const noexcept {
  const std::string_view type = cType_.view();
  if (type.find('*') != std::string_view::npos) return 64;
  if (type.find("char") != std::string_view::npos) return 8;
  return 32;
}

}  // namespace consolidated
