#pragma once

#include "inspect/records/ConsolidatedInput.h"
#include "inspect/report/FileSurvey.h"
#include "inspect/report/HtmlWriter.h"
#include "inspect/verify/Findings.h"

#include <optional>
#include <string>

namespace consolidator::inspect {

class SourceListing;

/// The page that shows all that is in a file. It is written from its beginning to its end while the
/// file is read; memory grows with the largest kernel, not with their number.
class ReportPage {
 public:
  /// Looks at all of the file, which must outlive this object. `version` is that of the program.
  ReportPage(const ConsolidatedInput& input, std::string version);

  /// Writes the page. The lines of conditions are taken from `sources`.
  void write(HtmlWriter& html, SourceListing& sources) const;

  /// What ended the reading of the file early.
  const std::optional<consolidated::Fault>& fault() const { return survey_.fault; }

 private:
  void writeContents(HtmlWriter& html) const;
  void writeOverview(HtmlWriter& html) const;
  void writeVerdict(HtmlWriter& html) const;
  void writeFacts(HtmlWriter& html) const;
  void writeInstances(HtmlWriter& html) const;
  void writeKernels(HtmlWriter& html, SourceListing& sources) const;

  const ConsolidatedInput* input_;
  std::string version_;
  FileSurvey survey_;
  Findings findings_;
};

}  // namespace consolidator::inspect
