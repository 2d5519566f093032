#include "observer/RunObserver.h"

namespace consolidator {

RunObserver::~RunObserver() = default;

}  // namespace consolidator
