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

}  // namespace

bool HierarchyFile::parse() {
  // The working record; it stays the last of the list while words are read.
  kernels_.emplace_back();
  anyKernel_ = false;
  const bool accepted = readWords();
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
      kernels_.back().type = kernelType(buffer_.readWord());
    } else {
      startKernel(word);
    }
  }
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

bool HierarchyFile::readInstancePath() {
  if (buffer_.readWord() != "path:") {
    std::cerr << "Parse error" << std::endl;
    return false;
  }
  kernels_.back().addInstancePath(buffer_.readWord());
  return true;
}

// Odd, but to be kept: a kernel without a name is not stored when the next one starts; what it
// holds goes over to the next one.
void HierarchyFile::startKernel(std::string_view header) {
  if (!kernels_.back().name.empty()) kernels_.emplace_back();
  kernels_.back().name = header.substr(0, header.size() - 1);
  anyKernel_ = true;
}

}  // namespace consolidator
