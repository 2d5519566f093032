#pragma once

#include "schema/ElementClasses.h"

#include <cstdint>
#include <string>

namespace Devpack {

/// Gives the fields of elements values that all differ and that need escaping.
class Filler {
 public:
  void fill(OptionalText& value) { value.set(text()); }

  void fill(RareText& value) { value.set(text()); }

  void fill(OptionalNumber& value) { value.set(4294967295U - ++count_); }

  void fill(lmx::c_namespace_map& value) {
    value.push_back({"p" + std::to_string(++count_), text()});
  }

  template <typename Class>
  void fill(OptionalChild<Class>& value) {
    fillElement(value.set());
  }

  template <typename Class>
  void fill(ChildList<Class>& value) {
    fillElement(value.append());
    fillElement(value.append());
  }

  /// Fills all fields of an element, and of its children down to a limited depth.
  template <typename Class>
  void fillElement(Class& element) {
    constexpr int greatestDepth = 9;
    if (depth_ == greatestDepth) return;
    ++depth_;
    forEachField(element, [this](auto& value) { this->fill(value); });
    --depth_;
  }

 private:
  std::string text() {
    return "& < > \" ' \r \n \t \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 " + std::to_string(++count_);
  }

  int depth_ = 0;
  std::uint32_t count_ = 0;
};

}  // namespace Devpack
