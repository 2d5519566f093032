#pragma once

#include "consolidated/Kernel.h"
#include "inspect/coverage/KernelCoverage.h"
#include "inspect/report/HtmlWriter.h"
#include "inspect/report/PageTable.h"
#include "inspect/report/SourceListing.h"

#include <cstdint>
#include <optional>
#include <string>

namespace consolidator::inspect {

/// Writes all that is in kernels, one after another: the first ones each in a part of the page of
/// their own, all others as folded lines.
class KernelSection {
 public:
  /// The most kernels with a part of their own: browsers take long for more.
  static constexpr std::uint64_t mostParts = 500;

  /// Both must outlive this object. With `areOpen`, kernels are not folded.
  KernelSection(HtmlWriter& html, SourceListing& sources, bool areOpen)
      : html_(&html), sources_(&sources), areOpen_(areOpen) {}

  /// Writes the kernel that has this number on the page.
  void write(const consolidated::Kernel& kernel, std::uint64_t number);

 private:
  void writePart(const consolidated::Kernel& kernel, std::uint64_t number);
  void writeLists(const consolidated::Kernel& kernel);
  PageTable list(const PageListKind& kind, std::uint64_t rows);
  void writeInstances(const consolidated::Kernel& kernel, const KernelCoverage& coverage);
  void writeVariables(const consolidated::List<consolidated::Variable>& variables,
                      const KernelCoverage& coverage, VariableKind kind);
  void writeConditions(const consolidated::Kernel& kernel);
  void writeRegisters(const consolidated::Kernel& kernel);
  void writeBrams(const consolidated::Kernel& kernel);

  HtmlWriter* html_;
  SourceListing* sources_;
  bool areOpen_;
  RowBudget budget_;
  std::optional<PageLines> lines_;  // once there are too many kernels for parts
  std::string kernel_;              // of which there are lines, shortened
};

}  // namespace consolidator::inspect
