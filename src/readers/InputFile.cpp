#include "readers/InputFile.h"

#include "model/KernelMerge.h"

#include <utility>

namespace consolidator {

InputFile::InputFile(const char* fileName) : fileName_(fileName), buffer_(fileName) {
  if (!buffer_.isOpen()) stream_.setstate(std::ios::failbit);
}

InputFile::InputFile(const char* fileName, std::string_view text)
    : fileName_(fileName), buffer_(text) {}

bool InputFile::isValid() const { return stream_.good() && !buffer_.hasMetEnd(); }

void InputFile::mergeInto(KernelList& known) { mergeKernels(known, std::exchange(kernels_, {})); }

}  // namespace consolidator
