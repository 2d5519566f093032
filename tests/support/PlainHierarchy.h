#pragma once

#include "model/KernelRecord.h"

#include <istream>
#include <sstream>
#include <string>
#include <vector>

namespace consolidator {

/// What comes out of a hierarchy file.
struct PlainHierarchy {
  bool result = true;
  float version = -1.0F;
  KernelSequence kernels;
  std::string messages;
};

/// Reads a hierarchy file with nothing but standard stream extractions: slow, and plain enough to
/// be the measure of the reader proper.
class PlainHierarchyReader {
 public:
  PlainHierarchyReader(std::istream& in, std::string fileName)
      : in_(in), fileName_(std::move(fileName)) {}

  PlainHierarchy read() {
    std::string word;
    while (plain_.result && in_ >> word) take(word);
    if (plain_.result && started_ != stored_) plain_.kernels.push_back(kernel_);
    return plain_;
  }

 private:
  void take(const std::string& word) {
    if (word[0] == '#') {
      std::string rest;
      std::getline(in_, rest);
    } else if (word == "version:") {
      takeVersion();
    } else if (word == "instance") {
      takeInstance();
    } else if (word == "type:") {
      takeType();
    } else {
      takeHeader(word);
    }
  }

  // An empty word at the end of the file.
  std::string nextWord() {
    std::string word;
    in_ >> word;
    return word;
  }

  void takeVersion() {
    in_ >> plain_.version;
    if (plain_.version > 1.0F) {
      std::ostringstream message;
      message << "Unsupported hierarchy file: " << fileName_ << "\nVersion: " << plain_.version
              << "\nSupported Version: 1\n";
      refuse(message.str());
    }
  }

  void takeInstance() {
    if (nextWord() != "path:") return refuse("Parse error\n");
    const std::string path = nextWord();
    for (const std::string& known : kernel_.instancePaths) {
      if (known == path) return;
    }
    kernel_.instancePaths.append(path);
  }

  void takeType() {
    const std::string word = nextWord();
    kernel_.type = KernelType::Unknown;
    if (word == "clc") kernel_.type = KernelType::OpenCL;
    if (word == "c") kernel_.type = KernelType::C;
    if (word == "ip") kernel_.type = KernelType::RTL;
    if (word == "hls") kernel_.type = KernelType::HLS;
  }

  void takeHeader(const std::string& word) {
    if (!kernel_.name.empty()) {
      plain_.kernels.push_back(kernel_);
      kernel_.reset();
      ++stored_;
    }
    kernel_.name = word.substr(0, word.size() - 1);
    ++started_;
  }

  void refuse(const std::string& message) {
    plain_.messages = message;
    plain_.result = false;
  }

  std::istream& in_;
  std::string fileName_;
  PlainHierarchy plain_;
  KernelRecord kernel_;
  std::size_t started_ = 0;
  std::size_t stored_ = 0;
};

inline PlainHierarchy readHierarchyPlainly(const std::string& text, const std::string& fileName) {
  std::istringstream in(text);
  return PlainHierarchyReader(in, fileName).read();
}

}  // namespace consolidator
