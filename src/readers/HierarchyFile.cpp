#include "readers/HierarchyFile.h"

#include <iostream>
#include <string>

namespace consolidator {

namespace {

KernelType kernelType(std::string_view word) {
  if (word == "clc") return KernelType::OpenCL;
  if (word == "c") return KernelType::C;
  if (word == "ip") return KernelType::RTL;
  if (word == "hls") return KernelType::HLS;
  return KernelType::Unknown;
}

bool hasContent(const KernelRecord& kernel) {
  return !kernel.instancePaths.empty() || kernel.type != KernelType::Unknown;
}

}  // namespace

bool HierarchyFile::parse() {
  // The working record; it stays the last of the list while words are read.
  kernels_.emplace_back();
  anyKernel_ = false;
  const bool accepted = readWords();
  if (accepted && !anyKernel_ && hasContent(kernels_.back())) ignore("content of no kernel");
  if (!accepted || !anyKernel_) kernels_.pop_back();
  return accepted;
}

bool HierarchyFile::readWords() {
  while (stream_.good() && buffer_.skipWhiteSpace()) {
    // A comment may be of any length: its first word is not read.
    if (buffer_.buffered().front() == '#') {
      buffer_.skipLine();
      continue;
    }
    const std::string_view word = buffer_.readWord();
    if (word == "version:") {
      if (!readVersion()) return false;
    } else if (word == "instance") {
      if (!readInstancePath()) return false;
    } else if (word == "type:") {
      const std::string_view type = buffer_.readWord();
      if (observer_ != nullptr) observeType(type);
      kernels_.back().type = kernelType(type);
    } else {
      startKernel(word);
    }
  }
  return true;
}

// A number that cannot be extracted leaves the stream failed, which ends the reading.
bool HierarchyFile::readVersion() {
  stream_ >> version_;
  if (!stream_) ignore("all that follows a \"version:\" without a number");
  if (!(version_ > supportedVersion)) return true;
  std::cerr << "Unsupported hierarchy file: " << fileName_ << std::endl
            << "Version: " << version_ << std::endl
            << "Supported Version: " << supportedVersion << std::endl;
  return refuse("a version above 1");
}

bool HierarchyFile::readInstancePath() {
  if (buffer_.readWord() != "path:") {
    std::cerr << "Parse error" << std::endl;
    return refuse(R"(an "instance" without "path:")");
  }
  const std::string_view path = buffer_.readWord();
  if (observer_ != nullptr) observePath(path);
  kernels_.back().addInstancePath(path);
  return true;
}

// Odd, but to be kept: a kernel without a name is not stored when the next one starts; what it
// holds goes over to the next one.
void HierarchyFile::startKernel(std::string_view header) {
  if (observer_ != nullptr) observeHeader(header);
  if (!kernels_.back().name.empty()) kernels_.emplace_back();
  kernels_.back().name = header.substr(0, header.size() - 1);
  anyKernel_ = true;
}

void HierarchyFile::observePath(std::string_view path) {
  if (path.empty()) ignore("an instance path that the end of the file cuts off");
  if (kernels_.back().instancePaths.contains(path)) {
    ignore("an instance path that the kernel has already", path);
  }
}

void HierarchyFile::observeType(std::string_view word) {
  if (kernels_.back().type != KernelType::Unknown) {
    ignore("a type that a later one replaces", word);
  }
  if (kernelType(word) == KernelType::Unknown) ignore("a type that is not known", word);
}

void HierarchyFile::observeHeader(std::string_view header) {
  if (header.back() != ':') {
    ignore("the last character of a kernel's name, which is no \":\"", header);
  }
  if (header.size() == 1) ignore("a kernel without a name", header);
  if (anyKernel_ && kernels_.back().name.empty()) {
    ignore("a kernel without a name, whose content goes to the next one", header);
  }
  if (!anyKernel_ && hasContent(kernels_.back())) {
    ignore("the place before the first kernel, whose content goes to that one", header);
  }
}

}  // namespace consolidator
