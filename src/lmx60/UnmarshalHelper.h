#pragma once

namespace lmx {

class c_known_elements_selector;
class c_xml_reader;

/// Drives the reading of one element, from the end of its start tag to the end of its end tag.
/// At the start of a document it drives the reading of the whole document, whose only child is the
/// root element.
class c_unmarshal_helper {
 public:
  explicit c_unmarshal_helper(c_xml_reader& reader) : reader_(reader) {}

  /// Reads an element with children: those that the selector knows, in whatever order and number
  /// they come; others are skipped.
  void unmarshal_complex_content(c_known_elements_selector& selector);

  /// Reads an element without children: whatever it holds is skipped.
  void unmarshal_empty_content();

 private:
  c_xml_reader& reader_;
};

}  // namespace lmx
