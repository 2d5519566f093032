#pragma once

#include "consolidated/Kernel.h"
#include "inspect/HtmlWriter.h"
#include "inspect/SourceFolder.h"

#include <optional>
#include <string>

namespace consolidator::inspect {

/// Shows the breakable conditions of kernels beside the lines of their source.
class SourceListing {
 public:
  void write(HtmlWriter&, const consolidated::List<consolidated::BreakableCondition>&) {}
};

}  // namespace consolidator::inspect
