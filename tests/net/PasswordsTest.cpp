#include "net/Passwords.h"

#include "core/SendingAccount.h"
#include "core/Settings.h"
#include "net/FakeKeyring.h"
#include "net/SystemKeyring.h"
#include "support/Printers.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace varlo::net {

using test::FakeKeyring;
using Secrets = QMap<QString, QString>;

namespace {

class PasswordsTest : public testing::Test {
protected:
    PasswordsTest() {
        Prefs.Keyring = 1;
        Prefs.KeyringName = u"id"_s;
    }
    QString KeepAndAnswer(const Preferences &wanted, bool isWhole) {
        QString told = u"(nothing)"_s;
        passwords->Keep(wanted, isWhole, [&](const QString &trouble) { told = trouble; });
        EXPECT_EQ(told, u"(nothing)"_s) << "no answer from within the call";
        Keyring->Answer();
        return told;
    }
    static Preferences Wanted(const QString &smtp, const QString &pop) {
        Preferences wanted;
        wanted.Keyring = 1;
        wanted.KeyringName = u"id"_s;
        wanted.SMTPPassword = smtp;
        wanted.POPPassword = pop;
        return wanted;
    }

    test::TestProfile Profile;
    Preferences &Prefs = Profile.session.Prefs;
    std::shared_ptr<FakeKeyring::State> Keyring = std::make_shared<FakeKeyring::State>();
    std::unique_ptr<Passwords> passwords =
        std::make_unique<Passwords>(Profile.session, std::make_unique<FakeKeyring>(Keyring));
};

} // namespace

TEST_F(PasswordsTest, AreHeldOnceTheKeyringHasGivenThem) {
    Keyring->Secrets = {{u"id SMTP"_s, u"one"_s}, {u"id POP3"_s, u"two"_s}, {u"other SMTP"_s, u"not this"_s}};
    passwords->Load();
    EXPECT_FALSE(passwords->AreHere());
    EXPECT_EQ(Profile.session.PasswordTrouble(),
              u"The system's keyring has not given the passwords yet. Please unlock it and try again."_s);
    Keyring->Answer();
    EXPECT_TRUE(passwords->AreHere());
    EXPECT_EQ(Profile.session.PasswordTrouble(), QString());
    EXPECT_EQ(Prefs.SMTPPassword, u"one"_s);
    EXPECT_EQ(Profile.session.AllSettings.Read(&Preferences::POPPassword), u"two"_s);
}

TEST_F(PasswordsTest, NothingIsAskedWhileTheFileKeepsThem) {
    Prefs.Keyring = 0;
    passwords->Load();
    EXPECT_TRUE(Keyring->Waiting.empty());
    EXPECT_TRUE(passwords->AreHere());
    EXPECT_EQ(Profile.session.PasswordTrouble(), QString());
}

TEST_F(PasswordsTest, KeyringThatRefusesIsToldAndAskedAgainWhenAPasswordIsNeeded) {
    Keyring->Secrets[u"id SMTP"_s] = u"one"_s;
    Keyring->Trouble = u"The keyring is locked"_s;
    passwords->Load();
    Keyring->Answer();
    Prefs.SMTPUsername = u"ann"_s;
    EXPECT_EQ(
        TroubleWithAccount(Profile.session),
        u"The system's keyring does not give the passwords: The keyring is locked. They are still there. "
        "Unlock the keyring and try again, or enter them in the preferences."_s);
    EXPECT_EQ(Keyring->Waiting.size(), 1U);
    Keyring->Trouble.clear();
    Keyring->Answer();
    EXPECT_EQ(TroubleWithAccount(Profile.session), QString());
    EXPECT_EQ(Prefs.SMTPPassword, u"one"_s);
}

TEST_F(PasswordsTest, ServerThatAsksForNoNameNeedsNoKeyring) {
    Keyring->Trouble = u"locked"_s;
    passwords->Load();
    Keyring->Answer();
    EXPECT_EQ(TroubleWithAccount(Profile.session), QString());
}

TEST_F(PasswordsTest, ArePutIntoTheKeyringAndEmptyOnesTakenOut) {
    EXPECT_EQ(KeepAndAnswer(Wanted(u"one"_s, u"two"_s), true), QString());
    EXPECT_EQ(Keyring->Secrets, (Secrets{{u"id SMTP"_s, u"one"_s}, {u"id POP3"_s, u"two"_s}}));
    EXPECT_EQ(KeepAndAnswer(Wanted(u"new"_s, {}), true), QString());
    EXPECT_EQ(Keyring->Secrets, (Secrets{{u"id SMTP"_s, u"new"_s}}));
}

TEST_F(PasswordsTest, WhatNobodyKnowsStaysInTheKeyring) {
    Keyring->Secrets = {{u"id SMTP"_s, u"one"_s}, {u"id POP3"_s, u"two"_s}};
    EXPECT_EQ(KeepAndAnswer(Wanted({}, u"new"_s), false), QString());
    EXPECT_EQ(Keyring->Secrets, (Secrets{{u"id SMTP"_s, u"one"_s}, {u"id POP3"_s, u"new"_s}}));
}

TEST_F(PasswordsTest, KeyringThatTakesNothingIsTold) {
    Keyring->Trouble = u"No keyring"_s;
    EXPECT_EQ(
        KeepAndAnswer(Wanted(u"one"_s, u"two"_s), true),
        u"The passwords cannot be put into the system's keyring: No keyring. Nothing was stored; everything "
        "is as you typed it."_s);
    EXPECT_EQ(Keyring->Secrets, Secrets());
}

TEST_F(PasswordsTest, AreForgottenByTheirNameAlone) {
    Keyring->Secrets = {{u"id SMTP"_s, u"one"_s}, {u"id POP3"_s, u"two"_s}, {u"other SMTP"_s, u"kept"_s}};
    passwords->Forget(u"id"_s);
    Keyring->Answer();
    EXPECT_EQ(Keyring->Secrets, (Secrets{{u"other SMTP"_s, u"kept"_s}}));
}

TEST_F(PasswordsTest, NameIsMadeOnceAndForEachProfileAnother) {
    Preferences one;
    Preferences other;
    Passwords::Name(one);
    Passwords::Name(other);
    EXPECT_FALSE(one.KeyringName.isEmpty());
    EXPECT_NE(one.KeyringName, other.KeyringName);
    const QString name = one.KeyringName;
    Passwords::Name(one);
    EXPECT_EQ(one.KeyringName, name);
}

TEST_F(PasswordsTest, AnswersAfterTheEndAreForNobody) {
    bool told = false;
    passwords->Load();
    passwords->Keep(Wanted(u"one"_s, {}), true, [&](const QString &) { told = true; });
    passwords.reset();
    Keyring->Answer();
    EXPECT_FALSE(told);
    EXPECT_FALSE(Profile.session.PasswordTrouble);
}

// Here is no desktop, and so no keyring.
TEST(SystemKeyringTest, SystemWithoutAKeyringSaysSo) {
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        GTEST_SKIP() << "there is a session bus, and what lies behind it is not this test's";
    SystemKeyring keyring;
    QString given;
    QString done;
    keyring.Read(u"varlo-pro test"_s, [&](const QString &, const QString &trouble) { given = trouble; });
    keyring.Write(u"varlo-pro test"_s, u"x"_s, [&](const QString &trouble) { done = trouble; });
    EXPECT_EQ(given + done, QString()) << "no answer from within a call";
    EXPECT_TRUE(test::WaitUntil([&] { return !given.isEmpty() && !done.isEmpty(); }));
}

} // namespace varlo::net
