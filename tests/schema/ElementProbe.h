#pragma once

#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"
#include "schema/Fill.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace Devpack {

/// An element of any class, so that what holds for all classes is tested by code that is compiled
/// once. Two probes that meet in a call must be of the same class.
class ElementProbe {
 public:
  ElementProbe() = default;
  ElementProbe(const ElementProbe&) = delete;
  ElementProbe& operator=(const ElementProbe&) = delete;
  virtual ~ElementProbe() = default;

  virtual std::unique_ptr<ElementProbe> copied() const = 0;
  virtual std::unique_ptr<ElementProbe> moved() = 0;
  virtual void assign(const ElementProbe& other) = 0;
  virtual void moveFrom(ElementProbe& other) = 0;
  virtual bool equals(const ElementProbe& other) const = 0;
  virtual void unmarshal(lmx::c_xml_reader& reader, std::string_view name) = 0;
  virtual void marshal(lmx::c_xml_writer& writer, std::string_view name) const = 0;

  virtual const ElementTable& table() const = 0;

  /// The names of the fields in their order.
  std::vector<std::string_view> fieldNames() const {
    std::vector<std::string_view> names;
    for (const FieldAccess& field : table().attributes) names.push_back(field.name);
    for (const FieldAccess& field : table().children) names.push_back(field.name);
    return names;
  }

  /// Fills the field of that index.
  virtual void fillField(std::size_t index, Filler& filler) = 0;

  void fillAllFields() {
    Filler filler;
    for (std::size_t i = 0; i < fieldNames().size(); ++i) fillField(i, filler);
  }
};

template <typename Class>
class ElementProbeOf final : public ElementProbe {
 public:
  ElementProbeOf() = default;

  explicit ElementProbeOf(Class element) : element_(std::move(element)) {}

  std::unique_ptr<ElementProbe> copied() const override {
    return std::make_unique<ElementProbeOf>(element_);
  }

  std::unique_ptr<ElementProbe> moved() override {
    return std::make_unique<ElementProbeOf>(std::move(element_));
  }

  void assign(const ElementProbe& other) override { element_ = elementOf(other); }

  void moveFrom(ElementProbe& other) override {
    element_ = std::move(dynamic_cast<ElementProbeOf&>(other).element_);
  }

  bool equals(const ElementProbe& other) const override { return element_ == elementOf(other); }

  void unmarshal(lmx::c_xml_reader& reader, std::string_view name) override {
    element_.unmarshal(reader, name);
  }

  void marshal(lmx::c_xml_writer& writer, std::string_view name) const override {
    element_.marshal(writer, name);
  }

  const ElementTable& table() const override { return Class::table; }

  void fillField(std::size_t index, Filler& filler) override {
    std::size_t next = 0;
    forEachField(element_, [&](auto& value) {
      if (next++ == index) filler.fill(value);
    });
  }

 private:
  static const Class& elementOf(const ElementProbe& probe) {
    return dynamic_cast<const ElementProbeOf&>(probe).element_;
  }

  Class element_;
};

}  // namespace Devpack
