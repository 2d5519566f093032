#pragma once

#include "schema/OptionalChild.h"

#include <string>
#include <string_view>

namespace Devpack {

/// A text that is nearly always absent, when it takes one pointer: a document may consist of
/// elements with many such attributes and none of them set.
class RareText {
 public:
  bool isPresent() const { return text_.get() != nullptr; }

  /// The text, as long as the object is not changed; empty when it is absent.
  std::string_view get() const { return isPresent() ? *text_.get() : std::string_view(); }

  void set(std::string_view text) { text_.set(std::string(text)); }

  bool operator==(const RareText&) const = default;

 private:
  OptionalChild<std::string> text_;
};

}  // namespace Devpack
