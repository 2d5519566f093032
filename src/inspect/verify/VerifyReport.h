#pragma once

#include "inspect/output/JsonDocument.h"
#include "inspect/output/OutputSink.h"
#include "inspect/verify/SeverityRules.h"
#include "inspect/verify/VerifiedFile.h"

namespace consolidator::inspect {

/// What a report of findings lists.
struct ReportRules {
  SeverityRules severities;
  bool listsNotes = false;  ///< in the text; documents list them anyway
  bool listsAll = false;    ///< however many there are of a code
};

/// Tells what was found in files, one after another.
class VerifyReport {
 public:
  explicit VerifyReport(const ReportRules& rules) : rules_(rules) {}

  VerifyReport(const VerifyReport&) = delete;
  VerifyReport& operator=(const VerifyReport&) = delete;
  virtual ~VerifyReport() = default;

  virtual void add(const VerifiedFile& file) = 0;

  /// Ends the report; nothing can be added then.
  virtual void end() = 0;

 protected:
  const ReportRules& rules() const { return rules_; }

  /// Gives the findings of a code that are to be listed to `sink`.
  void list(const VerifiedFile& file, FindingCode code, FindingSink& sink) const;

 private:
  ReportRules rules_;
};

/// Lines for people: one for each finding, and last the verdict on the file.
class VerifyText : public VerifyReport {
 public:
  VerifyText(OutputSink& out, const ReportRules& rules) : VerifyReport(rules), out_(&out) {}

  void add(const VerifiedFile& file) override;

  void end() override {}

 private:
  void listCode(const VerifiedFile& file, FindingCode code);

  OutputSink* out_;
};

/// One JSON document for programs.
class VerifyDocument : public VerifyReport {
 public:
  VerifyDocument(OutputSink& out, const ReportRules& rules, std::string_view format);

  void add(const VerifiedFile& file) override;
  void end() override;

 private:
  void writeCounts(const VerifiedFile& file);
  void writeFindings(const VerifiedFile& file);

  JsonDocument document_;
};

}  // namespace consolidator::inspect
