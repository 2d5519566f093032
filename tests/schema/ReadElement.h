#pragma once

#include "lmx60/ErrorCode.h"
#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace Devpack {

/// Reads a document whose root is an element of the class, named `name`.
template <typename Class>
Class readElement(std::string_view document, std::string_view name) {
  lmx::error_code result{};
  lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
  Class element;
  try {
    element.unmarshal(reader, name);
    EXPECT_EQ(result, lmx::error_code::ok);
  } catch (const lmx::c_lmx_exception& failure) {
    ADD_FAILURE() << failure.what();
  }
  return element;
}

/// The document whose root is the element, under that name.
template <typename Class>
std::string writeElement(const Class& element, std::string_view name) {
  std::ostringstream stream;
  lmx::c_xml_writer writer(stream);
  element.marshal(writer, name);
  EXPECT_EQ(writer.finish(), lmx::error_code::ok);
  return stream.str();
}

/// What a document throws when it is read as a project; empty when it is read to its end.
template <typename Class>
std::string failureOf(std::string_view document, std::string_view name) {
  lmx::error_code result{};
  lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
  try {
    Class().unmarshal(reader, name);
    EXPECT_EQ(result, lmx::error_code::ok);
    return {};
  } catch (const lmx::c_lmx_exception& failure) {
    EXPECT_EQ(result, failure.code());
    return failure.what();
  }
}

}  // namespace Devpack
