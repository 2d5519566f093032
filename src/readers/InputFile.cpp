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

void InputFile::mergeInto(KernelList& known) {
  mergeKernels(known, std::exchange(kernels_, {}), observer_);
}

void InputFile::observe(RunObserver& observer) {
  observer_ = &observer;
  buffer_.observe(observer);
  if (observer.isEmptied(fileName_)) {
    buffer_.becomeEmpty();
    stream_.clear();
  } else if (!buffer_.isOpen()) {
    observer.onSkipped(buffer_.openError());
  }
}

bool InputFile::refuse(std::string_view reason, std::string_view bytes) {
  if (observer_ != nullptr) observer_->onRefused(reason, {lineOf(bytes), 0});
  return false;
}

std::uint64_t InputFile::lineOf(std::string_view bytes) {
  return bytes.data() == nullptr ? buffer_.line() : buffer_.lineOf(bytes.data());
}

void InputFile::observeEnd(std::string_view line) {
  if (buffer_.endsInZeroByte(line)) ignore("the rest of a line after a zero byte", line);
}

void InputFile::tellIgnored(std::string_view reason, std::string_view bytes) {
  observer_->onIgnored(reason, lineOf(bytes));
}

}  // namespace consolidator
