#pragma once

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <string>
#include <string_view>

namespace consolidator {

/// Why a text is not one strict JSON document in UTF-8; empty if it is. The document is left in
/// `document`.
inline std::string jsonFault(std::string_view text, rapidjson::Document& document) {
  document.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag>(
      text.data(), text.size());
  if (!document.HasParseError()) return "";
  return rapidjson::GetParseError_En(document.GetParseError()) + std::string(" at ") +
         std::to_string(document.GetErrorOffset());
}

}  // namespace consolidator
