#pragma once

#include "schema/ChildList.h"
#include "schema/DevpackFields.h"
#include "schema/OptionalChild.h"

#include <type_traits>

namespace Devpack {

/// The element class that a member holds; void for members without one.
template <typename Member>
struct ChildClass {
  using Type = void;
};

template <typename Child>
struct ChildClass<ChildList<Child>> {
  using Type = Child;
};

template <typename Child>
struct ChildClass<OptionalChild<Child>> {
  using Type = Child;
};

template <typename... Class>
struct ClassList {};

/// Adds classes and all classes below them to the known ones, each once.
template <typename... Known>
constexpr ClassList<Known...> addClasses(ClassList<Known...> known) {
  return known;
}

template <typename First, typename... More, typename... Known>
constexpr auto addClasses(ClassList<Known...> known) {
  if constexpr (std::is_void_v<First> || (std::is_same_v<First, Known> || ...)) {
    return addClasses<More...>(known);
  } else {
    return addClasses<More...>(
        fieldsOf<First>([]<typename... Member>(const Field<First, Member>&... /*field*/) {
          return addClasses<typename ChildClass<Member>::Type...>(ClassList<Known..., First>());
        }));
  }
}

/// All element classes, found by walking down from the root: a class that is nowhere a child would
/// be no part of the document.
using ElementClasses = decltype(addClasses<Project>(ClassList<>()));

}  // namespace Devpack
