#pragma once

#include "inspect/listing/FindReport.h"
#include "inspect/output/JsonDocument.h"

namespace consolidator::inspect {

/// Writes what is found into a JSON document, as elements of a list that is begun.
class FindDocument : public FindReport {
 public:
  explicit FindDocument(JsonDocument& document) : document_(document) {}

  void beginKernel(const consolidated::Kernel& kernel) override;
  void endKernel() override;
  void addKernel(const consolidated::Kernel& kernel) override;
  void addVariable(VariableKind kind, const consolidated::Variable& variable,
                   const FindQuery& query) override;
  void addRegister(const consolidated::HardwareVariable& hardware,
                   const RegisterInstances::Found& found, const FindQuery& query) override;

 private:
  JsonDocument& document_;
};

}  // namespace consolidator::inspect
