#pragma once

#include "model/KernelRecord.h"

namespace consolidator {

class RunObserver;

/// Merges what one reader learned about a kernel into the list. A kernel that is not known yet is
/// appended with all it has. Otherwise the first record of that name takes what is new to it:
///
/// - the type only while its own is Unknown;
/// - instance paths and conditions that it lacks;
/// - arguments and variables whose names it lacks, without their bits: bits reach a kernel only
///   through the record that first created it;
/// - hardware variables whose names it lacks, with their locations; those whose names it has are
///   ignored;
/// - no BRAMs: they, too, come only from the record that first created the kernel.
///
/// An observer is told what is taken and what is not.
void mergeKernel(KernelList& kernels, KernelRecord incoming, RunObserver* observer = nullptr);

/// Merges records one after the other in their order.
void mergeKernels(KernelList& kernels, KernelSequence&& incoming, RunObserver* observer = nullptr);

}  // namespace consolidator
