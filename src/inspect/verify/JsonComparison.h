#pragma once

#include "bytes/ByteWriter.h"
#include "consolidated/Kernel.h"
#include "inspect/verify/TextComparison.h"
#include "model/ConditionPreparer.h"
#include "model/KernelJsonText.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace consolidator::inspect {

/// Compares a stored JSON text with what the kernels render to, which is not held anywhere.
class JsonComparison {
 public:
  enum class Conditions {
    Stored,           ///< the text shows conditions as they are stored
    PreparedOnceMore  ///< they were stored before they were prepared for the text
  };

  /// The text is without its zero byte and must outlive this object.
  JsonComparison(std::string_view text, Conditions conditions);

  /// Renders the next kernel.
  void add(const consolidated::Kernel& kernel);

  /// Where the first difference is, if the kernels were all there are.
  std::optional<std::size_t> differenceOfAll();

  /// Where the first difference is, if there may be further kernels that nobody knows.
  std::optional<std::size_t> differenceOfStart();

 private:
  std::string_view text_;
  TextComparison comparison_;
  ByteWriter out_;
  KernelJsonText rendering_;
  std::optional<ConditionPreparer> preparer_;
};

}  // namespace consolidator::inspect
