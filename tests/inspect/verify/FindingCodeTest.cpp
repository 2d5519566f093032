#include "inspect/verify/FindingCode.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace consolidator::inspect {
namespace {

using SeverityAndCode = std::pair<std::string, std::string>;

// What stands in the first columns of the document's tables, and below which heading.
std::multiset<SeverityAndCode> documentedCodes() {
  std::ifstream document(CONSOLIDATOR_DOCUMENTS "/findings.md");
  std::multiset<SeverityAndCode> codes;
  std::string heading;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("## ")) heading = line.substr(3);
    if (!line.starts_with("| `")) continue;
    std::istringstream column(line.substr(0, line.find('|', 1)));
    std::string code;
    while (std::getline(column, code, '`') && std::getline(column, code, '`')) {
      codes.emplace(heading, code);
    }
  }
  return codes;
}

TEST(FindingCodeTest, IsDocumentedBelowItsSeverity) {
  std::multiset<SeverityAndCode> codes;
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    std::string heading = std::string(nameOf(severityOf(code))) + "s";
    heading[0] -= 'a' - 'A';
    codes.emplace(std::move(heading), nameOf(code));
  }
  EXPECT_EQ(documentedCodes(), codes);
}

}  // namespace
}  // namespace consolidator::inspect
