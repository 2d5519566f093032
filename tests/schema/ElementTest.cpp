#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "schema/ElementClasses.h"
#include "schema/ElementProbe.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Devpack {
namespace {

using Probe = std::unique_ptr<ElementProbe>;

std::string written(const ElementProbe& element) {
  std::ostringstream stream;
  lmx::c_xml_writer writer(stream);
  element.marshal(writer, "root");
  EXPECT_EQ(writer.finish(), lmx::error_code::ok);
  return stream.str();
}

// What reading a document into the element throws; empty when it is read to its end.
std::string failure(ElementProbe& element, std::string_view document) {
  lmx::error_code result{};
  lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
  try {
    element.unmarshal(reader, "root");
    EXPECT_EQ(result, lmx::error_code::ok);
    return {};
  } catch (const lmx::c_lmx_exception& thrown) {
    EXPECT_EQ(result, thrown.code());
    return thrown.what();
  }
}

// What every element class can do; the parameter makes an empty element of a class.
class ElementTest : public testing::TestWithParam<Probe (*)()> {
 protected:
  Probe empty() const { return GetParam()(); }

  Probe filled() const {
    Probe element = empty();
    element->fillAllFields();
    return element;
  }

  Probe read(std::string_view document) const {
    Probe element = empty();
    EXPECT_EQ(failure(*element, document), "") << document;
    return element;
  }
};

TEST_P(ElementTest, FilledElementsReadBackEqual) {
  const std::string document = written(*filled());
  EXPECT_TRUE(read(document)->equals(*filled())) << document;
}

TEST_P(ElementTest, WritingTwiceGivesTheSameBytes) {
  const Probe element = filled();
  const std::string document = written(*element);
  EXPECT_EQ(written(*element), document);
  EXPECT_EQ(written(*read(document)), document);
}

TEST_P(ElementTest, EmptyElementsHoldNothing) {
  const std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root/>\n";
  EXPECT_EQ(written(*empty()), document);
  EXPECT_TRUE(read(document)->equals(*empty()));
  EXPECT_TRUE(read("<root></root>")->equals(*empty()));
}

TEST_P(ElementTest, EveryFieldCountsInEquality) {
  EXPECT_TRUE(empty()->equals(*empty()));
  const std::vector<std::string_view> names = empty()->fieldNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    Filler filler;
    const Probe one = empty();
    one->fillField(i, filler);
    const Probe other = empty();
    other->fillField(i, filler);
    EXPECT_FALSE(one->equals(*empty())) << names[i];
    EXPECT_FALSE(one->equals(*other)) << names[i];
    EXPECT_TRUE(one->equals(*one->copied())) << names[i];
  }
}

TEST_P(ElementTest, EveryFieldIsWrittenAndReadByItself) {
  const std::vector<std::string_view> names = empty()->fieldNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    Filler filler;
    const Probe element = empty();
    element->fillField(i, filler);
    const std::string document = written(*element);
    EXPECT_NE(document.find(names[i]), std::string::npos) << document;
    EXPECT_TRUE(read(document)->equals(*element)) << document;
  }
}

TEST_P(ElementTest, SkipsUnknownAttributesAndChildren) {
  EXPECT_TRUE(read("<root unknown='1' p:name='2' Name='3'>text<unknown name='4'><root/><unknown/>"
                   "</unknown><p:arg/><ROOT/>text</root>")
                  ->equals(*empty()));
}

TEST_P(ElementTest, CopiesAreIndependent) {
  const Probe element = filled();
  const Probe copy = element->copied();
  const Probe assigned = empty();
  assigned->assign(*element);
  EXPECT_TRUE(copy->equals(*element));
  EXPECT_TRUE(assigned->equals(*element));
  element->assign(*empty());
  EXPECT_TRUE(element->equals(*empty()));
  EXPECT_TRUE(copy->equals(*filled()));
  EXPECT_TRUE(assigned->equals(*filled()));
}

TEST_P(ElementTest, MovesTakeEverythingAlong) {
  const Probe moved = filled()->moved();
  EXPECT_TRUE(moved->equals(*filled()));
  const Probe assigned = empty();
  assigned->moveFrom(*moved);
  EXPECT_TRUE(assigned->equals(*filled()));
}

TEST_P(ElementTest, ReadingReplacesWhatWasThere) {
  const Probe element = filled();
  EXPECT_EQ(failure(*element, "<root/>"), "");
  EXPECT_TRUE(element->equals(*empty()));
}

TEST_P(ElementTest, AFailureLeavesTheElementAsItWas) {
  const Probe element = filled();
  EXPECT_EQ(failure(*element, "<root/>junk"),
            "line 1: document not well-formed (junk after document element)");
  EXPECT_TRUE(element->equals(*filled()));
}

TEST_P(ElementTest, RefusesARootOfAnotherName) {
  EXPECT_EQ(failure(*empty(), "<other/>"), "line 1: unexpected root element (other)");
}

template <typename Class>
Probe makeProbe() {
  return std::make_unique<ElementProbeOf<Class>>();
}

template <typename... Class>
std::vector<Probe (*)()> probesOf(TypeList<Class...> /*all*/) {
  return {makeProbe<Class>...};
}

INSTANTIATE_TEST_SUITE_P(AllClasses, ElementTest, testing::ValuesIn(probesOf(ElementClasses())));

}  // namespace
}  // namespace Devpack
