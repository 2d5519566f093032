#include "lmx60/XmlWriter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

namespace lmx {
namespace {

constexpr const char* declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

class XmlWriterTest : public testing::Test {
 protected:
  // The whole document so far.
  std::string written() {
    EXPECT_EQ(writer_.finish(), error_code::ok);
    return stream_.str();
  }

  std::ostringstream stream_;
  c_xml_writer writer_{stream_};
};

TEST_F(XmlWriterTest, WritesOneLinePerTagIndentedByDepth) {
  writer_.start_element("a");
  writer_.start_element("b");
  writer_.start_element("c");
  writer_.end_element("c");
  writer_.end_element("b");
  writer_.start_element("d");
  writer_.end_element("d");
  writer_.end_element("a");
  EXPECT_EQ(written(), std::string(declaration) +
                           "<a>\n"
                           "  <b>\n"
                           "    <c/>\n"
                           "  </b>\n"
                           "  <d/>\n"
                           "</a>\n");
}

TEST_F(XmlWriterTest, WritesAttributesInTheOrderOfTheCalls) {
  writer_.start_element("a");
  writer_.marshal_attribute_impl("z", std::string("1"));
  writer_.marshal_attribute_impl("b", std::uint32_t{4294967295U});
  writer_.marshal_attribute_impl("c", std::string());
  writer_.end_element("a");
  EXPECT_EQ(written(), std::string(declaration) + "<a z=\"1\" b=\"4294967295\" c=\"\"/>\n");
}

TEST_F(XmlWriterTest, EscapesAttributesAndTexts) {
  writer_.start_element("a");
  writer_.marshal_attribute_impl("b", std::string("<&\"\n>"));
  writer_.marshal_element_impl("c", "<&\"\n>");
  writer_.marshal_element_impl("d", "");
  writer_.end_element("a");
  EXPECT_EQ(written(), std::string(declaration) +
                           "<a b=\"&lt;&amp;&quot;&#10;&gt;\">\n"
                           "  <c>&lt;&amp;&quot;\n&gt;</c>\n"
                           "  <d></d>\n"
                           "</a>\n");
}

TEST_F(XmlWriterTest, WritesTheSelectedNamespaceDeclarationsOnce) {
  const c_namespace_map map{{"", "urn:default"}, {"p", "urn:<p>"}};
  const c_namespace_map other{{"q", "urn:q"}};
  writer_.start_element("a");
  writer_.conditionally_select_ns_map(map);
  writer_.conditionally_select_ns_map(other);
  writer_.conditionally_write_ns_attrs();
  writer_.start_element("b");
  writer_.conditionally_write_ns_attrs();
  writer_.end_element("b");
  writer_.end_element("a");
  EXPECT_EQ(written(), std::string(declaration) +
                           "<a xmlns=\"urn:default\" xmlns:p=\"urn:&lt;p&gt;\">\n"
                           "  <b/>\n"
                           "</a>\n");
}

TEST_F(XmlWriterTest, HandsLongDocumentsOverInBlocks) {
  constexpr std::size_t count = 20000;
  writer_.start_element("a");
  for (std::size_t i = 0; i < count; ++i) writer_.marshal_element_impl("b", "some text");
  writer_.end_element("a");
  const std::string early = stream_.str();
  const std::string all = written();
  constexpr std::size_t size = 39 + 4 + count * 19 + 5;
  EXPECT_GT(early.size(), size / 2);
  EXPECT_EQ(all.size(), size);
  EXPECT_EQ(all.substr(0, early.size()), early);
}

TEST(XmlWriterFailureTest, ReportsAStreamThatHasFailed) {
  std::ostringstream stream;
  stream.setstate(std::ios::badbit);
  c_xml_writer writer(stream);
  writer.start_element("a");
  writer.end_element("a");
  EXPECT_EQ(writer.finish(), error_code::not_written);
}

}  // namespace
}  // namespace lmx
