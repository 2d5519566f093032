#pragma once

#include "consolidated/Kernel.h"

namespace consolidator::inspect {

/// How much text stands for the pairs of a name and an instance of a kernel.
struct PairTexts {
  double instances = 0;  ///< how many
  double paths = 0;      ///< bytes of their paths
  double names = 0;      ///< how many arguments and variables
  double nameBytes = 0;  ///< bytes of their names and registers, and of some numbers

  /// Takes a time linear in the variables and instances of a kernel.
  static PairTexts of(const consolidated::Kernel& kernel);
};

/// Says of which kernels each pair of a name and an instance can be told. A small file may hold a
/// million names and a million instances, of whose pairs no end would come: what is told of all
/// kernels stays in proportion to the size of their records.
class PairBudget {
 public:
  /// Whether so many bytes can be told of the pairs of this kernel.
  bool spend(const consolidated::Kernel& kernel, double bytes);

 private:
  // Beyond what is in proportion: more than any real design takes.
  double left_ = 64e6;
};

}  // namespace consolidator::inspect
