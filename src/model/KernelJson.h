#pragma once

#include "model/KernelRecord.h"

namespace consolidator {

class ByteWriter;

/// Appends the JSON document of the whole list. This changes the list: the conditions of each
/// kernel are prepared in place before it is rendered.
void writeKernelsJson(KernelList& kernels, ByteWriter& out);

}  // namespace consolidator
