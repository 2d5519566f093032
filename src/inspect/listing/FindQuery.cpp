#include "inspect/listing/FindQuery.h"

#include "inspect/records/LocationText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace consolidator::inspect {

FindQuery::FindQuery(std::string text) : text_(std::move(text)), location_(parseLocation(text_)) {}

bool FindQuery::names(const consolidated::Kernel& kernel) const {
  return !location_ && kernel.name().view() == text_;
}

bool FindQuery::names(const consolidated::Variable& variable) const {
  return !location_ && (variable.name().view() == text_ || variable.second().view() == text_);
}

bool FindQuery::names(const consolidated::HardwareVariable& variable) const {
  if (location_) return false;
  const std::string_view name = variable.rtlName().view();
  return name == text_ || variable.registerName() == text_ ||
         (name.starts_with('/') && name.substr(1) == text_);
}

bool FindQuery::isAmong(const consolidated::Locations& locations) const {
  return location_ && std::find(locations.begin(), locations.end(), *location_) != locations.end();
}

}  // namespace consolidator::inspect
