#include "inspect/diff/KernelWalk.h"

namespace consolidator::inspect {

KernelWalk::KernelWalk(const consolidated::File& file, ComparedFile& found)
    : at_(file.kernels().begin()), found_(&found) {
  look();
}

void KernelWalk::next() {
  ++at_;
  look();
}

void KernelWalk::look() {
  if (!hasKernel()) {
    if (at_.fault()) found_->whyIncomplete = at_.fault()->sentence();
    return;
  }
  counts_ = KernelCounts::of(*at_);
  found_->counts += counts_;
  ++found_->kernels;
}

}  // namespace consolidator::inspect
