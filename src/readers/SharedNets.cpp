#include "readers/SharedNets.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace consolidator {

bool SharedNets::set(std::string_view name, std::uint32_t bit, const LogicLocation& location) {
  Net* const net = nets_.find(name);
  if (net == nullptr) return false;
  kernels_[net->owners.front()].setLogicLocation(net->hardwareName, bit, location.first,
                                                 location.second);
  note(*net, bit);
  return true;
}

void SharedNets::add(std::string_view hardwareName, const std::vector<std::uint32_t>& owners,
                     std::uint32_t bit, const LogicLocation& location) {
  for (const std::uint32_t owner : owners) {
    kernels_[owner].setLogicLocation(hardwareName, bit, location.first, location.second);
  }
  note(nets_.append({std::string(hardwareName), owners, {}}), bit);
}

void SharedNets::handOut() {
  for (const Net& net : nets_) {
    const std::vector<LogicLocation>& locations =
        kernels_[net.owners.front()].hardwareVariables.find(net.hardwareName)->logicLocations;
    for (const std::uint32_t owner : std::span(net.owners).subspan(1)) {
      for (std::uint32_t bit = 0; bit < net.isSet.size(); ++bit) {
        if (!net.isSet[bit]) continue;  // it is not from this file
        kernels_[owner].setLogicLocation(net.hardwareName, bit, locations[bit].first,
                                         locations[bit].second);
      }
    }
  }
}

void SharedNets::note(Net& net, std::uint32_t bit) {
  net.isSet.resize(std::max<std::size_t>(net.isSet.size(), std::size_t{bit} + 1));
  net.isSet[bit] = true;
}

}  // namespace consolidator
