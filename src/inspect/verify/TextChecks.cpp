#include "inspect/verify/TextChecks.h"

#include "inspect/output/Utf8.h"
#include "inspect/verify/PlainBytes.h"

#include <algorithm>
#include <cstddef>

namespace consolidator::inspect {

namespace {

bool breaksJson(char c) { return c == '"' || c == '\\' || (c > '\0' && c < ' '); }

}  // namespace

bool checkText(const consolidated::Text& text, const TextPlace& place, std::string_view subject,
               FindingSink& findings) {
  const std::string_view stored = text.stored();
  if (plainBytes(stored) == stored.size()) return true;
  bool isFine = true;
  const auto report = [&](FindingCode code, std::size_t position) {
    if (position >= stored.size()) return;
    findings.add({code, place.section, text.offset() + position, place.kernel, subject});
    isFine = false;
  };
  report(FindingCode::ZeroByteInText, stored.find('\0'));
  report(FindingCode::TextNotUtf8, findIllFormed(stored));
  if (!place.isInJson) return isFine;
  const auto* const breaking = std::find_if(stored.begin(), stored.end(), breaksJson);
  report(FindingCode::TextBreaksJson, static_cast<std::size_t>(breaking - stored.begin()));
  return isFine;
}

}  // namespace consolidator::inspect
