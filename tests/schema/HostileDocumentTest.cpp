// Documents that are malformed, hostile or merely odd: each is read or refused, as its row says,
// and neither takes long.

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace Devpack {
namespace {

using lmx::error_code;

// A document, or how to make one, so that a test does not make the long documents of all others.
class Document {
 public:
  Document(const char* text) : make_([text] { return std::string(text); }) {}

  Document(std::string text) : make_([text = std::move(text)] { return text; }) {}

  template <std::invocable Make>
  Document(Make make) : make_(std::move(make)) {}

  std::string text() const { return make_(); }

 private:
  std::function<std::string()> make_;
};

struct DocumentCase {
  std::string name;
  Document document;
  error_code expected;
};

void PrintTo(const DocumentCase& param, std::ostream* out) { *out << param.name; }

std::string repeated(std::string_view part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += part;
  return text;
}

std::string numbered(std::string_view before, std::size_t count, std::string_view after) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text.append(before).append(std::to_string(i)).append(after);
  }
  return text;
}

std::string inProject(std::string_view content) {
  return "<project>" + std::string(content) + "</project>";
}

std::string inArg(std::string_view attributes) {
  return inProject("<platform><device><core><kernel><arg " + std::string(attributes) +
                   "/></kernel></core></device></platform>");
}

std::string withDoctype(std::string_view declarations, std::string_view content = "") {
  return "<!DOCTYPE project [" + std::string(declarations) + "]>" + inProject(content);
}

std::string utf16(std::string_view text, bool bigEndian) {
  std::string wide = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : text) {
    if (bigEndian) wide += '\0';
    wide += c;
    if (!bigEndian) wide += '\0';
  }
  return wide;
}

const std::string zeroByte(1, '\0');
const std::string billionLaughs = "<!ENTITY a0 'lol'>" + [] {
  std::string text;
  for (int i = 1; i < 10; ++i) {
    text += "<!ENTITY a" + std::to_string(i) + " '" +
            repeated("&a" + std::to_string(i - 1) + ";", 10) + "'>";
  }
  return text;
}();

class HostileDocumentTest : public testing::TestWithParam<DocumentCase> {};

TEST_P(HostileDocumentTest, IsReadOrRefusedQuickly) {
  const std::string document = GetParam().document.text();
  const std::clock_t before = std::clock();
  error_code result{};
  error_code thrown = error_code::ok;
  try {
    const Project project(std::make_unique<lmx::c_memory_source>(document), result);
  } catch (const lmx::c_lmx_exception& failure) {
    thrown = failure.code();
  }
  EXPECT_EQ(get_error_description(thrown), get_error_description(GetParam().expected));
  EXPECT_EQ(get_error_description(result), get_error_description(GetParam().expected));
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC);
}

const auto caseName = [](const testing::TestParamInfo<DocumentCase>& info) {
  return info.param.name;
};

