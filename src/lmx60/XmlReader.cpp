#include "lmx60/XmlReader.h"

#include "lmx60/FileSource.h"
#include "lmx60/KnownElementsSelector.h"
#include "lmx60/LmxException.h"
#include "lmx60/ReadingObserver.h"

#include <expat.h>

#include <algorithm>
#include <new>
#include <utility>

namespace lmx {

namespace {

constexpr std::string_view namespace_declaration = "xmlns";

}  // namespace

// What the parser calls. It is written in C, so nothing may be thrown through it: a failure is kept
// and the parser is stopped.
struct c_xml_reader::callbacks {
  template <typename Action>
  static void guard(void* user_data, Action action) noexcept {
    auto& reader = *static_cast<c_xml_reader*>(user_data);
    if (reader.failure_) return;
    try {
      action(reader);
    } catch (...) {
      reader.failure_ = std::current_exception();
      XML_StopParser(reader.parser_.get(), XML_FALSE);
    }
  }

  static void start(void* user_data, const char* name, const char** attributes) {
    guard(user_data, [&](c_xml_reader& reader) { reader.start_element(name, attributes); });
  }

  static void end(void* user_data, const char* /*name*/) {
    guard(user_data, [](c_xml_reader& reader) { reader.end_element(); });
  }

  static void text(void* user_data, const char* text, int size) {
    guard(user_data, [&](c_xml_reader& reader) {
      if (reader.depth_ == reader.content_depth_) {
        reader.text_.append(text, static_cast<std::size_t>(size));
      }
    });
  }

  // The parser does not check the version, which must be "1." and digits.
  static void xml_declaration(void* user_data, const char* version, const char* /*encoding*/,
                              int /*standalone*/) {
    guard(user_data, [&](c_xml_reader& reader) {
      const std::string_view number(version);
      const bool is_known = number.starts_with("1.") && number.size() > 2 &&
                            number.find_first_not_of("0123456789", 2) == std::string_view::npos;
      if (!is_known) reader.capture_error(error_code::not_well_formed, number);
    });
  }

  // Declarations are recognised by their first token, because the parser does not report those
  // that it ignores: of predefined entities, and all after a reference to an undeclared parameter
  // entity. A long text comes in pieces, but no piece is just a keyword: the last one ends with the
  // end of its comment, instruction or literal.
  static void doctype_token(void* user_data, const char* text, int size) {
    guard(user_data, [&](c_xml_reader& reader) {
      const std::string_view token(text, static_cast<std::size_t>(size));
      if (token == "<!ENTITY" || token == "<!ATTLIST") {
        reader.capture_error(error_code::declaration_refused, token);
      }
    });
  }

  static void start_doctype(void* user_data, const char* /*name*/, const char* /*system_id*/,
                            const char* /*public_id*/, int /*has_internal_subset*/) {
    const auto& reader = *static_cast<c_xml_reader*>(user_data);
    XML_SetDefaultHandler(reader.parser_.get(), doctype_token);
  }

