#include "consolidated/Kernel.h"

namespace consolidated {

namespace {

// Reads a list to know where it ends, and notes where it begins.
template <typename T>
bool passList(detail::Cursor& in, std::uint64_t& start, std::uint32_t leastSize) {
  start = in.position();
  List<T> list;
  return detail::readList(in, list, leastSize);
}

}  // namespace

bool Kernel::read(detail::Cursor& in) noexcept {
  bytes_ = in.bytes();
  std::uint32_t typeNumber = 0;
  if (!detail::Decoder::read(in, name_) || !passList<Text>(in, instancePaths_, 4) ||
      !in.readU32(typeNumber) || !passList<Variable>(in, arguments_, 16) ||
      !passList<Variable>(in, variables_, 16) ||
      !passList<HardwareVariable>(in, hardwareVariables_, 8) ||
      !passList<BreakableCondition>(in, breakableConditions_, 8) ||
      !passList<Text>(in, brams_, 4)) {
    return false;
  }
  type_ = static_cast<KernelType>(typeNumber);
  end_ = in.position();
  return true;
}

std::string_view Kernel::instanceSuffix() const noexcept {
  for (const Variable& argument : arguments()) {
    const std::string_view cType = argument.cType().view();
    if (cType.find("float") != std::string_view::npos ||
        cType.find("double") != std::string_view::npos) {
      return "/U0";
    }
  }
  return "/inst";
}

std::string_view nameOf(KernelType type) noexcept {
  switch (type) {
    case KernelType::OpenCL:
      return "OpenCL";
    case KernelType::C:
      return "C";
    case KernelType::RTL:
      return "RTL";
    case KernelType::HLS:
      return "HLS";
    default:
      return "Unknown";
  }
}

}  // namespace consolidated
