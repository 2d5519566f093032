#include "lmx60/ReadDocument.h"
#include "lmx60/UnmarshalHelper.h"

#include <gtest/gtest.h>

namespace lmx {
namespace {

TEST(UnmarshalHelperTest, ReadsChildrenInDocumentOrder) {
  EXPECT_EQ(recorded("<e><t1/><e2><t3/></e2><t1/></e>"), "e { t1; e2 { t3; }; t1; }; ");
}

TEST(UnmarshalHelperTest, ReadsEmptyElementsInBothForms) {
  EXPECT_EQ(recorded("<e/>"), "e { }; ");
  EXPECT_EQ(recorded("<e></e>"), "e { }; ");
  EXPECT_EQ(recorded("<e><e1/><t1/><e2></e2><t2></t2></e>"), "e { e1 { }; t1; e2 { }; t2; }; ");
}

TEST(UnmarshalHelperTest, SkipsUnknownElementsWithAllThatTheyHold) {
  EXPECT_EQ(recorded("<e><x><t1/><e1/></x>text<t2/><y/><z><z><t3/></z></z></e>"), "e { t2; }; ");
}

TEST(UnmarshalHelperTest, SkipsTheContentOfElementsTakenForTheirAttributes) {
  EXPECT_EQ(recorded("<e><t1 a='1'>text<t2/><e1/></t1><t3/></e>"), "e { t1 a='1'; t3; }; ");
}

TEST(UnmarshalHelperTest, SkipsTheContentOfElementsWithoutChildren) {
  EXPECT_EQ(recorded("<e><n1>text<t2/><e1><v/></e1></n1><n2/><t3/></e>"),
            "e { n1 {}; n2 {}; t3; }; ");
}

TEST(UnmarshalHelperTest, ReadsARootWithoutChildren) {
  EXPECT_EQ(recorded("<n a='b'/>"), "n a='b' {}; ");
  EXPECT_EQ(recorded("<n><t/></n>"), "n {}; ");
}

}  // namespace
}  // namespace lmx
