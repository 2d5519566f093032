#pragma once

#include "lmx60/Attributes.h"

#include <string_view>

namespace lmx {

class c_xml_reader;

/// What becomes of a child element that has started.
enum class element_event {
  unknown,  ///< the parent does not know it: it is skipped with all that it holds
  taken,    ///< its attributes were all that mattered: what it holds is skipped
  entered,  ///< the reader stops here, so that its content can be read
};

/// The set of child element names that an element accepts, and what is done with each of them.
///
/// Attributes are handed over while the parser stands on them, so that they go straight into their
/// fields; elements with attributes alone, by far the most frequent, never stop the parser.
class c_known_elements_selector {
 public:
  c_known_elements_selector() = default;
  c_known_elements_selector(const c_known_elements_selector&) = delete;
  c_known_elements_selector& operator=(const c_known_elements_selector&) = delete;
  virtual ~c_known_elements_selector() = default;

  /// A child element of that name has started. What this throws, the reader passes on.
  virtual element_event select(c_xml_reader& reader, std::string_view name,
                               const c_attributes& attributes) = 0;

  /// Reads the content of the child element for which select() has just returned `entered`.
  virtual void unmarshal_content(c_xml_reader& reader) = 0;
};

}  // namespace lmx
