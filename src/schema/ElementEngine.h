#pragma once

#include "lmx60/Attributes.h"
#include "lmx60/Conversion.h"
#include "lmx60/KnownElementsSelector.h"
#include "lmx60/NamespaceMap.h"
#include "lmx60/UnmarshalHelper.h"
#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"
#include "schema/ChildList.h"
#include "schema/Element.h"
#include "schema/Field.h"
#include "schema/OptionalChild.h"
#include "schema/OptionalValue.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

// Reading and writing of every element class by its fields. What a field is in the document follows
// from the type of its member, so each step is a set of overloads on that type.
namespace Devpack::engine {

template <typename Member>
constexpr bool isAttribute = false;
template <typename T>
inline constexpr bool isAttribute<OptionalValue<T, ValuePlace::Attribute>> = true;

template <typename Member>
constexpr bool isElement = false;
template <>
inline constexpr bool isElement<TextElement> = true;
template <typename Child>
inline constexpr bool isElement<OptionalChild<Child>> = true;
template <typename Child>
inline constexpr bool isElement<ChildList<Child>> = true;

/// Whether elements of the class have children, so that their content matters.
template <typename Class>
constexpr bool hasChildren =
    fieldsOf<Class>([]<typename... Member>(const Field<Class, Member>&... /*field*/) {
      return (isElement<Member> || ...);
    });

/// Whether the fields account for the whole of the class: a member that is missing there is missing
/// in the sum of the sizes.
template <typename Class>
constexpr bool fieldsAreComplete =
    fieldsOf<Class>([]<typename... Member>(const Field<Class, Member>&... /*field*/) {
      return (sizeof(Member) + ...) == sizeof(Class);
    });

/// The attribute of one name: one of the two members, the other is null.
template <typename Class>
struct AttributeField {
  std::string_view name;
  Attribute Class::*text = nullptr;
  UnsignedAttribute Class::*number = nullptr;
};

template <typename Class>
constexpr std::size_t attributeCount =
    fieldsOf<Class>([]<typename... Member>(const Field<Class, Member>&... /*field*/) {
      return (std::size_t{isAttribute<Member>} + ...);
    });

/// The attributes of a class in the order of its fields.
template <typename Class>
constexpr auto attributesOf = fieldsOf<Class>([](const auto&... field) {
  std::array<AttributeField<Class>, attributeCount<Class>> attributes{};
  std::size_t count = 0;
  const auto add = [&]<typename Member>(const Field<Class, Member>& one) {
    if constexpr (std::is_same_v<Member, Attribute>) attributes[count++] = {one.name, one.member};
    if constexpr (std::is_same_v<Member, UnsignedAttribute>) {
      attributes[count++] = {one.name, nullptr, one.member};
    }
  };
  (add(field), ...);
  return attributes;
});

template <typename Class>
void readAttribute(lmx::c_xml_reader& reader, Class& element, const AttributeField<Class>& field,
                   std::string_view value) {
  if (field.text != nullptr) {
    reader.unmarshal_attribute_value_impl(element.*field.text, value, lmx::c_string_converter());
  } else {
    reader.unmarshal_attribute_value_impl(element.*field.number, value,
                                          lmx::c_unsigned_int_converter());
  }
}

/// Documents give attributes in the order of the fields more often than not: the search for one
/// begins behind the one before it.
template <typename Class>
void readAttributes(lmx::c_xml_reader& reader, const lmx::c_attributes& attributes,
                    Class& element) {
  constexpr auto& known = attributesOf<Class>;
  std::size_t next = 0;
  attributes.for_each([&](std::string_view name, std::string_view value) {
    for (std::size_t tried = 0; tried < known.size(); ++tried) {
      const AttributeField<Class>& candidate = known[next];
      next = next + 1 < known.size() ? next + 1 : 0;
      if (name == candidate.name) return readAttribute(reader, element, candidate, value);
    }
  });
}

template <typename Class>
void readContent(lmx::c_xml_reader& reader, Class& element);

/// Knows the children of an element and puts them into it.
template <typename Class>
class ChildSelector final : public lmx::c_known_elements_selector {
 public:
  explicit ChildSelector(Class& element) : element_(element) {}

  lmx::element_event select(lmx::c_xml_reader& reader, std::string_view name,
                            const lmx::c_attributes& attributes) override {
    lmx::element_event event = lmx::element_event::unknown;
    const auto open = [&]<typename Member>(const Field<Class, Member>& field) {
      if constexpr (isElement<Member>) {
        if (name != field.name) return false;
        event = openChild(reader, attributes, element_.*field.member);
        return true;
      }
      return false;
    };
    fieldsOf<Class>([&](const auto&... field) { return (open(field) || ...); });
    return event;
  }

  void unmarshal_content(lmx::c_xml_reader& reader) override { readContent_(reader); }