  static void end_doctype(void* user_data) {
    const auto& reader = *static_cast<c_xml_reader*>(user_data);
    XML_SetDefaultHandler(reader.parser_.get(), nullptr);
  }
};

void c_xml_reader::parser_deleter::operator()(XML_ParserStruct* parser) const {
  XML_ParserFree(parser);
}

c_xml_reader::c_xml_reader(std::unique_ptr<c_byte_source> source, error_code& result)
    : source_(std::move(source)),
      result_(result),
      parser_(XML_ParserCreate(nullptr)),
      at_end_(!source_->is_open()) {
  if (!parser_) throw std::bad_alloc();
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(parser_.get(), callbacks::start, callbacks::end);
  XML_SetXmlDeclHandler(parser_.get(), callbacks::xml_declaration);
  XML_SetDoctypeDeclHandler(parser_.get(), callbacks::start_doctype, callbacks::end_doctype);
  result_ = at_end_ ? error_code::file_not_opened : error_code::not_read;
}

c_xml_reader::c_xml_reader(const char* file_name, error_code& result)
    : c_xml_reader(std::make_unique<c_file_source>(file_name), result) {}

c_xml_reader::~c_xml_reader() {
  if (observer_ == nullptr) return;
  XML_ParserStruct* const parser = parser_.get();
  observer_->on_end({bytes_read_, XML_GetCurrentLineNumber(parser),
                     XML_GetCurrentColumnNumber(parser) + std::uint64_t{1}});
}

bool c_xml_reader::tokenise() {
  while (suspended_ || !at_end_) {
    const int status = parse_on();
    if (status == XML_STATUS_ERROR) raise_failure();
    suspended_ = status == XML_STATUS_SUSPENDED;
    if (suspended_) return true;
    if (at_end_) result_ = error_code::ok;
  }
  return false;
}

bool c_xml_reader::get_element_event() {
  entered_child_ = false;
  // An empty element's end comes together with its start: there is nothing to run up to.
  if (depth_ < content_depth_) return false;
  tokenise();
  return entered_child_;
}

bool c_xml_reader::get_known_element_event(c_known_elements_selector& selector) {
  selector_ = &selector;
  return get_element_event();
}

void c_xml_reader::unmarshal_child_element_impl(c_known_elements_selector& selector) {
  selector_ = nullptr;
  ++content_depth_;
  selector.unmarshal_content(*this);
  --content_depth_;
  selector_ = &selector;
}

std::string c_xml_reader::get_element_value() {
  text_.clear();
  XML_SetCharacterDataHandler(parser_.get(), callbacks::text);
  while (get_element_event()) {
  }
  XML_SetCharacterDataHandler(parser_.get(), nullptr);
  return std::move(text_);
}

void c_xml_reader::capture_error(error_code code, std::string_view detail) {
  result_ = code;
  throw c_lmx_exception(code, XML_GetCurrentLineNumber(parser_.get()), detail);
}

void c_xml_reader::add_namespace_mapping(std::string_view prefix, std::string_view uri) {
  if (ns_map_ != nullptr) ns_map_->push_back({std::string(prefix), std::string(uri)});
}

void c_xml_reader::add_namespace_mappings(const c_attributes& attributes) {
  attributes.for_each([this](std::string_view name, std::string_view value) {
    if (!name.starts_with(namespace_declaration)) return;
    name.remove_prefix(namespace_declaration.size());
    if (name.empty()) add_namespace_mapping({}, value);
    if (name.size() > 1 && name.front() == ':') add_namespace_mapping(name.substr(1), value);
  });
  ns_map_ = nullptr;
}

int c_xml_reader::parse_on() {
  return suspended_ ? XML_ResumeParser(parser_.get()) : parse_block();
}

// Feeds the next block. The parser starts a token that goes beyond its block again with each block,
// so blocks grow with what it has not used up: otherwise a long token would take quadratic time.
int c_xml_reader::parse_block() {
  constexpr std::uint64_t smallest = std::uint64_t{64} * 1024;
  const auto token_start =
      static_cast<std::uint64_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser_.get()), 0));
  const std::uint64_t unused = bytes_read_ - token_start;
  if (unused > max_token) capture_error(error_code::token_too_long, "");
  const auto size = static_cast<int>(std::max(unused, smallest));
  void* const block = XML_GetBuffer(parser_.get(), size);
  if (block == nullptr) return XML_STATUS_ERROR;
  const std::size_t count =
      source_->read(static_cast<char*>(block), static_cast<std::size_t>(size));
  bytes_read_ += count;
  at_end_ = count < static_cast<std::size_t>(size);
  return XML_ParseBuffer(parser_.get(), static_cast<int>(count), at_end_ ? XML_TRUE : XML_FALSE);
}

void c_xml_reader::raise_failure() {
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  const XML_Error error = XML_GetErrorCode(parser_.get());
  if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  capture_error(error_code::not_well_formed, XML_ErrorString(error));
}

void c_xml_reader::start_element(const char* name, const char* const* names_and_values) {
  if (depth_ == max_depth) capture_error(error_code::nested_too_deep, name);
  ++depth_;
  if (depth_ != content_depth_ + 1) return;  // within an element whose content does not matter
  const c_attributes attributes(names_and_values);
  if (depth_ == 1) add_namespace_mappings(attributes);
  const element_event event =
      selector_ == nullptr ? element_event::unknown : selector_->select(*this, name, attributes);
  if (event == element_event::entered) {
    entered_child_ = true;
    suspend();
  } else if (event == element_event::unknown && depth_ == 1) {
    capture_error(error_code::unexpected_root, name);
  } else if (event == element_event::unknown && observer_ != nullptr) {
    observer_->on_unknown_element(XML_GetCurrentLineNumber(parser_.get()));
  }
}

void c_xml_reader::end_element() {
  if (depth_ == content_depth_) suspend();
  --depth_;
}

void c_xml_reader::suspend() { XML_StopParser(parser_.get(), XML_TRUE); }

void c_xml_reader::tell_unknown_attribute(std::string_view name) const {
  if (name == namespace_declaration || name.starts_with("xmlns:")) return;
  observer_->on_unknown_attribute(XML_GetCurrentLineNumber(parser_.get()));
}

}  // namespace lmx
