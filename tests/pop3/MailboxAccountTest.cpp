#include "pop3/MailboxAccount.h"

#include "core/Literals.h"
#include "core/TrustedServer.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo {

using net::Encryption;

namespace {

Preferences Mailbox(int security, const QString &port) {
    Preferences values;
    values.POPServer = u"pop.x.test"_s;
    values.POPSecurity = security;
    values.POPPort = port;
    return values;
}

} // namespace

TEST(MailboxAccountTest, PortCountsOnlyWhereTheLineIsEncrypted) {
    EXPECT_EQ(MailboxEndpoint(Mailbox(0, u"995"_s)),
              (net::Endpoint{u"pop.x.test"_s, 110, Encryption::None, {}}));
    EXPECT_EQ(MailboxEndpoint(Mailbox(1, u"111"_s)),
              (net::Endpoint{u"pop.x.test"_s, 111, Encryption::StartTls, {}}));
    EXPECT_EQ(MailboxEndpoint(Mailbox(2, u"995"_s)),
              (net::Endpoint{u"pop.x.test"_s, 995, Encryption::Tls, {}}));
    EXPECT_EQ(MailboxEndpoint(Mailbox(7, u"995"_s)).Security, Encryption::None) << "as it is shown";
}

TEST(MailboxAccountTest, PortThatCannotBeOneIsNone) {
    for (const QString &port : {u""_s, u"pop"_s, u"-1"_s, u"65536"_s, u"0"_s})
        EXPECT_EQ(MailboxEndpoint(Mailbox(2, port)).Port, 0) << port.toStdString();
    EXPECT_EQ(MailboxEndpoint(Mailbox(2, u"65535"_s)).Port, 65535);
}

TEST(MailboxAccountTest, CertificateIsTrustedForItsServer) {
    const QByteArray sha256(32, 'x');
    Preferences values = Mailbox(2, u"995"_s);
    values.POPTrusted = TrustText(u"POP.x.test"_s, sha256);
    EXPECT_EQ(MailboxEndpoint(values).Pin, sha256);
    values.POPServer = u"other.test"_s;
    EXPECT_EQ(MailboxEndpoint(values).Pin, QByteArray());
}

TEST(MailboxAccountTest, OnlyStlsBeginsAfterTheGreeting) {
    EXPECT_FALSE(MailboxAccount(Mailbox(0, {})).StartsTls);
    EXPECT_TRUE(MailboxAccount(Mailbox(1, {})).StartsTls);
    EXPECT_FALSE(MailboxAccount(Mailbox(2, {})).StartsTls);
    for (const int security : {0, 1, 2})
        EXPECT_EQ(MailboxAccount(Mailbox(security, {})).IsEncrypted, security > 0);
}

} // namespace varlo
