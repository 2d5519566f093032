#pragma once

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/RecordingSelector.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace lmx {

/// Reads a whole document from a source and returns what a RecordingSelector wrote down, or what
/// the failure says, whose code must be the one in the result. Null makes no namespace map.
inline std::string recorded(std::unique_ptr<c_byte_source> source, c_namespace_map* map = nullptr) {
  error_code result{};
  c_xml_reader reader(std::move(source), result);
  EXPECT_EQ(result, error_code::not_read);
  reader.set_ns_map(map);
  std::string log;
  RecordingSelector selector(log);
  try {
    c_unmarshal_helper(reader).unmarshal_complex_content(selector);
    EXPECT_EQ(result, error_code::ok);
  } catch (const c_lmx_exception& failure) {
    EXPECT_EQ(result, failure.code());
    return failure.what();
  }
  return log;
}

inline std::string recorded(std::string_view document, c_namespace_map* map = nullptr) {
  return recorded(std::make_unique<c_memory_source>(document), map);
}

}  // namespace lmx
