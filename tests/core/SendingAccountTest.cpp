#include "core/SendingAccount.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(SendingAccountTest, AMailboxIsAQuotedNameAndAnAddressInBrackets) {
    EXPECT_EQ(Mailbox(u"Mailing List"_s, u"a@b.org"_s), u"\"Mailing List\" <a@b.org>"_s);
    EXPECT_EQ(Mailbox(QString(), QString()), u"\"\" <>"_s);
}

TEST(SendingAccountTest, AnAccountIsWhatThePreferencesHoldNow) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPServer = u"mail.example.org"_s;
    profile.session.Prefs.SMTPPort = 2525;
    profile.session.Prefs.SMTPFrom = u"Ann Editor"_s;
    profile.session.Prefs.SMTPEmail = u"ann@example.org"_s;
    EXPECT_EQ(SendingAccount(profile.session),
              (MailAccount{u"mail.example.org"_s, 2525, u"\"Ann Editor\" <ann@example.org>"_s}));
}

// What is said about an account with this address and port.
QString TroubleWith(const QString &address, qint16 port = 25) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPEmail = address;
    profile.session.Prefs.SMTPPort = port;
    return TroubleWithAccount(profile.session);
}

TEST(SendingAccountTest, AnAddressOrAPortThatCannotBeRightIsNamed) {
    EXPECT_EQ(TroubleWith(u"List <list@y.test>"_s),
              u"The e-mail address [List <list@y.test>] of the e-mail sending preferences cannot be right. "
              "Please correct it before anything is sent."_s);
    EXPECT_EQ(TroubleWith(u"ann@x.test"_s, 0),
              u"The SMTP port [0] of the e-mail sending preferences cannot be right. Please correct it "
              "before anything is sent."_s);
    for (const QString &address : {u"ann@x.test "_s, u"ann x@x.test"_s, u"<ann@x.test"_s, u"ann@x.test>"_s,
                                   u"ann\t@x.test"_s, u"ann@x.test\x7F"_s})
        EXPECT_NE(TroubleWith(address), QString()) << address.toStdString();
    EXPECT_NE(TroubleWith(u"ann@x.test"_s, -1), QString());
}

TEST(SendingAccountTest, WhatCouldBeRightIsLeftToTheServer) {
    for (const QString &address : {u"ann@x.test"_s, u"jürgen@exämple.org"_s, u"ann"_s, QString()})
        EXPECT_EQ(TroubleWith(address), QString()) << address.toStdString();
    EXPECT_EQ(TroubleWith(u"ann@x.test"_s, 1), QString());
}

} // namespace
} // namespace varlo
