#pragma once

#include "lmx60/NamespaceMap.h"
#include "schema/ChildList.h"
#include "schema/OptionalChild.h"
#include "schema/OptionalNumber.h"
#include "schema/OptionalText.h"
#include "schema/RareText.h"

#include <span>
#include <string_view>

namespace lmx {
class c_xml_reader;
class c_xml_writer;
}  // namespace lmx

// How reading and writing reach the fields of an element without knowing its class: through a table
// that each class has, so that they are compiled once for all classes.
namespace Devpack {

/// An element of any class.
struct ElementBase {
  bool operator==(const ElementBase&) const = default;
};

struct ElementTable;

/// A child that has been added to an element: an element and its table, or a text.
struct AddedChild {
  ElementBase* element = nullptr;
  const ElementTable* table = nullptr;
  OptionalText* text = nullptr;
};

/// One field: an attribute has `read`, a child has `add`, and the other one is null.
struct FieldAccess {
  std::string_view name;
  void (*read)(ElementBase& element, lmx::c_xml_reader& reader, std::string_view value);
  AddedChild (*add)(ElementBase& element);
  void (*write)(const ElementBase& element, lmx::c_xml_writer& writer);
};

/// The fields of a class in the order in which they are written.
struct ElementTable {
  std::span<const FieldAccess> attributes;
  std::span<const FieldAccess> children;
};

/// Reads the document at whose start the reader stands into an empty element; see
/// Element::unmarshal().
void readDocument(lmx::c_xml_reader& reader, std::string_view elementName, ElementBase& element,
                  const ElementTable& table);

/// Writes an element; see Element::marshal().
void writeElement(lmx::c_xml_writer& writer, std::string_view name, const ElementBase& element,
                  const ElementTable& table);

// What a field does when the document is about to be read.
void prepareField(lmx::c_namespace_map& map, lmx::c_xml_reader& reader);

inline void prepareField(auto& /*value*/, lmx::c_xml_reader& /*reader*/) {}

// Reading of an attribute into its field.
void readAttribute(OptionalText& field, lmx::c_xml_reader& reader, std::string_view value);
void readAttribute(RareText& field, lmx::c_xml_reader& reader, std::string_view value);
void readAttribute(OptionalNumber& field, lmx::c_xml_reader& reader, std::string_view value);

/// Does nothing: the reader collects the namespace declarations, which have many names.
void readAttribute(lmx::c_namespace_map& field, lmx::c_xml_reader& reader, std::string_view value);

// Writing of a field, unless it is absent.
void writeAttribute(const OptionalText& field, lmx::c_xml_writer& writer, std::string_view name);
void writeAttribute(const RareText& field, lmx::c_xml_writer& writer, std::string_view name);
void writeAttribute(const OptionalNumber& field, lmx::c_xml_writer& writer, std::string_view name);
void writeAttribute(const lmx::c_namespace_map& field, lmx::c_xml_writer& writer,
                    std::string_view name);
void writeChild(const OptionalText& field, lmx::c_xml_writer& writer, std::string_view name);

template <typename Class>
void writeChild(const OptionalChild<Class>& field, lmx::c_xml_writer& writer,
                std::string_view name) {
  if (field.get() != nullptr) field.get()->marshal(writer, name);
}

template <typename Class>
void writeChild(const ChildList<Class>& field, lmx::c_xml_writer& writer, std::string_view name) {
  field.forEach([&](const Class& child) { child.marshal(writer, name); });
}

// Adding of a child to its field. Of a child that occurs once, the last one counts.
inline AddedChild addChild(OptionalText& field) { return {.text = &field}; }

template <typename Class>
AddedChild addChild(OptionalChild<Class>& field) {
  return {.element = &field.set(), .table = &Class::table};
}

template <typename Class>
AddedChild addChild(ChildList<Class>& field) {
  return {.element = &field.append(), .table = &Class::table};
}

}  // namespace Devpack
