#include "inspect/explain/NullStream.h"

#include "inspect/explain/TargetStream.h"

#include <memory>

namespace consolidator::inspect {

namespace {

class NullTarget : public StreamTarget {
 public:
  explicit NullTarget(std::string* copy) : copy_(copy) {}

  bool take(off64_t /*offset*/, std::string_view bytes) override {
    if (copy_ != nullptr) copy_->append(bytes);
    return true;
  }

 private:
  std::string* copy_;
};

}  // namespace

StdioFile openNullStream(std::string* copy) {
  return openTargetStream(std::make_unique<NullTarget>(copy));
}

}  // namespace consolidator::inspect
