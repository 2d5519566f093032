#include "readers/KernelFile.h"

#include "lmx60/LmxException.h"
#include "model/KernelMerge.h"
#include "readers/HdlReservedWords.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

// Calls `use` with every kernel of the project in document order.
template <typename Use>
void forEachKernel(const Devpack::Project& project, Use use) {
  project.field<"platform">().forEach([&](const Devpack::Platform& platform) {
    platform.field<"device">().forEach([&](const Devpack::Device& device) {
      device.field<"core">().forEach(
          [&](const Devpack::Core& core) { core.field<"kernel">().forEach(use); });
    });
  });
}

// How many arguments of the document a kernel got so far.
struct MergedKernel {
  std::string name;
  std::size_t argumentCount = 0;
};

struct MergedKernelKey : TextKeyHash {
  std::string_view operator()(const MergedKernel& kernel) const { return kernel.name; }
};

// The arguments of the record from a position on, for the kernel of its name.
KernelRecord argumentsFrom(const KernelRecord& record, std::size_t position) {
  KernelRecord part;
  part.name = record.name;
  for (; position < record.arguments.size(); ++position) {
    part.arguments.append(record.arguments[position]);
  }
  return part;
}

}  // namespace

KernelFile::KernelFile(const char* fileName) : InputFile(fileName) {}

KernelFile::~KernelFile() = default;

bool KernelFile::parse() {
  try {
    lmx::error_code errorCode{};
    project_ = std::make_unique<const Devpack::Project>(fileName_, errorCode);
  } catch (const lmx::c_lmx_exception&) {
    std::cerr << "Could not parse kernel file" << std::endl;
    return false;
  }
  return true;
}

const KernelSequence& KernelFile::kernels() {
  if (kernels_.empty()) {
    forEachRecord([this](const KernelRecord& record, bool) { kernels_.push_back(record); });
  }
  return kernels_;
}

// A kernel whose name came before in the document lacks only the arguments that came since: merging
// the others again would take n² steps for n kernels of one name.
void KernelFile::mergeInto(KernelList& known) {
  KeyedList<MergedKernel, MergedKernelKey> merged;
  forEachRecord([&](KernelRecord& record, bool isLast) {
    const std::size_t count = record.arguments.size();
    if (MergedKernel* const before = merged.find(record.name)) {
      mergeKernel(known, argumentsFrom(record, std::exchange(before->argumentCount, count)));
    } else {
      merged.append({record.name, count});
      mergeKernel(known, isLast ? std::move(record) : record);
    }
  });
}

// Odd, but to be kept: one record serves for the whole document, so each kernel is stored with the
// arguments of those before it. `use` may move the last record away.
template <typename Use>
void KernelFile::forEachRecord(Use use) const {
  if (!project_) return;
  std::size_t left = 0;
  forEachKernel(*project_, [&](const Devpack::Kernel&) { ++left; });
  KernelRecord record;
  record.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  record.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
  forEachKernel(*project_, [&](const Devpack::Kernel& kernel) {
    setKernel(record, kernel);
    use(record, --left == 0);
  });
}

void KernelFile::setKernel(KernelRecord& record, const Devpack::Kernel& kernel) {
  record.name = kernel.get<"name">();
  if (record.arguments.empty()) record.arguments.reserve(kernel.field<"arg">().count());
  kernel.field<"arg">().forEach([&](const Devpack::Arg& argument) {
    const std::string_view hardwareName = argument.get<"name">();
    record.addArgument(restoreReservedWordName(hardwareName), hardwareName, argument.get<"type">());
  });
}

}  // namespace consolidator
