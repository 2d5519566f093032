#include "inspect/diff/Change.h"

namespace consolidator::inspect {

std::string_view nameOf(Subject subject) {
  switch (subject) {
    case Subject::Kernel:
      return "kernel";
    case Subject::InstancePath:
      return "instance_path";
    case Subject::Type:
      return "type";
    case Subject::Argument:
      return "argument";
    case Subject::Variable:
      return "variable";
    case Subject::HardwareVariable:
      return "hardware_variable";
    case Subject::BreakableCondition:
      return "breakable_condition";
    case Subject::Bram:
      return "bram";
    case Subject::Project:
      return "project";
    case Subject::Dwarf:
      return "dwarf";
    case Subject::Order:
      return "order";
    case Subject::Section:
      return "section";
  }
  return {};
}

}  // namespace consolidator::inspect
