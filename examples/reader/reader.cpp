// Shows what a consolidated file says of kernels, by means of libconsolidated:
//   reader <file>                        kernels, their instances, arguments and variables
//   reader <file> <kernel> <variable>    where the bits of a variable are, in each instance

#include <consolidated/File.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace {

// Names in a file may be of any length and hold any bytes.
void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void printVariables(const char* kind, const consolidated::List<consolidated::Variable>& variables) {
  for (const consolidated::Variable& variable : variables) {
    std::printf("  %s ", kind);
    print(variable.name().view());
    std::printf(": ");
    print(variable.cType().view());
    std::printf(", %u bits, in ", variable.bitWidth());
    print(variable.second().view());
    std::printf("\n");
  }
}

void printKernel(const consolidated::Kernel& kernel) {
  print(kernel.name().view());
  std::printf(", ");
  print(nameOf(kernel.type()));
  std::printf("\n");
  const std::string_view suffix = kernel.instanceSuffix();
  for (const consolidated::Text& path : kernel.instancePaths()) {
    std::printf("  instance ");
    print(suffixedPath(path, suffix));
    std::printf("\n");
  }
  printVariables("argument", kernel.arguments());
  printVariables("variable", kernel.variables());
}

void printBits(const consolidated::Locations& bits) {
  for (std::size_t bit = 0; bit < bits.size(); ++bit) {
    std::printf("    bit %zu: %u %u\n", bit, bits[bit].first, bits[bit].second);
  }
}

// The locations of a variable are those of its registers. A register that is only doubtful may be
// one of an instance whose path begins alike.
void printRegisters(const consolidated::Kernel& kernel, const consolidated::Variable& variable) {
  for (const consolidated::Text& path : kernel.instancePaths()) {
    print(path.view());
    std::printf("\n");
    for (const consolidated::HardwareVariable& hardware : kernel.hardwareVariables()) {
      const consolidated::Belonging sure = belonging(hardware, variable, path.view());
      if (sure == consolidated::Belonging::None) continue;
      std::printf("  %s ", sure == consolidated::Belonging::Certain ? "certain" : "doubtful");
      print(hardware.rtlName().view());
      std::printf("\n");
      printBits(hardware.logicLocations());
    }
  }
}

std::optional<consolidated::Variable> find(
    std::string_view name, const consolidated::List<consolidated::Variable>& variables) {
  for (const consolidated::Variable& variable : variables) {
    if (variable.name().view() == name) return variable;
  }
  return std::nullopt;
}

int fail(const char* what, const char* why) {
  std::fprintf(stderr, "reader: %s: %s\n", what, why);
  return 1;
}

int showVariable(const consolidated::File& file, const char* kernelName, const char* variableName) {
  const std::optional<consolidated::Kernel> kernel = file.findKernel(kernelName);
  if (!kernel) return fail(kernelName, "no such kernel");
  std::optional<consolidated::Variable> variable = find(variableName, kernel->variables());
  if (!variable) variable = find(variableName, kernel->arguments());
  if (!variable) return fail(variableName, "no such variable or argument");
  printRegisters(*kernel, *variable);
  return 0;
}

// What a damaged file has before the damage is shown all the same.
int showKernels(const consolidated::File& file, const char* name) {
  auto kernel = file.kernels().begin();
  for (; kernel != file.kernels().end(); ++kernel) printKernel(*kernel);
  return kernel.fault() ? fail(name, kernel.fault()->sentence()) : 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 2 && argc != 4) return fail("usage", "reader <file> [<kernel> <variable>]");
  const auto file = consolidated::File::open(argv[1]);
  if (!file) return fail(argv[1], file.fault().sentence());
  return argc == 4 ? showVariable(*file, argv[2], argv[3]) : showKernels(*file, argv[1]);
}