INSTANTIATE_TEST_SUITE_P(
    Structure, HostileDocumentTest,
    testing::Values(
        DocumentCase{"Empty", "", error_code::not_well_formed},
        DocumentCase{"OnlyWhiteSpace", " \n\t ", error_code::not_well_formed},
        DocumentCase{"OnlyAByteOrderMark", "\xEF\xBB\xBF", error_code::not_well_formed},
        DocumentCase{"OnlyADeclaration", "<?xml version='1.0'?>", error_code::not_well_formed},
        DocumentCase{"OnlyAComment", "<!-- c -->", error_code::not_well_formed},
        DocumentCase{"NotXmlAtAll", "kernel vadd 1 2 3", error_code::not_well_formed},
        DocumentCase{"Elf",
                     [] { return std::string("\x7F") + "ELF\2\1\1" + repeated(zeroByte, 9); },
                     error_code::not_well_formed},
        DocumentCase{"TwoRoots", "<project/><project/>", error_code::not_well_formed},
        DocumentCase{"TextBeforeTheRoot", "x<project/>", error_code::not_well_formed},
        DocumentCase{"TextAfterTheRoot", "<project/>x", error_code::not_well_formed},
        DocumentCase{"EndTagAfterTheRoot", "<project/></project>", error_code::not_well_formed},
        DocumentCase{"CdataAfterTheRoot", "<project/><![CDATA[]]>", error_code::not_well_formed},
        DocumentCase{"ReferenceAfterTheRoot", "<project/>&amp;", error_code::not_well_formed},
        DocumentCase{"ZeroByteAfterTheRoot", "<project/>" + zeroByte, error_code::not_well_formed},
        DocumentCase{"DoctypeAfterTheRoot", "<project/><!DOCTYPE project>",
                     error_code::not_well_formed},
        DocumentCase{"LateDeclaration", " <?xml version='1.0'?><project/>",
                     error_code::not_well_formed},
        DocumentCase{"UnclosedRoot", "<project>", error_code::not_well_formed},
        DocumentCase{"UnclosedChild", "<project><platform></project>", error_code::not_well_formed},
        DocumentCase{"WrongNesting", inProject("<a><b></a></b>"), error_code::not_well_formed},
        DocumentCase{"WrongCaseOfAnEndTag", "<project></Project>", error_code::not_well_formed},
        DocumentCase{"EndTagWithAttribute", "<project></project a='b'>",
                     error_code::not_well_formed},
        DocumentCase{"UnclosedComment", inProject("<!-- c"), error_code::not_well_formed},
        DocumentCase{"DoubleHyphenInAComment", inProject("<!-- a -- b -->"),
                     error_code::not_well_formed},
        DocumentCase{"UnclosedCdata", inProject("<![CDATA[ x ]]"), error_code::not_well_formed},
        DocumentCase{"CdataEndInText", inProject("]]>"), error_code::not_well_formed},
        DocumentCase{"UnclosedInstruction", inProject("<?p"), error_code::not_well_formed},
        DocumentCase{"ReservedInstruction", inProject("<?xml?>"), error_code::not_well_formed},
        DocumentCase{"EmptyName", inProject("< a/>"), error_code::not_well_formed},
        DocumentCase{"NameOfDigits", inProject("<1/>"), error_code::not_well_formed},
        DocumentCase{"BareLessThan", inProject("a < b"), error_code::not_well_formed},
        DocumentCase{"CommentsAndInstructionsAround", "<!-- a --><?p?><project/><!-- b --><?q?>\n",
                     error_code::ok}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Roots, HostileDocumentTest,
    testing::Values(
        DocumentCase{"AnotherRoot", "<kernel/>", error_code::unexpected_root},
        DocumentCase{"AnotherCase", "<Project/>", error_code::unexpected_root},
        DocumentCase{"APrefixedRoot", "<p:project xmlns:p='urn:p'/>", error_code::unexpected_root},
        DocumentCase{"ALongerRoot", "<projects/>", error_code::unexpected_root},
        DocumentCase{"AWrappedProject", "<x><project/></x>", error_code::unexpected_root},
        DocumentCase{"AnotherRootInTheDoctype", "<!DOCTYPE kernel><project/>", error_code::ok},
        DocumentCase{"ADefaultNamespace", "<project xmlns='urn:p'/>", error_code::ok},
        DocumentCase{"AnUndeclaredPrefix", inProject("<p:a q:b=''/>"), error_code::ok}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Attributes, HostileDocumentTest,
    testing::Values(
        DocumentCase{"DuplicateAttribute", "<project name='a' name='b'/>",
                     error_code::not_well_formed},
        DocumentCase{"DuplicateUnknownAttribute", inProject("<a b='' b=''/>"),
                     error_code::not_well_formed},
        DocumentCase{"AttributeWithoutValue", "<project name/>", error_code::not_well_formed},
        DocumentCase{"AttributeWithoutQuotes", "<project name=a/>", error_code::not_well_formed},
        DocumentCase{"AttributesWithoutSpace", "<project a='1'b='2'/>",
                     error_code::not_well_formed},
        DocumentCase{"UnclosedAttribute", "<project name='/>", error_code::not_well_formed},
        DocumentCase{"LessThanInAnAttribute", "<project name='<'/>", error_code::not_well_formed},
        DocumentCase{"GreaterThanInAnAttribute", "<project name='>'/>", error_code::ok},
        DocumentCase{"BadQualifier", inArg("addressQualifier='x'"), error_code::bad_integer},
        DocumentCase{"EmptyQualifier", inArg("addressQualifier=''"), error_code::bad_integer},
        DocumentCase{"LargeQualifier", inArg("addressQualifier='4294967296'"),
                     error_code::bad_integer},
        DocumentCase{"LongQualifier",
                     [] { return inArg("addressQualifier='" + repeated("9", 1000000) + "'"); },
                     error_code::bad_integer},
        DocumentCase{"QualifierWithManyZeros",
                     [] { return inArg("addressQualifier='" + repeated("0", 1000000) + "1'"); },
                     error_code::ok},
        DocumentCase{"BadQualifierThenBadDocument", inArg("addressQualifier='x'") + "x",
                     error_code::bad_integer},
        DocumentCase{"BadQualifierInAWrongPlace", inProject("<arg addressQualifier='x'/>"),
                     error_code::ok}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Characters, HostileDocumentTest,
    testing::Values(
        DocumentCase{"BareAmpersand", inProject("a & b"), error_code::not_well_formed},
        DocumentCase{"BareAmpersandInAnAttribute", "<project name='a & b'/>",
                     error_code::not_well_formed},
        DocumentCase{"UnclosedReference", inProject("&amp"), error_code::not_well_formed},
        DocumentCase{"UndefinedEntity", inProject("&nbsp;"), error_code::not_well_formed},
        DocumentCase{"ReferenceToZero", inProject("&#0;"), error_code::not_well_formed},
        DocumentCase{"ReferenceToAControl", inProject("&#1;"), error_code::not_well_formed},
        DocumentCase{"ReferenceToASurrogate", inProject("&#xD800;"), error_code::not_well_formed},
        DocumentCase{"ReferencePastUnicode", inProject("&#x110000;"), error_code::not_well_formed},
        DocumentCase{"HugeReference", [] { return inProject("&#" + repeated("9", 100000) + ";"); },
                     error_code::not_well_formed},
        DocumentCase{"ReferencesToCharacters", inProject("&#65;&#x1F600;"), error_code::ok},
        DocumentCase{"ZeroByte", inProject(zeroByte), error_code::not_well_formed},
        DocumentCase{"ZeroByteInAnAttribute", "<project name='a" + zeroByte + "b'/>",
                     error_code::not_well_formed},
        DocumentCase{"ControlCharacter", inProject("\x01"), error_code::not_well_formed},
        DocumentCase{"BadUtf8", inProject("\xFF"), error_code::not_well_formed},
        DocumentCase{"BadUtf8InAnUnknownAttribute", inProject("<a b='\x80'/>"),
                     error_code::not_well_formed},
        DocumentCase{"OverlongUtf8", inProject("\xC0\xAF"), error_code::not_well_formed},
        DocumentCase{"SurrogateInUtf8", inProject("\xED\xA0\x80"), error_code::not_well_formed},
        DocumentCase{"Utf8PastUnicode", inProject("\xF4\x90\x80\x80"), error_code::not_well_formed},
        DocumentCase{"CutUtf8", inProject("\xE2\x82"), error_code::not_well_formed},
        DocumentCase{"Noncharacter", inProject("\xEF\xBF\xBF"), error_code::not_well_formed}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Encodings, HostileDocumentTest,
    testing::Values(
        DocumentCase{"Utf16LittleEndian", utf16(inProject("<a/>"), false), error_code::ok},
        DocumentCase{"Utf16BigEndian", utf16(inProject("<a/>"), true), error_code::ok},
        DocumentCase{"CutUtf16", utf16(inProject("<a/>"), false) + " ",
                     error_code::not_well_formed},
        DocumentCase{"Latin1", "<?xml version='1.0' encoding='ISO-8859-1'?><project name='\xE9'/>",
                     error_code::ok},
        DocumentCase{"UnknownEncoding", "<?xml version='1.0' encoding='EBCDIC-US'?><project/>",
                     error_code::not_well_formed},
        DocumentCase{"Utf16InName", "<?xml version='1.0' encoding='UTF-16'?><project/>",
                     error_code::not_well_formed},
        DocumentCase{"Utf32", std::string("\xFF\xFE\0\0<\0\0\0", 8), error_code::not_well_formed},
        DocumentCase{"Utf7", "<?xml version='1.0' encoding='UTF-7'?><project/>",
                     error_code::not_well_formed},
        DocumentCase{"TwoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF<project/>",
                     error_code::not_well_formed}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Declarations, HostileDocumentTest,
    testing::Values(
        DocumentCase{"BillionLaughs", withDoctype(billionLaughs, "&a9;"),
                     error_code::declaration_refused},
        DocumentCase{
            "QuadraticBlowup",
            withDoctype("<!ENTITY a '" + repeated("a", 100000) + "'>", repeated("&a;", 100000)),
            error_code::declaration_refused},
        DocumentCase{"EntityLoop", withDoctype("<!ENTITY a '&b;'><!ENTITY b '&a;'>", "&a;"),
                     error_code::declaration_refused},
        DocumentCase{"ExternalEntity",
                     withDoctype("<!ENTITY a SYSTEM 'file:///etc/passwd'>", "&a;"),
                     error_code::declaration_refused},
        DocumentCase{"EntityFromADevice", withDoctype("<!ENTITY a SYSTEM '/dev/zeroByte'>", "&a;"),
                     error_code::declaration_refused},
        DocumentCase{"ParameterEntity",
                     withDoctype("<!ENTITY % a SYSTEM 'http://localhost/x'> %a;"),
                     error_code::declaration_refused},
        DocumentCase{"ParameterEntityBomb",
                     withDoctype("<!ENTITY % a '<!ELEMENT x ANY>'><!ENTITY % b '%a;%a;'>%b;"),
                     error_code::declaration_refused},
        DocumentCase{"PredefinedEntity", withDoctype("<!ENTITY lt '&#38;#60;'>"),
                     error_code::declaration_refused},
        DocumentCase{"UnusedEntity", withDoctype("<!ENTITY a 'b'>"),
                     error_code::declaration_refused},
        DocumentCase{"HiddenEntity", withDoctype("%x;<!ENTITY a 'b'>", "&a;"),
                     error_code::declaration_refused},
        DocumentCase{"AttributeDefault", withDoctype("<!ATTLIST project name CDATA 'default'>"),
                     error_code::declaration_refused},
        DocumentCase{"AttributeDefaultsFlood",
                     [] {
                       return withDoctype(
                           "<!ATTLIST a " + numbered("b", 20000, " CDATA 'c' ") + ">",
                           repeated("<a/>", 20000));
                     },
                     error_code::declaration_refused},
        DocumentCase{"PlainDoctype", "<!DOCTYPE project><project/>", error_code::ok},
        DocumentCase{"ExternalSubset", "<!DOCTYPE project SYSTEM '/dev/zeroByte'><project/>",
                     error_code::ok},
        DocumentCase{"ElementDeclarations", withDoctype("<!ELEMENT project EMPTY>", "<a/>"),
                     error_code::ok},
        DocumentCase{
            "DeepContentModel",
            withDoctype("<!ELEMENT a " + repeated("(", 20000) + "b" + repeated(")", 20000) + ">"),
            error_code::ok},
        DocumentCase{"UnclosedDoctype", "<!DOCTYPE project [<project/>",
                     error_code::not_well_formed},
        DocumentCase{"TwoDoctypes", "<!DOCTYPE project><!DOCTYPE project><project/>",
                     error_code::not_well_formed},
        DocumentCase{"ConditionalSection", withDoctype("<![INCLUDE[]]>"),
                     error_code::not_well_formed}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Floods, HostileDocumentTest,
    testing::Values(
        DocumentCase{"AMillionLevels", [] { return repeated("<project>", 1000000); },
                     error_code::nested_too_deep},
        DocumentCase{"AMillionUnknownLevels", [] { return "<project>" + repeated("<a>", 1000000); },
                     error_code::nested_too_deep},
        DocumentCase{
            "TooManyModules",
            [] { return "<project><platform><device><core><kernel>" + repeated("<module>", 252); },
            error_code::nested_too_deep},
        DocumentCase{"TheDeepestModules",
                     [] {
                       return inProject("<platform><device><core><kernel>" +
                                        repeated("<module>", 251) + repeated("</module>", 251) +
                                        "</kernel></core></device></platform>");
                     },
                     error_code::ok},
        DocumentCase{"AttributeFlood",
                     [] { return "<project " + numbered("a", 100000, "='' ") + "/>"; },
                     error_code::ok},
        DocumentCase{"AttributeFloodWithADuplicate",
                     [] { return "<project " + numbered("a", 100000, "='' ") + "a0=''/>"; },
                     error_code::not_well_formed},
        DocumentCase{"NamespaceFlood",
                     [] { return "<project " + numbered("xmlns:a", 50000, "='u' ") + "/>"; },
                     error_code::ok},
        DocumentCase{"NameFlood", [] { return inProject(numbered("<a", 100000, "/>")); },
                     error_code::ok},
        DocumentCase{"ElementFlood", [] { return inProject(repeated("<platform/>", 100000)); },
                     error_code::ok},
        DocumentCase{
            "RepetitionOfASingleElement",
            [] { return inProject("<platform>" + repeated("<host/>", 100000) + "</platform>"); },
            error_code::ok},
        DocumentCase{"LongName",
                     [] { return "<project><" + repeated("a", 4000000) + "/></project>"; },
                     error_code::ok},
        DocumentCase{"LongAttribute",
                     [] { return "<project name='" + repeated("a", 4000000) + "'/>"; },
                     error_code::ok},
        DocumentCase{"LongText",
                     [] {
                       return inProject("<platform><description>" + repeated("a&lt;", 1000000) +
                                        "</description></platform>");
                     },
                     error_code::ok},
        DocumentCase{"LongComment",
                     [] { return "<!--" + repeated("a", 8000000) + "--><project/>"; },
                     error_code::ok},
        DocumentCase{"LongUnclosedAttribute",
                     [] { return "<project name='" + repeated("a", 8000000); },
                     error_code::not_well_formed},
        DocumentCase{"ManyComments", [] { return inProject(repeated("<!---->", 500000)); },
                     error_code::ok},
        DocumentCase{"ManyReferences",
                     [] { return "<project name='" + repeated("&#10;", 500000) + "'/>"; },
                     error_code::ok}),
    caseName);

}  // namespace
}  // namespace Devpack
