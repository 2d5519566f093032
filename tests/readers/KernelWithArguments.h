#pragma once

#include "model/KernelRecord.h"

#include <initializer_list>
#include <string_view>

namespace consolidator {

struct Argument {
  std::string_view name;
  std::string_view second;
  std::string_view cType;
};

/// A record with these arguments, which may have equal names.
inline KernelRecord kernelWithArguments(std::string_view name,
                                        std::initializer_list<Argument> arguments) {
  KernelRecord record;
  record.name = name;
  for (const Argument& argument : arguments) {
    record.arguments.append({argument.name, argument.second, argument.cType});
  }
  return record;
}

}  // namespace consolidator
