#pragma once

#include <string_view>

namespace lmx {
class c_xml_reader;
class c_xml_writer;
}  // namespace lmx

namespace Devpack {

/// What every element class can do; `Class` is the class that derives from this.
///
/// Elements are plain values: members for the attributes, absent at first, and for the children,
/// none at first. Copies are deep; equality compares all members.
template <typename Class>
class Element {
 public:
  /// Reads the document at whose start the reader stands, root element and all; the root must be
  /// named `elementName`. Child elements and attributes that the class does not know are skipped;
  /// of an element that should occur once the last one counts. A file that could not be opened
  /// gives an empty element; a `lmx::c_lmx_exception` that is thrown leaves this one as it was.
  void unmarshal(lmx::c_xml_reader& reader, std::string_view elementName);

  /// Writes this element under that name: attributes first, then children, both in the order of
  /// the members. What is absent is left out.
  void marshal(lmx::c_xml_writer& writer, std::string_view elementName) const;

  bool operator==(const Element&) const = default;
};

}  // namespace Devpack
