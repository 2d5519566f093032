#pragma once

#include <string_view>

namespace Devpack {

/// A member of an element class and the name by which it goes in the document.
template <typename ClassType, typename MemberType>
struct Field {
  using Member = MemberType;

  constexpr Field(std::string_view nameInDocument, MemberType ClassType::*pointer)
      : name(nameInDocument), member(pointer) {}

  std::string_view name;
  MemberType ClassType::*member;
};

/// A list of fields: a function object that returns `visit(field...)` for its argument `visit`.
template <typename... AnyField>
constexpr auto fields(AnyField... field) {
  return [field...](auto visit) { return visit(field...); };
}

/// The list of the fields of an element class, in the order in which they are written. It is
/// specialised for each class; everything that has to know the members goes by it.
template <typename Class>
inline constexpr auto fieldsOf = nullptr;

}  // namespace Devpack
