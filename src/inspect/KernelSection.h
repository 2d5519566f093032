#pragma once

#include "consolidated/Kernel.h"
#include "inspect/HtmlWriter.h"
#include "inspect/KernelCoverage.h"
#include "inspect/PageTable.h"
#include "inspect/SourceListing.h"

#include <cstdint>

namespace consolidator::inspect {

/// Writes all that is in kernels, one after another.
class KernelSection {
 public:
  /// Both must outlive this object. With `areOpen`, kernels are not folded.
  KernelSection(HtmlWriter& html, SourceListing& sources, bool areOpen)
      : html_(&html), sources_(&sources), areOpen_(areOpen) {}

  /// Writes the kernel that has this number on the page.
  void write(const consolidated::Kernel& kernel, std::uint64_t number);

 private:
  void writeInstances(const consolidated::Kernel& kernel, const KernelCoverage& coverage);
  void writeConditions(const consolidated::Kernel& kernel);
  void writeRegisters(const consolidated::Kernel& kernel);
  void writeBrams(const consolidated::Kernel& kernel);

  HtmlWriter* html_;
  SourceListing* sources_;
  bool areOpen_;
  RowBudget budget_;
};

}  // namespace consolidator::inspect
