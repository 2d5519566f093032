#pragma once

#include "inspect/command/Command.h"
#include "inspect/listing/FindReport.h"

namespace consolidator::inspect {

/// Writes what is found for people.
class FindText : public FindReport {
 public:
  explicit FindText(Console& console) : console_(console) {}

  void beginKernel(const consolidated::Kernel& kernel) override;

  void endKernel() override {}

  void addKernel(const consolidated::Kernel& kernel) override;
  void addVariable(VariableKind kind, const consolidated::Variable& variable,
                   const FindQuery& query) override;
  void addRegister(const consolidated::HardwareVariable& hardware,
                   const RegisterInstances::Found& found, const FindQuery& query) override;

 private:
  Console& console_;
};

}  // namespace consolidator::inspect
