#include "readers/KernelFile.h"

#include "lmx60/FileSource.h"
#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/ReadingObserver.h"
#include "model/KernelMerge.h"
#include "readers/HdlReservedWords.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <cstddef>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

// Hands on what is left out of a document.
class DocumentObserver final : public lmx::c_reading_observer {
 public:
  using UseEnd = std::function<void(const lmx::c_position& end)>;

  DocumentObserver(RunObserver& observer, UseEnd useEnd)
      : observer_(observer), useEnd_(std::move(useEnd)) {}

  void on_unknown_element(std::uint64_t line) override {
    observer_.onIgnored("an element that is not known in its place", line);
  }

  void on_unknown_attribute(std::uint64_t line) override {
    observer_.onIgnored("an attribute that is not known in its element", line);
  }

  void on_end(const lmx::c_position& position) override { useEnd_(position); }

 private:
  RunObserver& observer_;
  UseEnd useEnd_;
};

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
    readDocument();
  } catch (const lmx::c_lmx_exception& error) {
    std::cerr << "Could not parse kernel file" << std::endl;
    if (observer_ != nullptr) observer_->onRefused(error.what(), {error.line(), faultColumn_});
    return false;
  }
  return true;
}

void KernelFile::readDocument() {
  lmx::error_code errorCode{};
  if (observer_ == nullptr) {
    project_ = std::make_unique<const Devpack::Project>(fileName_, errorCode);
    return;
  }
  DocumentObserver document(*observer_, [this](const lmx::c_position& end) {
    extent_ = {end.bytes, end.column > 1 ? end.line : end.line - 1};
    faultColumn_ = end.column;
  });
  project_ = std::make_unique<const Devpack::Project>(openSource(), errorCode, &document);
}

std::unique_ptr<lmx::c_byte_source> KernelFile::openSource() const {
  if (observer_->isEmptied(fileName_)) return std::make_unique<lmx::c_memory_source>("");
  return std::make_unique<lmx::c_file_source>(fileName_);
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
      mergeKernel(known, argumentsFrom(record, std::exchange(before->argumentCount, count)),
                  observer_);
    } else {
      merged.append({record.name, count});
      mergeKernel(known, isLast ? std::move(record) : record, observer_);
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

void KernelFile::setKernel(KernelRecord& record, const Devpack::Kernel& kernel) const {
  record.name = kernel.get<"name">();
  if (observer_ != nullptr && record.name.empty()) {
    observer_->onIgnored("a kernel without a name", 0);
  }
  if (record.arguments.empty()) record.arguments.reserve(kernel.field<"arg">().count());
  kernel.field<"arg">().forEach([&](const Devpack::Arg& argument) {
    const std::string_view hardwareName = argument.get<"name">();
    const std::string name = restoreReservedWordName(hardwareName);
    if (observer_ != nullptr) observeArgument(record, {name, hardwareName, argument.get<"type">()});
    record.addArgument(name, hardwareName, argument.get<"type">());
  });
}

void KernelFile::observeArgument(KernelRecord& record, const VariableRecord& argument) const {
  const VariableRecord* const known = record.arguments.find(argument.name);
  if (known == nullptr || *known == argument) return;
  observer_->onDropped(record.name, Item::Argument, argument.name, 1,
                       "the document has an argument of that name already");
}

}  // namespace consolidator
