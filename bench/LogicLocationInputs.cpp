#include "LogicLocationInputs.h"

#include "Inputs.h"
#include "bytes/ByteWriter.h"
#include "consolidated/StdioFile.h"

#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

constexpr std::uint32_t bitsPerCell = 8;
constexpr std::uint32_t cellsPerRegister = 4;

std::string instancePath(std::uint32_t kernel, std::uint32_t instance) {
  return "/design/dynamic_region/kernel_" + std::to_string(kernel) + "_" + std::to_string(instance);
}

std::string registerName(std::uint32_t kernel, std::uint32_t number) {
  static constexpr std::array<std::string_view, 4> stems = {"sum_", "row_index_", "addr_",
                                                            "partial_result_"};
  return std::string(stems[number % stems.size()]) + std::to_string(kernel) + "_" +
         std::to_string(number) + "_reg";
}

std::uint32_t takeModulo(std::uint64_t& number, std::uint32_t divisor) {
  const auto rest = static_cast<std::uint32_t>(number % divisor);
  number /= divisor;
  return rest;
}

// Makes one line after another.
class LineMaker {
 public:
  explicit LineMaker(const LogicLocationShape& shape) : shape_(shape) {}

  std::string makeLine() {
    std::string line = lineStart();
    const std::uint32_t kind = below(random_, 100);
    if (kind >= shape_.netPercent) {
      line += "Block=M" + std::to_string(below(random_, 100)) + " Ram=B:BIT" +
              std::to_string(below(random_, 16384));
    } else {
      line += "Block=X" + std::to_string(below(random_, 200)) + "Y" +
              std::to_string(below(random_, 300)) + " Latch=AQ Net=";
      line += kind < shape_.knownPercent ? knownNet() : unknownNet();
    }
    line += '\n';
    return line;
  }

 private:
  std::string lineStart() {
    std::array<char, 64> text{};
    constexpr std::uint32_t frameBits = 3200;
    const auto length = std::snprintf(text.data(), text.size(), "Bit %8u 0x%08x %4u die0 0 ", bit_,
                                      0x00400000U + bit_ / frameBits, bit_ % frameBits);
    bit_ += 1 + below(random_, 16);
    return {text.data(), static_cast<std::size_t>(length)};
  }

  // Cells come in scattered order, so that lines far apart belong to one register.
  std::string knownNet() {
    constexpr std::uint64_t stride = 1'000'003;
    const std::uint64_t cells = std::uint64_t{cellsPerRegister} * shape_.registersPerKernel *
                                shape_.scopes * shape_.pathsPerKernel * shape_.kernels;
    std::uint64_t cell = known_ / bitsPerCell * stride % cells;
    const std::uint32_t bit = takeModulo(cell, cellsPerRegister) * bitsPerCell +
                              static_cast<std::uint32_t>(known_ % bitsPerCell);
    ++known_;
    const std::uint32_t number = takeModulo(cell, shape_.registersPerKernel);
    const std::uint32_t scope = takeModulo(cell, shape_.scopes);
    const std::uint32_t instance = takeModulo(cell, shape_.pathsPerKernel);
    const auto kernel = static_cast<std::uint32_t>(cell);
    return instancePath(kernel, instance).substr(1) + "/scope_" + std::to_string(scope) + "/" +
           registerName(kernel, number) + "[" + std::to_string(bit) + "]";
  }

  // Half of them lie inside an instance.
  std::string unknownNet() {
    const std::string scope =
        below(random_, 2) == 0
            ? "design/static_region/port_" + std::to_string(below(random_, 64))
            : instancePath(below(random_, shape_.kernels), below(random_, shape_.pathsPerKernel))
                  .substr(1);
    return scope + "/stage_" + std::to_string(below(random_, 10)) + "/payload_" +
           std::to_string(below(random_, 1000)) + "_reg[" + std::to_string(below(random_, 64)) +
           "]";
  }

  LogicLocationShape shape_;
  Random random_{inputSeed};
  std::uint32_t bit_ = 0;
  std::uint64_t known_ = 0;
};

template <typename Use>
void forEachLine(const LogicLocationShape& shape, Use use) {
  use("Revision 3\n; made for measuring\n");
  LineMaker maker(shape);
  for (std::uint32_t i = 0; i < shape.lines; ++i) use(maker.makeLine());
}

}  // namespace

KernelList makeRegisterKernels(const LogicLocationShape& shape) {
  KernelList kernels;
  for (std::uint32_t number = 0; number < shape.kernels; ++number) {
    KernelRecord kernel;
    kernel.name = "kernel_" + std::to_string(number);
    for (std::uint32_t i = 0; i < shape.pathsPerKernel; ++i) {
      kernel.addInstancePath(instancePath(number, i));
    }
    for (std::uint32_t i = 0; i < shape.registersPerKernel; ++i) {
      kernel.addVariable("variable_" + std::to_string(i), registerName(number, i), "int");
    }
    kernels.append(std::move(kernel));
  }
  return kernels;
}

std::string makeLogicLocations(const LogicLocationShape& shape) {
  std::string text;
  forEachLine(shape, [&](std::string_view line) { text += line; });
  return text;
}

void writeLogicLocationFile(const std::string& path, const LogicLocationShape& shape) {
  const StdioFile file = openStdioFile(path, "w");
  ByteWriter out(file.get());
  forEachLine(shape, [&](std::string_view line) { out.write(line); });
  out.flush();
}

std::vector<std::string> writeRegisterInputs(const std::string& folder,
                                             const LogicLocationShape& shape) {
  const std::string hierarchyPath = folder + "/kernels.hierarchy";
  std::vector<std::string> arguments{"-h", hierarchyPath};
  const StdioFile hierarchyFile = openStdioFile(hierarchyPath, "w");
  ByteWriter hierarchy(hierarchyFile.get());
  for (std::uint32_t number = 0; number < shape.kernels; ++number) {
    const std::string kernel = "kernel_" + std::to_string(number);
    const std::string hlsPath = folder + "/" + kernel + ".dbg";
    hierarchy.write(kernel + ":\n  type: hls\n");
    for (std::uint32_t i = 0; i < shape.pathsPerKernel; ++i) {
      hierarchy.write("  instance path: " + instancePath(number, i) + "\n");
    }
    const StdioFile hlsFile = openStdioFile(hlsPath, "w");
    ByteWriter hls(hlsFile.get());
    hls.write("RTL kernel fsm (state == 1)\n");
    for (std::uint32_t i = 0; i < shape.registersPerKernel; ++i) {
      hls.write("local variable_" + std::to_string(i) + "\nat kernel.cpp:1\nlast " +
                registerName(number, i) + "[31:0] kernel\n");
    }
    hls.flush();
    arguments.insert(arguments.end(), {"-s", hlsPath});
  }
  hierarchy.flush();
  return arguments;
}

}  // namespace consolidator
