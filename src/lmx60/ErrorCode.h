#pragma once

#include <string_view>

namespace lmx {

/// What came of reading or writing a document.
enum class error_code {
  ok,
  not_read,             ///< reading has not come to its end yet
  file_not_opened,      ///< nothing was read
  not_well_formed,      ///< thrown
  unexpected_root,      ///< the root element is not the one that was asked for; thrown
  bad_integer,          ///< an attribute is not an unsigned number within its limit; thrown
  declaration_refused,  ///< the document declares entities or attribute lists; thrown
  nested_too_deep,      ///< more than `c_xml_reader::max_depth` open elements; thrown
  token_too_long,       ///< a tag, comment or the like over `c_xml_reader::max_token`; thrown
  not_written,          ///< the output took less than all of the document
};

/// The text of an error code: a few words in lower case, without a full stop.
std::string_view get_error_description(error_code code);

}  // namespace lmx
