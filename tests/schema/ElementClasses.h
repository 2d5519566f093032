#pragma once

#include "schema/DevpackXmlReaderWriterLMX.h"

#include <type_traits>

namespace Devpack {

template <typename... Type>
struct TypeList {};

/// The type list of the fields of an element class: `decltype(fieldsOf(element))`.
template <typename... Fields>
TypeList<Fields...> fieldsOf(const Element<Fields...>& element);

/// The element class of the children that a field holds; void for fields without any.
template <typename FieldType>
struct ChildClass {
  using Type = void;
};

template <FieldName name, typename Class>
struct ChildClass<Child<name, Class>> {
  using Type = Class;
};

template <FieldName name, typename Class>
struct ChildClass<Children<name, Class>> {
  using Type = Class;
};

/// The value of a field of an element.
template <typename Class, FieldPlace place, FieldName name, typename Value>
Value& valueOf(Class& element, const Field<place, name, Value>* /*field*/) {
  return element.template field<name>();
}

/// Calls `visit` with the value of each field in turn.
template <typename Class, typename Visit>
void forEachField(Class& element, Visit visit) {
  [&]<typename... Fields>(TypeList<Fields...> /*fields*/) {
    (visit(valueOf(element, static_cast<Fields*>(nullptr))), ...);
  }(decltype(fieldsOf(element))());
}

/// Adds classes and all classes below them to the known ones, each once.
template <typename... Known>
constexpr TypeList<Known...> addClasses(TypeList<Known...> known) {
  return known;
}

template <typename First, typename... More, typename... Known>
constexpr auto addClasses(TypeList<Known...> known) {
  if constexpr (std::is_void_v<First> || (std::is_same_v<First, Known> || ...)) {
    return addClasses<More...>(known);
  } else {
    const auto addBelow = []<typename... Fields>(TypeList<Fields...> /*fields*/) {
      return addClasses<typename ChildClass<Fields>::Type...>(TypeList<Known..., First>());
    };
    return addClasses<More...>(addBelow(decltype(fieldsOf(First()))()));
  }
}

/// All element classes, found by walking down from the root: a class that is nowhere a child would
/// be no part of the document.
using ElementClasses = decltype(addClasses<Project>(TypeList<>()));

}  // namespace Devpack
