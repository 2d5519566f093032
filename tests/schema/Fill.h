#pragma once

#include "lmx60/NamespaceMap.h"
#include "schema/ChildList.h"
#include "schema/DevpackFields.h"
#include "schema/OptionalChild.h"
#include "schema/OptionalValue.h"

#include <cstdint>
#include <string>

namespace Devpack {

/// Gives the members of elements values that all differ and that need escaping.
class Filler {
 public:
  void fill(Attribute& member) { member.set(text()); }

  void fill(TextElement& member) { member.set(text()); }

  void fill(UnsignedAttribute& member) { member.set(4294967295U - ++count_); }

  void fill(lmx::c_namespace_map& member) {
    member.push_back({"p" + std::to_string(++count_), text()});
  }

  template <typename Child>
  void fill(OptionalChild<Child>& member) {
    fillElement(member.set());
  }

  template <typename Child>
  void fill(ChildList<Child>& member) {
    fillElement(member.append());
    fillElement(member.append());
  }

  /// Fills all members of an element, and of its children down to a limited depth.
  template <typename Class>
  void fillElement(Class& element) {
    constexpr int greatestDepth = 9;
    if (depth_ == greatestDepth) return;
    ++depth_;
    fieldsOf<Class>([&](const auto&... field) { (fill(element.*field.member), ...); });
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
