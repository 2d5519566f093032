#pragma once

#include "inspect/listing/FindQuery.h"
#include "inspect/records/RegisterInstances.h"
#include "inspect/records/VariableKind.h"

namespace consolidator::inspect {

/// Takes what is found in a file, kernel by kernel.
class FindReport {
 public:
  FindReport() = default;
  FindReport(const FindReport&) = delete;
  FindReport& operator=(const FindReport&) = delete;
  virtual ~FindReport() = default;

  /// Comes before what is found in a kernel, and only if something is.
  virtual void beginKernel(const consolidated::Kernel& kernel) = 0;
  virtual void endKernel() = 0;

  /// The kernel itself bears the name.
  virtual void addKernel(const consolidated::Kernel& kernel) = 0;

  virtual void addVariable(VariableKind kind, const consolidated::Variable& variable,
                           const FindQuery& query) = 0;

  virtual void addRegister(const consolidated::HardwareVariable& hardware,
                           const RegisterInstances::Found& found, const FindQuery& query) = 0;
};

}  // namespace consolidator::inspect
