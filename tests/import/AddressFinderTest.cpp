#include "import/AddressFinder.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <ostream>

namespace varlo {

void PrintTo(const FoundAddress &found, std::ostream *out) {
    *out << found.Line << ": " << found.Text.toStdString() << " x" << found.Times << ", fault "
         << static_cast<int>(found.Fault);
}

namespace test {
namespace {

using Fault = AddressFault;
using Found = QList<FoundAddress>;

TEST(AddressFinderTest, CountsTheSameAddressOnce) {
    EXPECT_EQ(FindAddresses(u"anna@x.org\nBo <bo@x.org>, ANNA@X.org\nbo@x.org"_s),
              (Found{{u"anna@x.org"_s, 1, 2}, {u"bo@x.org"_s, 2, 2}}));
}

TEST(AddressFinderTest, TellsWhatIsUnusable) {
    EXPECT_EQ(FindAddresses(u"write to a+b@x.org\nor anna@localhost, or bo@x.org"_s),
              (Found{{u"a+b@x.org"_s, 1, 1, Fault::Forbidden},
                     {u"anna@localhost"_s, 2, 1, Fault::NoDot},
                     {u"bo@x.org"_s, 2}}));
}

TEST(AddressFinderTest, ALineOfAListThatHoldsNoAddressIsTold) {
    EXPECT_EQ(
        FindAddresses(u"anna@x.org\nbo.x.org\n\n@ab.cd\ncy@x.org,\n"_s),
        (Found{
            {u"anna@x.org"_s, 1}, {u"bo.x.org"_s, 2, 1, Fault::NoAt}, {u"@ab.cd"_s, 4}, {u"cy@x.org"_s, 5}}));
}

TEST(AddressFinderTest, ACellMayHoldAnAddressWithItsNameOrSeveral) {
    EXPECT_EQ(
        FindAddresses(u"Id;E-mail\n1;\"Anna <anna@x.org>\"\n2;bo@x.org, cy@x.org\n3;none\n4;\n"_s),
        (Found{
            {u"anna@x.org"_s, 2}, {u"bo@x.org"_s, 3}, {u"cy@x.org"_s, 3}, {u"none"_s, 4, 1, Fault::NoAt}}));
}

TEST(AddressFinderTest, WhatIsNoAddressIsCutWhereItIsTooLongToShow) {
    const auto found = FindAddresses(QString(1000000, u'a') + u"+b@x.org"_s);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].Text, QString(320, u'a') + u"\u2026"_s);
    EXPECT_EQ(found[0].Fault, Fault::Forbidden);
}

TEST(AddressFinderTest, GoesOnWhereItStopped) {
    QString text;
    for (int i = 0; i < 20000; ++i)
        text += u"Dear user%1@example.org, "_s.arg(i);
    AddressFinder finder(text);
    int steps = 1;
    while (!finder.Step(0)) {
        ++steps;
        EXPECT_LE(finder.Position(), finder.Size());
        ASSERT_LT(steps, 20000);
    }
    EXPECT_EQ(finder.Found().size(), 20000);
    EXPECT_TRUE(finder.IsDone());
    EXPECT_TRUE(finder.Step(0)) << "there is nothing more";
}

} // namespace
} // namespace test
} // namespace varlo
