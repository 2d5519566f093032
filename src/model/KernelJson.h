#pragma once

#include "model/KernelRecord.h"

#include <string_view>

namespace consolidator {

class ByteWriter;

/// The name of a type in quotes, as the document has it.
std::string_view typeText(KernelType type);

/// Appends the JSON document of the whole list. Prepares the conditions of every kernel in place
/// before it is rendered, so rendering changes the list.
void writeKernelsJson(KernelList& kernels, ByteWriter& out);

}  // namespace consolidator
