#include "readers/KernelFile.h"

#include "lmx60/LmxException.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <iostream>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

// Calls `use` with every kernel of the project in document order.
template <typename Use>
void forEachKernel(const Devpack::Project& project, Use use) {
  project.platform.forEach([&](const Devpack::Platform& platform) {
    platform.device.forEach([&](const Devpack::Device& device) {
      device.core.forEach([&](const Devpack::Core& core) { core.kernel.forEach(use); });
    });
  });
}

}  // namespace

// An input that is missing costs next to nothing, however often the command line names it.
KernelFile::KernelFile(const char* fileName) : InputFile(fileName) {
  if (buffer_.isOpen()) buildHdlReservedWords(reservedWords_);
}

bool KernelFile::parse() {
  Devpack::Project project;
  try {
    lmx::error_code errorCode{};
    project = Devpack::Project(fileName_, errorCode);
  } catch (const lmx::c_lmx_exception&) {
    std::cerr << "Could not parse kernel file" << std::endl;
    return false;
  }
  forEachKernel(project, [this](const Devpack::Kernel& kernel) { addKernel(kernel); });
  return true;
}

// A record starts as a copy of the one before it, deliberately: each kernel is stored with the
// arguments of those before it.
void KernelFile::addKernel(const Devpack::Kernel& kernel) {
  KernelRecord record = kernels_.empty() ? KernelRecord() : kernels_.back();
  record.name = kernel.name.get();
  record.arguments.reserve(record.arguments.size() + kernel.arg.count());
  kernel.arg.forEach([&](const Devpack::Arg& argument) {
    const std::string_view hardwareName = argument.name.get();
    record.addArgument(restoreReservedWordName(hardwareName, reservedWords_), hardwareName,
                       argument.type.get());
  });
  record.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  record.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
  kernels_.push_back(std::move(record));
}

}  // namespace consolidator
