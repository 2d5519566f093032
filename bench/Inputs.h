#pragma once

#include "model/KernelRecord.h"

#include <cstdint>
#include <random>
#include <string>

namespace consolidator {

/// Source of the numbers that make inputs differ from one another. It is only used by way of
/// below(): the distributions of the standard library differ from one machine to the next.
using Random = std::mt19937_64;

/// What every source is seeded with, so that all machines measure the same bytes.
constexpr std::uint64_t inputSeed = 20240229;

/// Returns a number below `bound`, which must not be 0.
std::uint32_t below(Random& random, std::uint32_t bound);

/// Makes a kernel as a full set of readers would fill it: instance paths of about 50 bytes,
/// arguments and variables with names of 8 to 20 bytes (every eighth argument with the bits of two
/// instances), hardware variables of 32 bits each, and conditions in the form that the readers
/// hand over. Its binary form takes about 8 KiB. `number` makes its name unique.
KernelRecord makeKernel(Random& random, std::uint32_t number);

/// Makes a list of kernels whose binary form takes about 8 MiB: more than the caches near the
/// processor hold.
KernelList makeKernels();

/// Returns the lines with which a hierarchy file starts a kernel.
std::string makeHierarchyKernel(Random& random, std::uint32_t number);

/// Returns the line of a hierarchy file with one instance path, unique for the pair of numbers.
std::string makeHierarchyPath(Random& random, std::uint32_t kernel, std::uint32_t instance);

}  // namespace consolidator
