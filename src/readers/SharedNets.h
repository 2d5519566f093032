#pragma once

#include "model/KernelRecord.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// The nets that belong to several kernels each. A location of such a net is set only in the first
/// of its kernels, and copied to the others at the end. A bit that many lines name thus costs each
/// kernel once.
class SharedNets {
 public:
  /// The kernels whose hardware variables are set; the list must outlive this object and keep its
  /// size. Between add() and handOut(), bits of the added nets may be set through this object only.
  explicit SharedNets(KernelSequence& kernels) : kernels_(kernels) {}

  /// Sets one bit of a net, which is named without the "/" in front of its hardware name. Returns
  /// false if it was not added.
  bool set(std::string_view name, std::uint32_t bit, const LogicLocation& location);

  /// Adds a net that was not added yet and belongs to the kernels at these positions, at least two.
  /// Sets this bit in all of them, which gives the hardware variable its place in each kernel's
  /// list.
  void add(std::string_view hardwareName, const std::vector<std::uint32_t>& owners,
           std::uint32_t bit, const LogicLocation& location);

  /// Gives the locations of all nets to all of their kernels.
  void handOut();

 private:
  struct Net {
    std::string hardwareName;
    std::vector<std::uint32_t> owners;
    std::vector<bool> isSet;  // for each bit up to the last one
  };

  struct NetKey : TextKeyHash {
    std::string_view operator()(const Net& net) const {
      return std::string_view(net.hardwareName).substr(1);
    }
  };

  static void note(Net& net, std::uint32_t bit);

  KernelSequence& kernels_;
  KeyedList<Net, NetKey> nets_;
};

}  // namespace consolidator
