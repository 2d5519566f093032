#pragma once

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "model/KernelRecord.h"
#include "readers/HdlReservedWords.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace consolidator {

/// Reads a kernel XML document from memory into its typed binding; nothing when it is refused.
inline std::optional<Devpack::Project> readProject(std::string_view document) {
  try {
    lmx::error_code result{};
    Devpack::Project project(std::make_unique<lmx::c_memory_source>(document), result);
    if (result == lmx::error_code::ok) return project;
  } catch (const lmx::c_lmx_exception&) {
  }
  return std::nullopt;
}

/// Makes the records of a document from its elements.
class PlainKernelXml {
 public:
  explicit PlainKernelXml(const Devpack::Project& project) {
    for (std::size_t p = 0; p < project.field<"platform">().count(); ++p) {
      const Devpack::Platform& platform = project.get<"platform">(p);
      for (std::size_t d = 0; d < platform.field<"device">().count(); ++d) {
        const Devpack::Device& device = platform.get<"device">(d);
        for (std::size_t c = 0; c < device.field<"core">().count(); ++c)
          take(device.get<"core">(c));
      }
    }
  }

  const KernelSequence& records() const { return records_; }

 private:
  // Each record holds the arguments of those before it.
  void take(const Devpack::Core& core) {
    for (std::size_t k = 0; k < core.field<"kernel">().count(); ++k) {
      const Devpack::Kernel& kernel = core.get<"kernel">(k);
      record_.name = kernel.get<"name">();
      for (std::size_t a = 0; a < kernel.field<"arg">().count(); ++a) {
        const std::string_view name = kernel.get<"arg">(a).get<"name">();
        record_.addArgument(restoreReservedWordName(name), name,
                            kernel.get<"arg">(a).get<"type">());
      }
      record_.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
      record_.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
      records_.push_back(record_);
    }
  }

  KernelRecord record_;
  KernelSequence records_;
};

}  // namespace consolidator
