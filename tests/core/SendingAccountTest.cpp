#include "core/SendingAccount.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/TrustedServer.h"
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

TEST(SendingAccountTest, EncryptionAndSignInAreThoseOfThePreferences) {
    const QByteArray sha256(32, 'x');
    Preferences values;
    values.SMTPServer = u"mail.example.org"_s;
    values.SMTPPort = 465;
    values.SMTPSecurity = 2;
    values.SMTPUsername = u"ann"_s;
    values.SMTPPassword = u"geheim"_s;
    values.SMTPSignIn = 1;
    values.SMTPTrusted = TrustText(u"MAIL.example.org"_s, sha256);
    values.SMTPUnencrypted = u"other.example.org"_s;
    MailAccount expected{u"mail.example.org"_s, 465, u"\"\" <>"_s};
    expected.Security = MailSecurity::Tls;
    expected.Username = u"ann"_s;
    expected.Secret = u"geheim"_s;
    expected.SignIn = MailSignIn::Token;
    expected.Trusted = sha256;
    EXPECT_EQ(SendingAccount(values), expected);
    values.SMTPUnencrypted = u"Mail.Example.org"_s;
    EXPECT_TRUE(SendingAccount(values).ClearTextAllowed);
    values.SMTPServer = u"new.example.org"_s;
    EXPECT_FALSE(SendingAccount(values).ClearTextAllowed);
    EXPECT_EQ(SendingAccount(values).Trusted, QByteArray());
}

TEST(SendingAccountTest, NumbersThatStandForNothingAreTheFirstChoice) {
    Preferences values;
    for (const int odd : {-1, 3, 99}) {
        values.SMTPSecurity = values.SMTPSignIn = odd;
        EXPECT_EQ(SendingAccount(values).Security, MailSecurity::Automatic);
        EXPECT_EQ(SendingAccount(values).SignIn, MailSignIn::Password);
    }
    values.SMTPSecurity = 1;
    EXPECT_EQ(SendingAccount(values).Security, MailSecurity::StartTls);
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

TEST(SendingAccountTest, UsernameWithoutAPasswordIsNamed) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPUsername = u"ann"_s;
    EXPECT_EQ(TroubleWithAccount(profile.session),
              u"There is no password for the username [ann] of the e-mail sending preferences. Please enter "
              "it before anything is sent."_s);
    profile.session.Prefs.SMTPPassword = u"geheim"_s;
    EXPECT_EQ(TroubleWithAccount(profile.session), QString());
}

TEST(SendingAccountTest, WhatCouldBeRightIsLeftToTheServer) {
    for (const QString &address : {u"ann@x.test"_s, u"jürgen@exämple.org"_s, u"ann"_s, QString()})
        EXPECT_EQ(TroubleWith(address), QString()) << address.toStdString();
    EXPECT_EQ(TroubleWith(u"ann@x.test"_s, 1), QString());
}

} // namespace
} // namespace varlo
