#pragma once

#include "schema/ElementAccess.h"
#include "schema/Field.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace Devpack {

/// What every element class can do. A class derives from this, gives its fields in the order in
/// which they are written, attributes first, and adds no data.
///
/// Elements are plain values: attributes are absent at first, and there are no children. Copies
/// are deep; equality compares all fields.
template <typename... Fields>
class Element : public ElementBase, private Fields... {
 public:
  /// The value of the field of that name, whose type the list of the fields gives.
  template <FieldName name>
  auto& field() {
    return find<name>(*this);
  }

  template <FieldName name>
  const auto& field() const {
    return find<name>(*this);
  }

  /// The value of an attribute or a text, or a single child; see the `get` of its field.
  template <FieldName name>
  decltype(auto) get() const {
    return field<name>().get();
  }

  /// The child at an index, from 0. An index past the end stops the program.
  template <FieldName name>
  decltype(auto) get(std::size_t index) const {
    return field<name>().get(index);
  }

  /// Reads the document at whose start the reader stands, root element and all; the root must be
  /// named `elementName`. Child elements and attributes that the class does not know are skipped;
  /// of an element that should occur once the last one counts. A file that could not be opened
  /// gives an empty element; a `lmx::c_lmx_exception` that is thrown leaves this one as it was.
  void unmarshal(lmx::c_xml_reader& reader, std::string_view elementName) {
    Element element;
    (prepareField(static_cast<Fields&>(element).value(), reader), ...);
    readDocument(reader, elementName, element, table);
    *this = std::move(element);
  }

  /// Writes this element under that name: attributes first, then children, both in the order of
  /// the fields. What is absent is left out.
  void marshal(lmx::c_xml_writer& writer, std::string_view elementName) const {
    writeElement(writer, elementName, *this, table);
  }

  bool operator==(const Element&) const = default;

  /// What reading and writing go by.
  static const ElementTable table;

 private:
  template <FieldName name, FieldPlace place, typename Value>
  static Value& find(Field<place, name, Value>& field) {
    return field;
  }

  template <FieldName name, FieldPlace place, typename Value>
  static const Value& find(const Field<place, name, Value>& field) {
    return field;
  }

  template <typename FieldType>
  static void read(ElementBase& element, lmx::c_xml_reader& reader, std::string_view value) {
    readAttribute(static_cast<FieldType&>(static_cast<Element&>(element)), reader, value);
  }

  template <typename FieldType>
  static AddedChild add(ElementBase& element) {
    return addChild(static_cast<FieldType&>(static_cast<Element&>(element)));
  }

  template <typename FieldType>
  static void write(const ElementBase& element, lmx::c_xml_writer& writer) {
    const auto& value = static_cast<const FieldType&>(static_cast<const Element&>(element));
    if constexpr (FieldType::place == FieldPlace::Attribute) {
      writeAttribute(value, writer, FieldType::name);
    } else {
      writeChild(value, writer, FieldType::name);
    }
  }

  template <typename FieldType>
  static constexpr FieldAccess access() {
    if constexpr (FieldType::place == FieldPlace::Attribute) {
      return {FieldType::name, read<FieldType>, nullptr, write<FieldType>};
    } else {
      return {FieldType::name, nullptr, add<FieldType>, write<FieldType>};
    }
  }

  static constexpr std::array places{Fields::place...};
  static_assert(std::is_sorted(places.begin(), places.end()), "attributes come before children");
  static constexpr std::size_t attributeCount =
      std::count(places.begin(), places.end(), FieldPlace::Attribute);

  static constexpr std::array<FieldAccess, sizeof...(Fields)> fields{access<Fields>()...};
};

template <typename... Fields>
constexpr ElementTable Element<Fields...>::table{
    .attributes = std::span(fields).first(attributeCount),
    .children = std::span(fields).subspan(attributeCount)};

}  // namespace Devpack
