#pragma once

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace Devpack {

inline Project readProject(std::string_view document) {
  lmx::error_code result{};
  Project project(std::make_unique<lmx::c_memory_source>(document), result);
  EXPECT_EQ(result, lmx::error_code::ok);
  return project;
}

/// What reading a document throws; empty when it is read to its end.
inline std::string failureOf(std::string_view document) {
  lmx::error_code result{};
  try {
    const Project project(std::make_unique<lmx::c_memory_source>(document), result);
    EXPECT_EQ(result, lmx::error_code::ok);
    return {};
  } catch (const lmx::c_lmx_exception& failure) {
    EXPECT_EQ(result, failure.code());
    return failure.what();
  }
}

}  // namespace Devpack
