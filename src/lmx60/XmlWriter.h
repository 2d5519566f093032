#pragma once

#include "lmx60/Conversion.h"
#include "lmx60/ErrorCode.h"
#include "lmx60/NamespaceMap.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace lmx {

/// Writes one XML document in UTF-8 to a stream, element by element: one line for each tag, two
/// blanks of indentation for each level. Names must be names of XML and are not checked.
class c_xml_writer {
 public:
  /// Begins the document. The stream must outlive the writer.
  explicit c_xml_writer(std::ostream& stream);

  /// Opens an element; its attributes come next, then its children.
  void start_element(std::string_view name);

  /// Closes the element that was opened last and not closed yet.
  void end_element(std::string_view name);

  /// Writes an attribute of the element that has just been opened.
  template <typename Value>
  void marshal_attribute_impl(std::string_view name, const Value& value) {
    write_attribute(name, {}, vtostring(value));
  }

  /// Writes an element that holds a text and nothing else.
  void marshal_element_impl(std::string_view name, std::string_view text);

  /// Selects the namespace declarations for the next element that asks for them, unless some are
  /// selected already. The map must outlive that.
  void conditionally_select_ns_map(const c_namespace_map& map);

  /// Writes the selected declarations as attributes of the element that has just been opened, if
  /// there are any; none are selected after that.
  void conditionally_write_ns_attrs();

  /// Hands the rest of the document to the stream. Returns `not_written` when the stream has
  /// failed.
  error_code finish();

 private:
  void begin_line();
  void end_start_tag();
  void write_attribute(std::string_view name, std::string_view suffix, std::string_view value);
  void write_out();

  std::ostream& stream_;
  std::string buffer_;
  const c_namespace_map* ns_map_ = nullptr;
  std::size_t depth_ = 0;
  bool start_tag_is_open_ = false;
};

}  // namespace lmx
