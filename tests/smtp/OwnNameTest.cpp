#include "core/Literals.h"
#include "smtp/Handshake.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace OSSMTP {

TEST(OwnNameTest, FullNameIsTaken) {
    EXPECT_EQ(OwnName(u"pc.example.org"_s, {}, u"192.0.2.1"_s), "pc.example.org");
    EXPECT_EQ(OwnName(u"pc"_s, u"example.org"_s, u"192.0.2.1"_s), "pc.example.org");
}

TEST(OwnNameTest, BareHostNameIsNeverSaid) {
    for (const QString &name : {u"pc"_s, QString(), u"localhost"_s, u"pc."_s, u".pc"_s, u"a..b"_s})
        EXPECT_EQ(OwnName(name, {}, u"192.0.2.1"_s), "[192.0.2.1]") << name.toStdString();
}

TEST(OwnNameTest, NameThatIsNoDomainIsNotSaid) {
    for (const QString &name : {u"my pc.example.org"_s, u"pc_1.example.org"_s, u"büro.example.org"_s,
                                u"pc.example.org\r\nRSET"_s, u"192.0.2.7"_s})
        EXPECT_EQ(OwnName(name, {}, u"192.0.2.1"_s), "[192.0.2.1]") << name.toStdString();
}

TEST(OwnNameTest, AddressIsALiteral) {
    EXPECT_EQ(OwnName({}, {}, u"2001:db8::1"_s), "[IPv6:2001:db8::1]");
    EXPECT_EQ(OwnName({}, {}, u"fe80::1%eth0"_s), "[IPv6:fe80::1]");
    EXPECT_EQ(OwnName({}, {}, u"::ffff:192.0.2.1"_s), "[192.0.2.1]");
    EXPECT_EQ(OwnName({}, {}, {}), "[127.0.0.1]");
}

} // namespace OSSMTP