 private:
  template <typename Child>
  lmx::element_event openChild(lmx::c_xml_reader& reader, const lmx::c_attributes& attributes,
                               ChildList<Child>& children) {
    return openElement(reader, attributes, children.append());
  }

  template <typename Child>
  lmx::element_event openChild(lmx::c_xml_reader& reader, const lmx::c_attributes& attributes,
                               OptionalChild<Child>& child) {
    return openElement(reader, attributes, child.set());
  }

  lmx::element_event openChild(lmx::c_xml_reader& /*reader*/,
                               const lmx::c_attributes& /*attributes*/, TextElement& child) {
    readContent_ = [&child](lmx::c_xml_reader& reader) { child.set(reader.get_element_value()); };
    return lmx::element_event::entered;
  }

  template <typename Child>
  lmx::element_event openElement(lmx::c_xml_reader& reader, const lmx::c_attributes& attributes,
                                 Child& child) {
    readAttributes(reader, attributes, child);
    if constexpr (!hasChildren<Child>) return lmx::element_event::taken;
    readContent_ = [&child](lmx::c_xml_reader& r) { readContent(r, child); };
    return lmx::element_event::entered;
  }

  Class& element_;
  std::function<void(lmx::c_xml_reader&)> readContent_;  // of the child that was entered last
};

/// Knows the root element of a document.
template <typename Class>
class RootSelector final : public lmx::c_known_elements_selector {
 public:
  RootSelector(std::string_view name, Class& element) : name_(name), element_(element) {}

  lmx::element_event select(lmx::c_xml_reader& reader, std::string_view name,
                            const lmx::c_attributes& attributes) override {
    if (name != name_) return lmx::element_event::unknown;
    readAttributes(reader, attributes, element_);
    return lmx::element_event::entered;
  }

  void unmarshal_content(lmx::c_xml_reader& reader) override { readContent(reader, element_); }

 private:
  std::string_view name_;
  Class& element_;
};

template <typename Class>
void readContent(lmx::c_xml_reader& reader, Class& element) {
  lmx::c_unmarshal_helper helper(reader);
  if constexpr (hasChildren<Class>) {
    ChildSelector<Class> selector(element);
    helper.unmarshal_complex_content(selector);
  } else {
    helper.unmarshal_empty_content();
  }
}

template <typename T>
void write(lmx::c_xml_writer& writer, std::string_view name,
           const OptionalValue<T, ValuePlace::Attribute>& attribute) {
  if (attribute.isPresent()) writer.marshal_attribute_impl(name, attribute.get());
}

inline void write(lmx::c_xml_writer& writer, std::string_view /*name*/,
                  const lmx::c_namespace_map& map) {
  writer.conditionally_select_ns_map(map);
  writer.conditionally_write_ns_attrs();
}

inline void write(lmx::c_xml_writer& writer, std::string_view name, const TextElement& child) {
  if (child.isPresent()) writer.marshal_element_impl(name, child.get());
}

template <typename Child>
void write(lmx::c_xml_writer& writer, std::string_view name, const OptionalChild<Child>& child) {
  if (child.get() != nullptr) child.get()->marshal(writer, name);
}

template <typename Child>
void write(lmx::c_xml_writer& writer, std::string_view name, const ChildList<Child>& children) {
  children.forEach([&](const Child& child) { child.marshal(writer, name); });
}

inline void prepare(lmx::c_xml_reader& reader, lmx::c_namespace_map& map) {
  reader.set_ns_map(&map);
}

inline void prepare(lmx::c_xml_reader& /*reader*/, auto& /*member*/) {}

}  // namespace Devpack::engine

namespace Devpack {

template <typename Class>
void Element<Class>::unmarshal(lmx::c_xml_reader& reader, std::string_view elementName) {
  static_assert(engine::fieldsAreComplete<Class>, "fieldsOf lacks a member of the class");
  Class element;
  // Even a document without a root element leaves no address of it in the reader.
  constexpr auto forget = [](lmx::c_xml_reader* used) { used->set_ns_map(nullptr); };
  const std::unique_ptr<lmx::c_xml_reader, decltype(forget)> forgetting(&reader, forget);
  fieldsOf<Class>(
      [&](const auto&... field) { (engine::prepare(reader, element.*field.member), ...); });
  engine::RootSelector<Class> root(elementName, element);
  lmx::c_unmarshal_helper(reader).unmarshal_complex_content(root);
  static_cast<Class&>(*this) = std::move(element);
}

template <typename Class>
void Element<Class>::marshal(lmx::c_xml_writer& writer, std::string_view elementName) const {
  const auto& element = static_cast<const Class&>(*this);
  writer.start_element(elementName);
  fieldsOf<Class>([&](const auto&... field) {
    (engine::write(writer, field.name, element.*field.member), ...);
  });
  writer.end_element(elementName);
}

}  // namespace Devpack
