#pragma once

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/XmlReader.h"
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
    lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
    Devpack::Project project;
    project.unmarshal(reader, "project");
    if (result == lmx::error_code::ok) return project;
  } catch (const lmx::c_lmx_exception&) {
  }
  return std::nullopt;
}

/// Makes the records of a document from its elements.
class PlainKernelXml {
 public:
  explicit PlainKernelXml(const Devpack::Project& project) {
    static const HdlReservedWords words = reservedWords();
    for (std::size_t p = 0; p < project.platform.count(); ++p) {
      const Devpack::Platform& platform = project.platform.get(p);
      for (std::size_t d = 0; d < platform.device.count(); ++d) {
        const Devpack::Device& device = platform.device.get(d);
        for (std::size_t c = 0; c < device.core.count(); ++c) take(device.core.get(c), words);
      }
    }
  }

  const std::vector<KernelRecord>& records() const { return records_; }

 private:
  static HdlReservedWords reservedWords() {
    HdlReservedWords words;
    buildHdlReservedWords(words);
    return words;
  }

  // Each record holds the arguments of those before it.
  void take(const Devpack::Core& core, const HdlReservedWords& words) {
    for (std::size_t k = 0; k < core.kernel.count(); ++k) {
      const Devpack::Kernel& kernel = core.kernel.get(k);
      record_.name = kernel.name.get();
      for (std::size_t a = 0; a < kernel.arg.count(); ++a) {
        const std::string_view name = kernel.arg.get(a).name.get();
        record_.addArgument(restoreReservedWordName(name, words), name,
                            kernel.arg.get(a).type.get());
      }
      record_.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
      record_.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
      records_.push_back(record_);
    }
  }

  KernelRecord record_;
  std::vector<KernelRecord> records_;
};

}  // namespace consolidator
