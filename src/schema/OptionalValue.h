#pragma once

#include <cstdint>
#include <string>
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
  const T& get() const { return value_; }

  template <typename U>
  void set(U&& value) {
    value_ = std::forward<U>(value);
    present_ = true;
  }

  bool operator==(const OptionalValue&) const = default;

 private:
  T value_{};
  bool present_ = false;
};

using Attribute = OptionalValue<std::string, ValuePlace::Attribute>;
using UnsignedAttribute = OptionalValue<std::uint32_t, ValuePlace::Attribute>;
using TextElement = OptionalValue<std::string, ValuePlace::TextElement>;

}  // namespace Devpack
