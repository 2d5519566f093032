#include "lmx60/XmlWriter.h"

#include <ostream>
#include <utility>

namespace lmx {

c_xml_writer::c_xml_writer(std::ostream& stream)
    : stream_(stream), buffer_("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

void c_xml_writer::start_element(std::string_view name) {
  end_start_tag();
  begin_line();
  buffer_.append("<").append(name);
  start_tag_is_open_ = true;
  ++depth_;
}

void c_xml_writer::end_element(std::string_view name) {
  --depth_;
  if (std::exchange(start_tag_is_open_, false)) {
    buffer_ += "/>\n";
    return;
  }
  begin_line();
  buffer_.append("</").append(name).append(">\n");
}

void c_xml_writer::marshal_element_impl(std::string_view name, std::string_view text) {
  end_start_tag();
  begin_line();
  buffer_.append("<").append(name).append(">");
  output_convert_to_xml(buffer_, text, xml_position::content);
  buffer_.append("</").append(name).append(">\n");
}

void c_xml_writer::conditionally_select_ns_map(const c_namespace_map& map) {
  if (ns_map_ == nullptr) ns_map_ = &map;
}

void c_xml_writer::conditionally_write_ns_attrs() {
  const c_namespace_map* const map = std::exchange(ns_map_, nullptr);
  if (map == nullptr) return;
  for (const c_namespace_mapping& mapping : *map) {
    write_attribute(mapping.prefix.empty() ? "xmlns" : "xmlns:", mapping.prefix, mapping.uri);
  }
}

error_code c_xml_writer::finish() {
  write_out();
  stream_.flush();
  return stream_ ? error_code::ok : error_code::not_written;
}

void c_xml_writer::begin_line() {
  constexpr std::size_t block_size = std::size_t{64} * 1024;
  if (buffer_.size() >= block_size) write_out();
  buffer_.append(2 * depth_, ' ');
}

void c_xml_writer::end_start_tag() {
  if (std::exchange(start_tag_is_open_, false)) buffer_ += ">\n";
}

// The name of the attribute comes in two parts.
void c_xml_writer::write_attribute(std::string_view name, std::string_view suffix,
                                   std::string_view value) {
  buffer_.append(" ").append(name).append(suffix).append("=\"");
  output_convert_to_xml(buffer_, value, xml_position::attribute);
  buffer_ += '"';
}

void c_xml_writer::write_out() {
  stream_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  buffer_.clear();
}

}  // namespace lmx
