// Reads a consolidated file in one of the ways that process_ratios compares:
//
//     tool FILE       as the tool does when it adds to the file
//     walk FILE       through the reading library, every text and every location
//     find FILE NAME  through the reading library, up to the kernel of that name
//
// Fails if nothing is found, or the library takes 1 MiB of memory beyond the mapped file.

#include "consolidated/ConsolidatedFile.h"
#include "consolidated/File.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

using consolidated::File;
using consolidated::Kernel;

// Adds up what is read, so that none of it can be left out.
class Sum {
 public:
  std::uint64_t value() const { return value_; }

  void add(const consolidated::Text& text) { value_ += text.view().size(); }

  void add(const consolidated::Locations& locations) {
    for (const consolidated::Location location : locations) {
      value_ += location.first + std::uint64_t{location.second};
    }
  }

  void add(const consolidated::Variable& variable) {
    add(variable.name());
    add(variable.second());
    add(variable.cType());
    add(variable.instanceBits());
  }

  void add(const consolidated::HardwareVariable& variable) {
    add(variable.rtlName());
    add(variable.logicLocations());
  }

  void add(const consolidated::BreakableCondition& condition) {
    add(condition.condition());
    add(condition.file());
    value_ += condition.line();
  }

  template <typename T>
  void add(const consolidated::List<T>& list) {
    for (const T& element : list) add(element);
  }

  void add(const Kernel& kernel) {
    add(kernel.name());
    add(kernel.instancePaths());
    add(kernel.arguments());
    add(kernel.variables());
    add(kernel.hardwareVariables());
    add(kernel.breakableConditions());
    add(kernel.brams());
  }

 private:
  std::uint64_t value_ = 0;
};

bool walk(const char* path) {
  const auto file = File::open(path);
  Sum sum;
  if (!file) return false;
  for (const Kernel& kernel : file->kernels()) sum.add(kernel);
  return sum.value() > 0;
}

bool find(const char* path, std::string_view name) {
  const auto file = File::open(path);
  return file && file->findKernel(name);
}

bool readWithTool(const char* path) {
  consolidator::ConsolidatedFile file;
  return file.readExisting(path) && !file.kernels().empty();
}

// Kibibytes that are in memory and belong to no file.
long memoryOfItsOwn() {
  std::ifstream status("/proc/self/status");
  std::string word;
  long size = 0;
  while (status >> word && word != "RssAnon:") {
  }
  status >> size;
  return size;
}

template <typename Read>
bool staysBelowOneMebibyte(Read read) {
  const long before = memoryOfItsOwn();
  const bool isDone = read();
  const long taken = memoryOfItsOwn() - before;
  if (taken >= 1024) std::cerr << "Took " << taken << " KiB beyond the file" << std::endl;
  return isDone && taken < 1024;
}

bool run(std::string_view command, const char* path, const char* name) {
  if (command == "tool") return readWithTool(path);
  if (command == "walk") return staysBelowOneMebibyte([&] { return walk(path); });
  return command == "find" && staysBelowOneMebibyte([&] { return find(path, name); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return EXIT_FAILURE;
  return run(argv[1], argv[2], argc > 3 ? argv[3] : "") ? EXIT_SUCCESS : EXIT_FAILURE;
}
