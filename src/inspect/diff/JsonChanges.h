#pragma once

#include "inspect/diff/Change.h"
#include "inspect/diff/FileComparison.h"
#include "inspect/output/JsonDocument.h"

namespace consolidator::inspect {

/// Writes each change as an object into the array that a JSON document is in.
class JsonChanges : public ChangeSink {
 public:
  explicit JsonChanges(JsonDocument& document) : document_(&document) {}

  void take(const Change& change) override;

 private:
  JsonDocument* document_;
};

/// Writes the counts of a comparison, each as an array of that before and that after.
void writeItem(JsonDocument& document, const ComparisonResult& result);

}  // namespace consolidator::inspect
