#include "Inputs.h"

#include <array>
#include <string_view>

namespace consolidator {

namespace {

template <std::size_t n>
std::string_view anyOf(Random& random, const std::array<std::string_view, n>& choices) {
  return choices[below(random, n)];
}

std::string makeName(Random& random, std::uint32_t number) {
  static constexpr std::array<std::string_view, 8> stems = {
      "input_", "output_", "row_count_", "stride_", "buffer_", "partial_sum_", "offset_", "weight_",
  };
  return std::string(anyOf(random, stems)) + std::to_string(10 + number);
}

std::string_view anyType(Random& random) {
  static constexpr std::array<std::string_view, 8> types = {
      "int", "int*", "unsigned int", "char", "unsigned char*", "short", "float*", "long long",
  };
  return anyOf(random, types);
}

std::string makeInstancePath(Random& random, std::uint32_t kernel, std::uint32_t instance) {
  static constexpr std::array<std::string_view, 4> regions = {"upper_left", "upper_right",
                                                              "lower_left", "lower_right"};
  return "/design/dynamic_region/" + std::string(anyOf(random, regions)) + "/kernel_" +
         std::to_string(kernel) + "_" + std::to_string(instance);
}

std::vector<BitLocation> makeLocations(Random& random) {
  constexpr std::size_t bitCount = 32;
  std::vector<BitLocation> locations(bitCount);
  for (BitLocation& location : locations) {
    location = {below(random, 30'000'000), below(random, 20'000)};
  }
  return locations;
}

void addArguments(KernelRecord& kernel, Random& random) {
  const std::uint32_t count = 4 + below(random, 9);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string name = makeName(random, i);
    VariableRecord argument(name, name + "_data", anyType(random));
    if (below(random, 8) == 0) {
      argument.instanceBits = {makeLocations(random), makeLocations(random)};
    }
    kernel.arguments.append(argument);
  }
}

void addVariables(KernelRecord& kernel, Random& random) {
  const std::uint32_t count = 20 + below(random, 41);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string name = makeName(random, i);
    kernel.addVariable(name, name + "_reg_" + std::to_string(below(random, 1000)), anyType(random));
  }
}

// A register has its locations in every instance of the kernel.
void addHardwareVariables(KernelRecord& kernel, Random& random) {
  const std::uint32_t count = 2 + below(random, 9);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string name = makeName(random, i) + "_reg";
    for (const std::string& path : kernel.instancePaths) {
      HardwareVariable variable(path + "/" + name);
      variable.logicLocations = makeLocations(random);
      kernel.hardwareVariables.append(variable);
    }
  }
}

void addConditions(KernelRecord& kernel, Random& random) {
  kernel.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  kernel.addBreakableCondition(ConditionKind::Stop, "== $i/bq_done 1'b1");
  const std::uint32_t count = 10 + below(random, 21);
  for (std::uint32_t i = 0; i < count; ++i) {
    BreakableCondition condition(ConditionKind::SourceLine,
                                 "(control_state == 1'b1 && step == " + std::to_string(i) + ")");
    condition.line = 1 + below(random, 2000);
    condition.file = "/home/build/kernels/" + kernel.name + ".cpp";
    kernel.addBreakableCondition(condition);
  }
}

}  // namespace

std::uint32_t below(Random& random, std::uint32_t bound) {
  return static_cast<std::uint32_t>(random() % bound);
}

KernelRecord makeKernel(Random& random, std::uint32_t number) {
  KernelRecord kernel;
  kernel.name = "kernel_" + std::to_string(number);
  kernel.type = KernelType::HLS;
  const std::uint32_t pathCount = 1 + below(random, 8);
  for (std::uint32_t i = 0; i < pathCount; ++i) {
    kernel.addInstancePath(makeInstancePath(random, number, i));
  }
  addArguments(kernel, random);
  addVariables(kernel, random);
  addHardwareVariables(kernel, random);
  addConditions(kernel, random);
  kernel.addBRAM("buffer_0_ram");
  kernel.addBRAM("buffer_1_ram");
  return kernel;
}

KernelList makeKernels() {
  constexpr std::uint32_t count = 1000;
  Random random(inputSeed);
  KernelList kernels;
  for (std::uint32_t i = 0; i < count; ++i) kernels.append(makeKernel(random, i));
  return kernels;
}

std::string makeHierarchyKernel(Random& random, std::uint32_t number) {
  static constexpr std::array<std::string_view, 4> types = {"clc", "c", "ip", "hls"};
  return "kernel_" + std::to_string(number) + ":\n  type: " + std::string(anyOf(random, types)) +
         '\n';
}

std::string makeHierarchyPath(Random& random, std::uint32_t kernel, std::uint32_t instance) {
  return "  instance path: " + makeInstancePath(random, kernel, instance) + '\n';
}

}  // namespace consolidator
