#include "model/KernelJson.h"

#include "bytes/ByteWriter.h"
#include "model/KernelJsonText.h"

#include <string_view>

namespace consolidator {

std::string_view KernelRecord::instanceSuffix() const {
  return KernelJsonText::instanceSuffix(arguments);
}

void KernelRecord::writeJson(ByteWriter& out) const { KernelJsonText::writeKernel(out, *this); }

void writeKernelsJson(KernelList& kernels, ByteWriter& out) {
  KernelJsonText text(out);
  kernels.edit([&](KernelSequence& records) {
    for (KernelRecord& kernel : records) {
      kernel.prepareBreakableConditions();
      text.add(kernel);
    }
  });
  text.end();
}

}  // namespace consolidator
