#include "lmx60/ReadDocument.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace lmx {
namespace {

TEST(XmlReaderFaultTest, TellsTheLineOfAFault) {
  EXPECT_EQ(recorded("<e>\n<t>\n</e>"), "line 3: document not well-formed (mismatched tag)");
  EXPECT_EQ(recorded(""), "line 1: document not well-formed (no element found)");
}

TEST(XmlReaderFaultTest, ThrowsAFaultAfterTheRoot) {
  EXPECT_EQ(recorded("<e/>\n<e/>"),
            "line 2: document not well-formed (junk after document element)");
  EXPECT_EQ(recorded("<e/>\njunk"),
            "line 2: document not well-formed (junk after document element)");
  EXPECT_EQ(recorded("<e/>\n<!-- open"), "line 2: document not well-formed (unclosed token)");
}

TEST(XmlReaderFaultTest, ThrowsAFaultInWhatIsSkipped) {
  EXPECT_EQ(recorded("<e><x><y></x></e>"), "line 1: document not well-formed (mismatched tag)");
  EXPECT_EQ(recorded("<e><t><y a='1' a='2'/></t></e>"),
            "line 1: document not well-formed (duplicate attribute)");
}

TEST(XmlReaderFaultTest, ThrowsAnUnknownRoot) {
  EXPECT_EQ(recorded("\n<x/>"), "line 2: unexpected root element (x)");
  EXPECT_EQ(recorded("<x>not well-formed"), "line 1: unexpected root element (x)");
}

TEST(XmlReaderFaultTest, TheVersionIsOneAndAnyMinorNumber) {
  const auto declared = [](const std::string& version) {
    return recorded("<?xml version='" + version + "'?><e/>");
  };
  for (const char* const version : {"1.0", "1.1", "1.10", "1.9876543210"}) {
    EXPECT_EQ(declared(version), "e { }; ");
  }
  for (const std::string version : {"", "1", "1.", ".0", "2.0", "1.0a", "1.0.0", "abc", "01.0"}) {
    const std::string detail = version.empty() ? "" : " (" + version + ")";
    EXPECT_EQ(declared(version), "line 1: document not well-formed" + detail);
  }
}

std::string nested(std::size_t levels, std::string_view name) {
  std::string document;
  for (std::size_t i = 0; i < levels; ++i) document.append("<").append(name).append(">");
  for (std::size_t i = 0; i < levels; ++i) document.append("</").append(name).append(">");
  return document;
}

TEST(XmlReaderFaultTest, RefusesMoreThanTheGreatestDepth) {
  constexpr std::string_view failure = "line 1: elements nested too deep (";
  for (const std::string name : {"e", "x"}) {
    const std::string start = "<e>";
    const std::string end = "</e>";
    const std::string deepest = start + nested(c_xml_reader::max_depth - 1, name) + end;
    const std::string tooDeep = start + nested(c_xml_reader::max_depth, name) + end;
    EXPECT_EQ(recorded(deepest).substr(0, 3), "e {") << name;
    EXPECT_EQ(recorded(tooDeep), std::string(failure) + name + ")");
  }
  EXPECT_EQ(c_xml_reader::max_depth, 256U);
}

TEST(XmlReaderFaultTest, CountsOnlyElementsThatAreOpen) {
  std::string document = "<e>";
  for (std::size_t i = 0; i < 2 * c_xml_reader::max_depth; ++i) document += "<x><x/></x>";
  EXPECT_EQ(recorded(document + "</e>"), "e { }; ");
}

class DeclarationTest : public testing::TestWithParam<std::string_view> {};

TEST_P(DeclarationTest, IsRefused) {
  const std::string document = "<!DOCTYPE e [" + std::string(GetParam()) + "]><e/>";
  const std::string_view kind =
      GetParam().find("<!ENTITY") == std::string_view::npos ? "<!ATTLIST" : "<!ENTITY";
  EXPECT_EQ(recorded(document), "line 1: entity and attribute-list declarations are refused (" +
                                    std::string(kind) + ")");
}

INSTANTIATE_TEST_SUITE_P(
    Declarations, DeclarationTest,
    testing::Values("<!ENTITY a 'text'>", "<!ENTITY a SYSTEM '/etc/passwd'>",
                    "<!ENTITY a PUBLIC 'id' 'uri'>", "<!ENTITY a SYSTEM 'x' NDATA n>",
                    "<!ENTITY % a 'text'>", "<!ENTITY % a SYSTEM 'x'>",
                    // The parser itself does not report these:
                    "<!ENTITY lt '&#38;#60;'>", "%undeclared; <!ENTITY a 'text'>",
                    "%undeclared; <!ATTLIST e a CDATA 'text'>", "<!ATTLIST e>",
                    "<!ATTLIST e a CDATA #IMPLIED>", "<!ATTLIST e a (b|c) 'b'>",
                    "<!ELEMENT e ANY><!-- c --><?p i?><!ATTLIST e a ID #REQUIRED>"));

TEST(XmlReaderFaultTest, RefusesDeclarationsInEveryEncoding) {
  std::string document = "\xFF\xFE";
  for (const char c : std::string_view("<!DOCTYPE e [<!ENTITY a 'b'>]><e/>")) {
    document.append({c, '\0'});
  }
  EXPECT_EQ(recorded(document),
            "line 1: entity and attribute-list declarations are refused (<!ENTITY)");
}

TEST(XmlReaderFaultTest, TakesNoOtherTextForADeclaration) {
  EXPECT_EQ(recorded("<!-- <!ENTITY --><?p <!ATTLIST?>"
                     "<!DOCTYPE e SYSTEM '<!ENTITY' [<!NOTATION n SYSTEM '<!ENTITY'>"
                     "<!-- <!ENTITY --><?p <!ATTLIST?>]>"
                     "<e><!-- <!ENTITY --><?p <!ATTLIST?><v><![CDATA[<!ENTITY]]></v></e>"),
            "e { v \"<!ENTITY\"; }; ");
}

// The parser hands long texts over in pieces, so that any part of one may begin a piece.
TEST(XmlReaderFaultTest, TakesNoPieceOfALongTextForADeclaration) {
  for (const std::string_view frame : {"<!--?-->", "<?p ?\?>", "<!NOTATION n SYSTEM '?'>"}) {
    const std::size_t middle = frame.find('?', 3);
    for (std::size_t i = 0; i < 8; ++i) {
      std::string text;
      while (text.size() < 5000) text.append("<!ENTITY");
      const std::string document = "<!DOCTYPE e [" + std::string(frame.substr(0, middle)) +
                                   text.substr(i) + std::string(frame.substr(middle + 1)) +
                                   "]><e/>";
      std::string wide = "\xFF\xFE";
      for (const char c : document) wide.append({c, '\0'});
      EXPECT_EQ(recorded(wide), "e { }; ") << frame << i;
    }
  }
}

TEST(XmlReaderFaultTest, RefusesUndefinedEntities) {
  EXPECT_EQ(recorded("<e>&a;</e>"), "line 1: document not well-formed (undefined entity)");
  EXPECT_EQ(recorded("<e a='&a;'/>"), "line 1: document not well-formed (undefined entity)");
  EXPECT_EQ(recorded("<!DOCTYPE e []><e>&a;</e>"),
            "line 1: document not well-formed (undefined entity)");
}

TEST(XmlReaderFaultTest, DropsEntitiesThatAnUnreadSubsetMayDefine) {
  EXPECT_EQ(recorded("<!DOCTYPE e SYSTEM 'x.dtd'><e a='1&a;2'><v>3&b;4</v></e>"),
            "e a='12' { v \"34\"; }; ");
}

}  // namespace
}  // namespace lmx
