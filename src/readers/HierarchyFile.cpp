#include "readers/HierarchyFile.h"

#include <iostream>
#include <string>
#include <utility>

namespace consolidator {

namespace {

KernelType kernelType(std::string_view word) {
  if (word == "clc") return KernelType::OpenCL;
  if (word == "c") return KernelType::C;
  if (word == "ip") return KernelType::RTL;
  if (word == "hls") return KernelType::HLS;
  return KernelType::Unknown;
}

}  // namespace

bool HierarchyFile::parse() {
  KernelRecord kernel;
  bool anyKernel = false;
  while (stream_.good()) {
    const std::string_view word = buffer_.readWord();
    if (word.empty()) break;
    if (word.front() == '#') {
      buffer_.skipLine();
    } else if (word == "version:") {
      if (!readVersion()) return false;
    } else if (word == "instance") {
      if (!readInstancePath(kernel)) return false;
    } else if (word == "type:") {
      kernel.type = kernelType(buffer_.readWord());
    } else {
      startKernel(kernel, word);
      anyKernel = true;
    }
  }
  if (anyKernel) kernels_.push_back(std::move(kernel));
  return true;
}

// A number that cannot be extracted leaves the stream failed, which ends the reading.
bool HierarchyFile::readVersion() {
  stream_ >> version_;
  if (!(version_ > supportedVersion)) return true;
  std::cerr << "Unsupported hierarchy file: " << fileName_ << std::endl
            << "Version: " << version_ << std::endl
            << "Supported Version: " << supportedVersion << std::endl;
  return false;
}

bool HierarchyFile::readInstancePath(KernelRecord& kernel) {
  if (buffer_.readWord() != "path:") {
    std::cerr << "Parse error" << std::endl;
    return false;
  }
  kernel.addInstancePath(buffer_.readWord());
  return true;
}

// A kernel without a name is not stored when the next one starts: what it holds so far goes over to
// the next one, deliberately.
void HierarchyFile::startKernel(KernelRecord& kernel, std::string_view header) {
  if (!kernel.name.empty()) {
    kernels_.push_back(std::move(kernel));
    kernel = KernelRecord();
  }
  kernel.name = header.substr(0, header.size() - 1);
}

}  // namespace consolidator
