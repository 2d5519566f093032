#pragma once

#include <string>
#include <vector>

namespace lmx {

/// One namespace declaration: `xmlns:prefix="uri"`, or `xmlns="uri"` when the prefix is empty.
struct c_namespace_mapping {
  std::string prefix;
  std::string uri;

  friend bool operator==(const c_namespace_mapping&, const c_namespace_mapping&) = default;
};

/// The namespace declarations of a root element, in document order.
using c_namespace_map = std::vector<c_namespace_mapping>;

}  // namespace lmx
