#pragma once

#include <string_view>

namespace lmx {

/// The attributes of an element that has just started, in document order: names as written, values
/// in UTF-8 after references and normalisation. The texts live only as long as the call that hands
/// them over.
class c_attributes {
 public:
  /// `names_and_values` holds a name and a value in turn and ends with a null pointer.
  explicit c_attributes(const char* const* names_and_values)
      : names_and_values_(names_and_values) {}

  /// Calls `visit(name, value)` for each attribute; both are `std::string_view`.
  template <typename Visit>
  void for_each(Visit visit) const {
    for (const char* const* next = names_and_values_; *next != nullptr; next += 2) {
      visit(std::string_view(next[0]), std::string_view(next[1]));
    }
  }

 private:
  const char* const* names_and_values_;
};

}  // namespace lmx
