#include "inspect/verify/VerifyReport.h"

#include "inspect/output/PlainText.h"
#include "inspect/output/Utf8.h"

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace consolidator::inspect {

namespace {

class CallingSink : public FindingSink {
 public:
  explicit CallingSink(std::function<void(const Finding&)> call) : call_(std::move(call)) {}

  void add(const Finding& finding) override { call_(finding); }

 private:
  std::function<void(const Finding&)> call_;
};

template <typename Visit>
void forEachCode(const VerifiedFile& file, Visit visit) {
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    if (file.count(code) > 0) visit(code);
  }
}

std::string placeOf(const VerifiedFile& file, const Finding& finding) {
  if (!finding.offset) return plain(file.path());
  return fmt::format("{}:{:#x}", plain(file.path()), *finding.offset);
}

std::string lineOf(const VerifiedFile& file, const Finding& finding, Severity severity) {
  const std::string kernel =
      finding.kernel ? fmt::format(" (kernel \"{}\")", plain(kernelNameOf(finding))) : "";
  return fmt::format("{}: {}: {}{} [{}]\n", placeOf(file, finding), nameOf(severity),
                     plain(sentenceOf(finding)), kernel, nameOf(finding.code));
}

template <typename T>
void writeOptional(JsonDocument& document, std::string_view key, const std::optional<T>& value) {
  document.key(key);
  value ? document.value(*value) : document.null();
}

void writeFinding(JsonDocument& document, const Finding& finding, Severity severity) {
  document.beginObject();
  document.member("code", nameOf(finding.code));
  document.member("severity", nameOf(severity));
  writeOptional(document, "section", finding.section);
  writeOptional(document, "offset", finding.offset);
  document.key("kernel");
  finding.kernel ? document.value(kernelNameOf(finding)) : document.null();
  document.member("message", std::string_view(sentenceOf(finding)));
  document.endObject();
}

}  // namespace

void VerifyReport::list(const VerifiedFile& file, FindingCode code, FindingSink& sink) const {
  if (rules_.listsAll) return file.listAll(code, sink);
  for (const Finding& finding : file.list(code)) sink.add(finding);
}

void VerifyText::add(const VerifiedFile& file) {
  forEachCode(file, [&](FindingCode code) { listCode(file, code); });
  out_->write(
      fmt::format("{}: {}\n", plain(file.path()), nameOf(file.verdict(rules().severities))));
}

void VerifyText::listCode(const VerifiedFile& file, FindingCode code) {
  const Severity severity = rules().severities(code);
  if (severity == Severity::Note && !rules().listsNotes) return;
  std::uint64_t left = file.count(code);
  CallingSink sink([&](const Finding& finding) {
    out_->write(lineOf(file, finding, severity));
    --left;
  });
  list(file, code, sink);
  if (left == 0) return;
  out_->write(fmt::format("{}: {}: {} more, which --all lists [{}]\n", plain(file.path()),
                          nameOf(severity), left, nameOf(code)));
}

VerifyDocument::VerifyDocument(OutputSink& out, const ReportRules& rules, std::string_view format)
    : VerifyReport(rules), document_(out) {
  document_.beginObject().member("format", format).key("files").beginArray();
}

void VerifyDocument::add(const VerifiedFile& file) {
  document_.beginObject();
  document_.member("path", std::string_view(wellFormed(file.path())));
  document_.member("verdict", nameOf(file.verdict(rules().severities)));
  writeCounts(file);
  writeFindings(file);
  document_.endObject();
}

void VerifyDocument::end() { document_.endArray().endObject().end(); }

void VerifyDocument::writeCounts(const VerifiedFile& file) {
  document_.key("counts").beginObject();
  forEachCode(file, [&](FindingCode code) { document_.member(nameOf(code), file.count(code)); });
  document_.endObject();
}

void VerifyDocument::writeFindings(const VerifiedFile& file) {
  document_.key("findings").beginArray();
  CallingSink sink([&](const Finding& finding) {
    writeFinding(document_, finding, rules().severities(finding.code));
  });
  forEachCode(file, [&](FindingCode code) { list(file, code, sink); });
  document_.endArray();
}

}  // namespace consolidator::inspect
