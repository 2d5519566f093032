#pragma once

#include "lmx60/ByteSource.h"
#include "lmx60/ErrorCode.h"
#include "lmx60/NamespaceMap.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace lmx {

class c_attributes;
class c_known_elements_selector;
class c_reading_observer;

/// Steps through an XML document of any size: the parser runs over the input block by block and
/// is suspended wherever the caller has to act, so memory is needed only for one block and for the
/// longest single tag, comment or text element.
///
/// The document may be in any encoding that the parser knows (UTF-8, UTF-16, ISO-8859-1,
/// US-ASCII); everything comes out in UTF-8. Names are compared as written. Any fault of the
/// document, even after the root element, is thrown as a c_lmx_exception. Declarations of entities
/// and of attribute lists are refused, which prevents every attack that multiplies text by them;
/// nothing outside the document is ever opened.
class c_xml_reader {
 public:
  /// How many elements may be open at a time.
  static constexpr std::size_t max_depth = 256;

  /// How many bytes a tag, a comment or the like may take, give or take a block; the text of an
  /// element may have any length. The parser holds a token as a whole, and somewhere below a
  /// gigabyte it reports that it is out of memory, however much there is.
  static constexpr std::size_t max_token = std::size_t{128} * 1024 * 1024;

  /// Opens a file. `result` must outlive the reader: it becomes `file_not_opened`, and the
  /// document reads as one with nothing in it, or `not_read`; at the end of the document it
  /// becomes `ok`, and the code of the fault when one is thrown.
  c_xml_reader(const char* file_name, error_code& result);

  /// Reads from any source; otherwise as above.
  c_xml_reader(std::unique_ptr<c_byte_source> source, error_code& result);

  c_xml_reader(const c_xml_reader&) = delete;
  c_xml_reader& operator=(const c_xml_reader&) = delete;
  ~c_xml_reader();

  /// Tells the observer, which must outlive the reader, what is left out.
  void observe(c_reading_observer& observer) { observer_ = &observer; }

  /// The element that has just started does not know one of its attributes.
  void skip_attribute(std::string_view name) const {
    if (observer_ != nullptr) tell_unknown_attribute(name);
  }

  /// Runs the parser up to the next place where somebody has to act: a child element that was
  /// entered, or the end of the element that is being read. Returns false at the document's end.
  bool tokenise();

  /// Steps on inside the element that is being read (at first: the document). Returns true at a
  /// child element that was entered, false at the end.
  bool get_element_event();

  /// The same, with the selector deciding which child elements are known.
  bool get_known_element_event(c_known_elements_selector& selector);

  /// Reads the child element that was entered, through its selector, up to its end.
  void unmarshal_child_element_impl(c_known_elements_selector& selector);

  /// The text of the element that is being read, without that of elements within it.
  std::string get_element_value();

  /// Sets the field to the value of an attribute. `converter` turns the text into an optional
  /// value; none is a fault of the document.
  template <typename Field, typename Converter>
  void unmarshal_attribute_value_impl(Field& field, std::string_view text, Converter converter) {
    const auto value = converter(text);
    if (!value) capture_error(error_code::bad_integer, text);
    field.set(*value);
  }

  /// Records the fault at the current line and throws it; `detail` may be empty.
  [[noreturn]] void capture_error(error_code code, std::string_view detail);

  /// Asks for the namespace declarations of the root element, to be kept in `map`, which must
  /// outlive the reading of the root's start tag; it is forgotten then. Null asks for none.
  void set_ns_map(c_namespace_map* map) { ns_map_ = map; }

  /// Adds a declaration to the map, if one is asked for.
  void add_namespace_mapping(std::string_view prefix, std::string_view uri);

 private:
  struct parser_deleter {
    void operator()(XML_ParserStruct* parser) const;
  };

  struct callbacks;

  int parse_on();
  int parse_block();
  [[noreturn]] void raise_failure();
  void add_namespace_mappings(const c_attributes& attributes);
  void start_element(const char* name, const char* const* names_and_values);
  void end_element();
  void suspend();
  void tell_unknown_attribute(std::string_view name) const;

  std::unique_ptr<c_byte_source> source_;
  error_code& result_;
  std::unique_ptr<XML_ParserStruct, parser_deleter> parser_;
  std::exception_ptr failure_;  // thrown in a callback, on its way around the parser
  c_known_elements_selector* selector_ = nullptr;
  c_namespace_map* ns_map_ = nullptr;
  std::string text_;
  std::size_t depth_ = 0;          // number of open elements
  std::size_t content_depth_ = 0;  // of the element that is being read; 0 is the document
  std::uint64_t bytes_read_ = 0;
  bool entered_child_ = false;
  bool suspended_ = false;
  bool at_end_;  // of the input
  c_reading_observer* observer_ = nullptr;
};

}  // namespace lmx
