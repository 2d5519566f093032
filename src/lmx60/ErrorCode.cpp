#include "lmx60/ErrorCode.h"

namespace lmx {

std::string_view get_error_description(error_code code) {
  switch (code) {
    case error_code::ok:
      return "no error";
    case error_code::not_read:
      return "document not read yet";
    case error_code::file_not_opened:
      return "file could not be opened";
    case error_code::not_well_formed:
      return "document not well-formed";
    case error_code::unexpected_root:
      return "unexpected root element";
    case error_code::bad_integer:
      return "attribute is not an unsigned integer in range";
    case error_code::declaration_refused:
      return "entity and attribute-list declarations are refused";
    case error_code::nested_too_deep:
      return "elements nested too deep";
    case error_code::token_too_long:
      return "token too long";
    case error_code::not_written:
      return "document could not be written";
  }
  return "unknown error";
}

}  // namespace lmx
