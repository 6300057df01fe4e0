#include "core/AddressSyntax.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(AddressSyntaxTest, NamesTheFirstRuleThatFails) {
    EXPECT_EQ(FaultOf(u"anna"), AddressFault::NoAt);
    EXPECT_EQ(FaultOf(u"a@b"), AddressFault::NoDot);
    EXPECT_EQ(FaultOf(u"a@b.c"), AddressFault::TooShort);
    EXPECT_EQ(FaultOf(u"a@b@c.de"), AddressFault::SecondAt);
    EXPECT_EQ(FaultOf(u"a.b@cde"), AddressFault::NoDotBehindAt);
    EXPECT_EQ(FaultOf(u"a+b@x.org"), AddressFault::Forbidden);
    EXPECT_EQ(FaultOf(u"a..b@x.org"), AddressFault::TwoDots);
    EXPECT_EQ(FaultOf(u"ab@c.d"), AddressFault::None);
}

TEST(AddressSyntaxTest, TellsEachFaultInWords) {
    EXPECT_EQ(FaultText(u"anna"_s), u"There is no \"@\" in it."_s);
    EXPECT_EQ(FaultText(u"anna@x"_s), u"There is no dot in it."_s);
    EXPECT_EQ(FaultText(u"a@b.c"_s), u"It is shorter than six characters."_s);
    EXPECT_EQ(FaultText(u"a@b@c.de"_s), u"There is more than one \"@\" in it."_s);
    EXPECT_EQ(FaultText(u"a.b@cde"_s), u"There is no dot behind the \"@\"."_s);
    EXPECT_EQ(FaultText(u"a..b@x.org"_s), u"There are two dots side by side in it."_s);
    EXPECT_EQ(FaultText(u"ab@c.d"_s), QString());
}

TEST(AddressSyntaxTest, NamesTheCharacterThatNoAddressMayHold) {
    EXPECT_EQ(FaultText(u"a+b@x.org"_s), u"There is a \"+\" in it."_s);
    EXPECT_EQ(FaultText(u"a b@x.org"_s), u"There is a blank in it."_s);
    EXPECT_EQ(FaultText(u"\"ab\"@x.org"_s), u"There is a quotation mark in it."_s);
    EXPECT_EQ(FaultText(u"a\tb@x.org"_s), u"There is a control character in it."_s);
}

} // namespace
} // namespace varlo::test
