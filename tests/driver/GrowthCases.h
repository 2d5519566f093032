#pragma once

#include "support/Growth.h"

#include <string>
#include <vector>

namespace consolidator {

/// A shape of data that can be had in any size.
struct GrowthCase {
  std::string name;
  PrepareWork prepare;
};

/// Inputs of each kind: lists of them with keys of all kinds, and shapes that nobody writes but an
/// enemy.
std::vector<GrowthCase> inputGrowthCases();

/// Consolidated files, each list of the model and of the format in turn, read and saved.
std::vector<GrowthCase> containerGrowthCases();

/// The texts by which entries of a list are found.
struct KeyShape {
  std::string name;
  std::string (*key)(std::size_t number);
};

/// Keys that differ, that are equal, that differ in few bits or in the middle only, and that
/// collide in a hash without a seed.
const std::vector<KeyShape>& keyShapes();

/// One part after the other, made for the numbers below `count`.
template <typename MakePart>
std::string joined(std::size_t count, MakePart makePart) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += makePart(i);
  return text;
}

}  // namespace consolidator
