#pragma once

#include "lmx60/NamespaceMap.h"
#include "schema/ChildList.h"
#include "schema/OptionalChild.h"
#include "schema/OptionalNumber.h"
#include "schema/OptionalText.h"
#include "schema/RareText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// An element class is the list of its fields and nothing else:
//
//     struct Instance : Element<Attribute<"name">, Children<"addrRemap", AddrRemap>> {};
//
//     instance.field<"name">().set("vadd_1");
//
// C++20 cannot list the members of a struct. A struct with a member for each attribute would need
// a second list for everything that has to know them all: reading, writing and the tests. Here the
// name in the document is part of the type of a field, and the fields are base classes of their
// element. Copying, moving and equality come from the compiler. Everything else expands the list.
// A field is found by its name when the compiler converts the element to the one base class with
// that name, which costs nothing at run time; a name that the element lacks or has twice does not
// compile. There may be any number of fields.
namespace Devpack {

/// The name of a field in the document, as a template argument.
template <std::size_t size>
struct FieldName {
  /// Not explicit, so that a literal can be the argument.
  // NOLINTNEXTLINE(google-explicit-constructor)
  consteval FieldName(const char (&text)[size]) { std::copy_n(text, size, bytes.begin()); }

  constexpr std::string_view view() const { return {bytes.data(), size - 1}; }

  std::array<char, size> bytes{};
};

enum class FieldPlace {
  Attribute,
  Child,
};

/// What an element has under one name, in one place of the document. The type of the value says
/// how it is read and written and how often it may occur.
template <FieldPlace fieldPlace, FieldName fieldName, typename Value>
struct Field : Value {
  static constexpr FieldPlace place = fieldPlace;
  static constexpr std::string_view name = fieldName.view();

  Value& value() { return *this; }
};

template <FieldName name>
using Attribute = Field<FieldPlace::Attribute, name, OptionalText>;

/// An attribute of elements that rarely have it.
template <FieldName name>
using RareAttribute = Field<FieldPlace::Attribute, name, RareText>;

template <FieldName name>
using UnsignedAttribute = Field<FieldPlace::Attribute, name, OptionalNumber>;

/// The namespace declarations of the root element.
template <FieldName name>
using Namespaces = Field<FieldPlace::Attribute, name, lmx::c_namespace_map>;

/// A child element that holds a text and nothing else.
template <FieldName name>
using TextElement = Field<FieldPlace::Child, name, OptionalText>;

/// A child element that occurs at most once.
template <FieldName name, typename Class>
using Child = Field<FieldPlace::Child, name, OptionalChild<Class>>;

/// The child elements of one name.
template <FieldName name, typename Class>
using Children = Field<FieldPlace::Child, name, ChildList<Class>>;

}  // namespace Devpack
