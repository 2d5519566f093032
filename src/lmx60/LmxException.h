#pragma once

#include "lmx60/ErrorCode.h"

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace lmx {

/// The failure that reading a document throws.
class c_lmx_exception : public std::runtime_error {
 public:
  /// `line` counts from 1; `detail` names what was wrong and may be empty. Together with the
  /// description of the code they make up what().
  c_lmx_exception(error_code code, std::uint64_t line, std::string_view detail);

  error_code code() const { return code_; }

  /// The line of the document at which the fault was found, counted from 1.
  std::uint64_t line() const { return line_; }

 private:
  error_code code_;
  std::uint64_t line_;
};

}  // namespace lmx
