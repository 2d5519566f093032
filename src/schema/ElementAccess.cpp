#include "schema/ElementAccess.h"

#include "lmx60/Attributes.h"
#include "lmx60/Conversion.h"
#include "lmx60/KnownElementsSelector.h"
#include "lmx60/UnmarshalHelper.h"
#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"

#include <cstddef>
#include <memory>

namespace Devpack {

namespace {

// Documents usually give attributes in the order of the fields, so the search for one begins after
// the one before it, which spares 2 % of the instructions of a large document.
void readAttributes(lmx::c_xml_reader& reader, const lmx::c_attributes& attributes,
                    ElementBase& element, std::span<const FieldAccess> fields) {
  std::size_t next = 0;
  attributes.for_each([&](std::string_view name, std::string_view value) {
    for (std::size_t tried = 0; tried < fields.size(); ++tried) {
      const FieldAccess& candidate = fields[next];
      next = next + 1 < fields.size() ? next + 1 : 0;
      if (name == candidate.name) return candidate.read(element, reader, value);
    }
    reader.skip_attribute(name);
  });
}

void readContent(lmx::c_xml_reader& reader, ElementBase& element, const ElementTable& table);

// Knows the children of an element and puts them into it.
class ChildSelector final : public lmx::c_known_elements_selector {
 public:
  ChildSelector(ElementBase& element, const ElementTable& table)
      : element_(element), table_(table) {}

  lmx::element_event select(lmx::c_xml_reader& reader, std::string_view name,
                            const lmx::c_attributes& attributes) override {
    for (const FieldAccess& field : table_.children) {
      if (name != field.name) continue;
      child_ = field.add(element_);
      if (child_.text != nullptr) return lmx::element_event::entered;
      readAttributes(reader, attributes, *child_.element, child_.table->attributes);
      return child_.table->children.empty() ? lmx::element_event::taken
                                            : lmx::element_event::entered;
    }
    return lmx::element_event::unknown;
  }

  void unmarshal_content(lmx::c_xml_reader& reader) override {
    if (child_.text != nullptr) {
      child_.text->set(reader.get_element_value());
    } else {
      readContent(reader, *child_.element, *child_.table);
    }
  }

 private:
  ElementBase& element_;
  const ElementTable& table_;
  AddedChild child_;  // that was entered last
};

// Knows the root element of a document.
class RootSelector final : public lmx::c_known_elements_selector {
 public:
  RootSelector(std::string_view name, ElementBase& element, const ElementTable& table)
      : name_(name), element_(element), table_(table) {}

  lmx::element_event select(lmx::c_xml_reader& reader, std::string_view name,
                            const lmx::c_attributes& attributes) override {
    if (name != name_) return lmx::element_event::unknown;
    readAttributes(reader, attributes, element_, table_.attributes);
    return lmx::element_event::entered;
  }

  void unmarshal_content(lmx::c_xml_reader& reader) override {
    readContent(reader, element_, table_);
  }

 private:
  std::string_view name_;
  ElementBase& element_;
  const ElementTable& table_;
};

void readContent(lmx::c_xml_reader& reader, ElementBase& element, const ElementTable& table) {
  lmx::c_unmarshal_helper helper(reader);
  if (table.children.empty()) return helper.unmarshal_empty_content();
  ChildSelector selector(element, table);
  helper.unmarshal_complex_content(selector);
}

}  // namespace

void readDocument(lmx::c_xml_reader& reader, std::string_view elementName, ElementBase& element,
                  const ElementTable& table) {
  // The map is part of the element, so the reader must forget it even if it met no root element.
  constexpr auto forget = [](lmx::c_xml_reader* used) { used->set_ns_map(nullptr); };
  const std::unique_ptr<lmx::c_xml_reader, decltype(forget)> forgetting(&reader, forget);
  RootSelector root(elementName, element, table);
  lmx::c_unmarshal_helper(reader).unmarshal_complex_content(root);
}

void writeElement(lmx::c_xml_writer& writer, std::string_view name, const ElementBase& element,
                  const ElementTable& table) {
  writer.start_element(name);
  for (const FieldAccess& field : table.attributes) field.write(element, writer);
  for (const FieldAccess& field : table.children) field.write(element, writer);
  writer.end_element(name);
}

void prepareField(lmx::c_namespace_map& map, lmx::c_xml_reader& reader) { reader.set_ns_map(&map); }

void readAttribute(OptionalText& field, lmx::c_xml_reader& reader, std::string_view value) {
  reader.unmarshal_attribute_value_impl(field, value, lmx::c_string_converter());
}

void readAttribute(RareText& field, lmx::c_xml_reader& reader, std::string_view value) {
  reader.unmarshal_attribute_value_impl(field, value, lmx::c_string_converter());
}

void readAttribute(OptionalNumber& field, lmx::c_xml_reader& reader, std::string_view value) {
  reader.unmarshal_attribute_value_impl(field, value, lmx::c_unsigned_int_converter());
}

void readAttribute(lmx::c_namespace_map& /*field*/, lmx::c_xml_reader& /*reader*/,
                   std::string_view /*value*/) {}

void writeAttribute(const OptionalText& field, lmx::c_xml_writer& writer, std::string_view name) {
  if (field.isPresent()) writer.marshal_attribute_impl(name, field.get());
}

void writeAttribute(const RareText& field, lmx::c_xml_writer& writer, std::string_view name) {
  if (field.isPresent()) writer.marshal_attribute_impl(name, field.get());
}

void writeAttribute(const OptionalNumber& field, lmx::c_xml_writer& writer, std::string_view name) {
  if (field.isPresent()) writer.marshal_attribute_impl(name, field.get());
}

void writeAttribute(const lmx::c_namespace_map& field, lmx::c_xml_writer& writer,
                    std::string_view /*name*/) {
  writer.conditionally_select_ns_map(field);
  writer.conditionally_write_ns_attrs();
}

void writeChild(const OptionalText& field, lmx::c_xml_writer& writer, std::string_view name) {
  if (field.isPresent()) writer.marshal_element_impl(name, field.get());
}

}  // namespace Devpack
