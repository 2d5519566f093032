#include "lmx60/Conversion.h"
#include "lmx60/FileSource.h"
#include "lmx60/ReadDocument.h"
#include "lmx60/XmlReader.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace lmx {
namespace {

TEST(XmlReaderTest, HandsOverAttributesInDocumentOrder) {
  EXPECT_EQ(recorded("<e z='1' a=\"2\" m=''><t y='3'/></e>"), "e z='1' a='2' m='' { t y='3'; }; ");
}

TEST(XmlReaderTest, ResolvesReferencesAndNormalisesAttributeValues) {
  EXPECT_EQ(recorded("<e a='&lt;&amp;&gt;&quot;&apos;&#65;&#x20AC;' b='1\t2\n3\r\n4\r5'"
                     " c='&#9;&#10;&#13;'/>"),
            "e a='<&>\"'A\xE2\x82\xAC' b='1 2 3 4 5' c='\t\n\r' { }; ");
}

TEST(XmlReaderTest, ReadsTheTextOfAnElement) {
  EXPECT_EQ(recorded("<e><v>text</v><v></v><v/><v> a &lt; b\r\nc\rd </v></e>"),
            "e { v \"text\"; v \"\"; v \"\"; v \" a < b\nc\nd \"; }; ");
}

TEST(XmlReaderTest, PutsTogetherTextAroundWhateverStandsInIt) {
  EXPECT_EQ(recorded("<e><v>a<![CDATA[<b>]]>c<!-- no -->d<?no no?>e&#102;<x>no<v>no</v></x>g"
                     "<v>no</v>h</v></e>"),
            "e { v \"a<b>cdefgh\"; }; ");
}

TEST(XmlReaderTest, ReadsOneTextAfterTheOther) {
  EXPECT_EQ(recorded("<e>no<v1>a</v1>no<v2>b</v2>no<t>no</t><v3>c</v3></e>"),
            "e { v1 \"a\"; v2 \"b\"; t; v3 \"c\"; }; ");
}

TEST(XmlReaderTest, ComparesNamesAsWritten) {
  EXPECT_EQ(recorded("<e xmlns:p='urn:p'><p:t/><T/><t:p/></e>"), "e xmlns:p='urn:p' { t:p; }; ");
}

TEST(XmlReaderTest, KeepsTheNamespaceDeclarationsOfTheRoot) {
  c_namespace_map map;
  recorded("<e a='1' xmlns:p='urn:p' xmlns='urn:d' xmlnsx='2'><e xmlns:q='urn:q'/></e>", &map);
  EXPECT_EQ(map, (c_namespace_map{{"p", "urn:p"}, {"", "urn:d"}}));
}

TEST(XmlReaderTest, ForgetsTheNamespaceMapOnceTheRootHasStarted) {
  error_code result{};
  c_xml_reader reader(std::make_unique<c_memory_source>("<e xmlns='urn:d'/>"), result);
  c_namespace_map map;
  reader.set_ns_map(&map);
  std::string log;
  RecordingSelector selector(log);
  c_unmarshal_helper(reader).unmarshal_complex_content(selector);
  reader.add_namespace_mapping("late", "urn:late");
  EXPECT_EQ(map, (c_namespace_map{{"", "urn:d"}}));
}

TEST(XmlReaderTest, PassesOverANamespaceDeclarationWithoutAPrefix) {
  c_namespace_map map;
  recorded("<e xmlns:='urn:p'/>", &map);
  EXPECT_EQ(map, c_namespace_map());
}

TEST(XmlReaderTest, AcceptsAPlainDocumentTypeDeclaration) {
  EXPECT_EQ(recorded("<!DOCTYPE e><e/>"), "e { }; ");
  EXPECT_EQ(recorded("<!DOCTYPE e SYSTEM 'nowhere.dtd'><e/>"), "e { }; ");
  EXPECT_EQ(recorded("<!DOCTYPE e PUBLIC 'id' '/nowhere.dtd' [ <!ELEMENT e ANY>"
                     " <!NOTATION n SYSTEM 'x'> <!-- c --> <?p i?> %undeclared; ]><e/>"),
            "e { }; ");
}

TEST(XmlReaderTest, ReadsThroughToTheEndOfTheDocument) {
  EXPECT_EQ(
      recorded("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- c --><?p i?><e/>\n<!-- c --><?p i?>\n"),
      "e { }; ");
}

TEST(XmlReaderTest, ReadsAFile) {
  const consolidator::TemporaryFolder folder;
  const std::string path = folder.write("document", "<e><t/></e>");
  EXPECT_EQ(recorded(std::make_unique<c_file_source>(path.c_str())), "e { t; }; ");
}

TEST(XmlReaderTest, ReadsAPipeInWhateverPieces) {
  constexpr std::string_view document = "<e><t a='1'/><v>text</v></e>";
  for (const std::size_t size : {1U, 2U, 5U, 100U}) {
    const consolidator::PiecewisePipe pipe(consolidator::pieces(document, size));
    EXPECT_EQ(recorded(std::make_unique<c_file_source>(pipe.path().c_str())),
              "e { t a='1'; v \"text\"; }; ");
  }
}

TEST(XmlReaderTest, ReadsNothingFromAFileThatCannotBeOpened) {
  const consolidator::TemporaryFolder folder;
  error_code result{};
  c_xml_reader reader(folder.path("missing").c_str(), result);
  EXPECT_EQ(result, error_code::file_not_opened);
  std::string log;
  RecordingSelector selector(log);
  c_unmarshal_helper(reader).unmarshal_complex_content(selector);
  EXPECT_EQ(result, error_code::file_not_opened);
  EXPECT_EQ(log, "");
}

TEST(XmlReaderTest, SkipsWhatASelectorLeavesOfAChild) {
  // Enters every child and reads none of them.
  class IdleSelector final : public c_known_elements_selector {
   public:
    element_event select(c_xml_reader& /*reader*/, std::string_view name,
                         const c_attributes& /*attributes*/) override {
      names += name;
      return element_event::entered;
    }

    void unmarshal_content(c_xml_reader& /*reader*/) override {}

    std::string names;
  };

  error_code result{};
  c_xml_reader reader(std::make_unique<c_memory_source>("<a><b/><c><d/></c></a>"), result);
  IdleSelector selector;
  c_unmarshal_helper(reader).unmarshal_complex_content(selector);
  EXPECT_EQ(selector.names, "a");
  EXPECT_EQ(result, error_code::ok);
}

TEST(XmlReaderTest, PassesOnWhatASelectorThrows) {
  class ThrowingSelector final : public c_known_elements_selector {
   public:
    element_event select(c_xml_reader& /*reader*/, std::string_view name,
                         const c_attributes& /*attributes*/) override {
      throw std::out_of_range(std::string(name));
    }

    void unmarshal_content(c_xml_reader& /*reader*/) override {}
  };

  error_code result{};
  c_xml_reader reader(std::make_unique<c_memory_source>("<a/>"), result);
  ThrowingSelector selector;
  try {
    reader.get_known_element_event(selector);
    FAIL() << "nothing was thrown";
  } catch (const std::out_of_range& failure) {
    EXPECT_STREQ(failure.what(), "a");
  }
  EXPECT_EQ(result, error_code::not_read);
}

// A field that keeps what it is set to.
struct Number {
  void set(std::uint32_t newValue) { value = newValue; }

  std::uint32_t value = 7;
};

TEST(XmlReaderTest, SetsAFieldToTheConvertedAttribute) {
  error_code result{};
  c_xml_reader reader(std::make_unique<c_memory_source>(""), result);
  Number field;
  reader.unmarshal_attribute_value_impl(field, "41", c_unsigned_int_converter());
  EXPECT_EQ(field.value, 41U);
}

TEST(XmlReaderTest, ThrowsAnAttributeThatCannotBeConverted) {
  error_code result{};
  c_xml_reader reader(std::make_unique<c_memory_source>(""), result);
  Number field;
  try {
    reader.unmarshal_attribute_value_impl(field, "4x", c_unsigned_int_converter());
    FAIL() << "nothing was thrown";
  } catch (const c_lmx_exception& failure) {
    EXPECT_STREQ(failure.what(), "line 1: attribute is not an unsigned integer in range (4x)");
  }
  EXPECT_EQ(field.value, 7U);
  EXPECT_EQ(result, error_code::bad_integer);
}

}  // namespace
}  // namespace lmx
