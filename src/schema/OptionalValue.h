#pragma once

#include "schema/CompactText.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace Devpack {

/// Where in the document the value of an OptionalValue stands.
enum class ValuePlace {
  Attribute,
  TextElement,  ///< a child element that holds a text and nothing else
};

/// A value that may be absent.
template <typename T, ValuePlace place>
class OptionalValue {
 public:
  bool isPresent() const { return present_; }

  /// The value; an empty text or 0 when it is absent.
  decltype(auto) get() const {
    if constexpr (std::is_same_v<T, CompactText>) {
      return value_.view();
    } else {
      return (value_);
    }
  }

  template <typename U>
  void set(U&& value) {
    value_ = T(std::forward<U>(value));
    present_ = true;
  }

  bool operator==(const OptionalValue&) const = default;

 private:
  T value_{};
  bool present_ = false;
};

using Attribute = OptionalValue<CompactText, ValuePlace::Attribute>;
using UnsignedAttribute = OptionalValue<std::uint32_t, ValuePlace::Attribute>;
using TextElement = OptionalValue<std::string, ValuePlace::TextElement>;

}  // namespace Devpack
