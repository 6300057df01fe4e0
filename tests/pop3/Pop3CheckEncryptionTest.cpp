// The mail check on an encrypted line: who is trusted, and what is never said in the clear.
#include "core/Settings.h"
#include "core/TrustedServer.h"
#include "pop3/EncryptedMailbox.h"
#include "pop3/Pop3CheckFixture.h"

namespace varlo::test {

namespace {

const QByteArrayList kWholeCheck{"USER joe", "PASS secret", "STAT", "QUIT"};

class Pop3CheckEncryptionTest : public Pop3CheckTest {
protected:
    Pop3CheckEncryptionTest() {
        Set("POPServer", u"localhost"_s);
        Set("POPPort", QString::number(mailbox.serverPort()));
        check = std::make_unique<Pop3Check>(
            profile.session, pending.Door(), [this] { ++PreferencesOpened; }, 1,
            [this](const net::DistrustedServer &asked) {
                Asked.push_back(asked);
                return Trusts;
            });
    }

    void Use(int security) {
        Set("POPSecurity", QString::number(security));
        mailbox.EncryptsAtOnce = security == 2;
    }
    void TrustCertificate(const QByteArray &sha256) { Set("POPTrusted", TrustText(u"localhost"_s, sha256)); }
    QString StoredTrust() { return profile.session.AllSettings.Read(&Preferences::POPTrusted); }

    EncryptedMailbox mailbox;
    std::vector<net::DistrustedServer> Asked;
    bool Trusts = false;
};

} // namespace

TEST_F(Pop3CheckEncryptionTest, StlsComesBeforeTheUserAndTheRestIsEncrypted) {
    Use(1);
    TrustCertificate(LocalFingerprint());
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(mailbox.InTheClear, QByteArrayList{"STLS"});
    EXPECT_EQ(mailbox.Encrypted, kWholeCheck);
    EXPECT_EQ(Console(), Texts({"Connecting to POP3 server", "POP: +OK ready", "Connected to POP3 server",
                                "STLS", "POP: +OK", "The connection is encrypted", "USER joe", "POP: +OK",
                                "PASS ********", "POP: +OK", "STAT", "POP: +OK 0 0", "QUIT", "POP: +OK",
                                "POP3 check complete (no activity)"}));
}

TEST_F(Pop3CheckEncryptionTest, TlsIsEncryptedFromTheFirstByteOnThePortOfThePreferences) {
    Use(2);
    TrustCertificate(LocalFingerprint());
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(mailbox.InTheClear, QByteArrayList());
    EXPECT_EQ(mailbox.Encrypted, kWholeCheck);
}

TEST_F(Pop3CheckEncryptionTest, ServerThatDoesNotKnowStlsIsToldNothing) {
    Use(1);
    mailbox.Script["STLS"] = "-ERR unknown command\r\n";
    check->Start();
    EXPECT_TRUE(UntilBox());
    EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{ReplyBox(u"-ERR unknown command\r\n"_s)});
    EXPECT_EQ(mailbox.InTheClear, QByteArrayList{"STLS"});
    EXPECT_EQ(mailbox.Encrypted, QByteArrayList());
}

TEST_F(Pop3CheckEncryptionTest, CertificateOfNobodyIsShownAndWithoutAYesNothingIsSaid) {
    for (const int security : {1, 2}) {
        Asked.clear();
        profile.Boxes.Shown.clear();
        mailbox.InTheClear.clear();
        Use(security);
        check->Start();
        EXPECT_TRUE(UntilBox()) << security;
        ASSERT_EQ(Asked.size(), 1U);
        EXPECT_EQ(Asked[0].Name, u"localhost"_s);
        EXPECT_EQ(Asked[0].Shown.Sha256, LocalFingerprint());
        EXPECT_FALSE(Asked[0].Why.isEmpty());
        EXPECT_FALSE(Asked[0].IsOther);
        EXPECT_TRUE(profile.Boxes.Shown[0].Text.startsWith(u"POP3 check failed (error 10107 - "_s));
        EXPECT_EQ(mailbox.InTheClear, security == 1 ? QByteArrayList{"STLS"} : QByteArrayList());
        EXPECT_EQ(mailbox.Encrypted, QByteArrayList());
        EXPECT_EQ(StoredTrust(), QString());
    }
}

TEST_F(Pop3CheckEncryptionTest, TrustedCertificateIsStoredWithTheServerAndTheCheckGoesOn) {
    Use(1);
    Trusts = true;
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(Asked.size(), 1U);
    EXPECT_EQ(mailbox.Encrypted, kWholeCheck);
    EXPECT_EQ(StoredTrust(), TrustText(u"localhost"_s, LocalFingerprint()));
    EXPECT_TRUE(
        profile.Read(u"prefs.ini"_s).contains("POPTrusted=" + LocalFingerprint().toHex() + " localhost"));
    check->Start();
    EXPECT_TRUE(UntilComplete(2));
    EXPECT_EQ(Asked.size(), 1U) << "once for a server";
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(Pop3CheckEncryptionTest, AnotherCertificateThanTheTrustedOneIsRefusedAgain) {
    Use(2);
    TrustCertificate(QByteArray(32, 'x'));
    check->Start();
    EXPECT_TRUE(UntilBox());
    ASSERT_EQ(Asked.size(), 1U);
    EXPECT_TRUE(Asked[0].IsOther);
    EXPECT_EQ(mailbox.Encrypted, QByteArrayList());
}

TEST_F(Pop3CheckEncryptionTest, TrustIsForOneServerAlone) {
    Use(2);
    Set("POPTrusted", TrustText(u"other.test"_s, LocalFingerprint()));
    check->Start();
    EXPECT_TRUE(UntilBox());
    EXPECT_EQ(Asked.size(), 1U);
    EXPECT_EQ(mailbox.Encrypted, QByteArrayList());
}

TEST_F(Pop3CheckEncryptionTest, RepliesThatCameBeforeTheHandshakeDoNotCount) {
    Use(1);
    TrustCertificate(LocalFingerprint());
    mailbox.Script["STLS"] = "+OK go\r\n+OK injected\r\n+OK injected\r\n+OK 5 500\r\n";
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(mailbox.Encrypted, kWholeCheck) << "step by step, whatever was said before";
    EXPECT_EQ(profile.StatusTexts.last(), u"POP3 check complete (no activity)"_s);
}

TEST_F(Pop3CheckEncryptionTest, WindowThatIsClosedWhileTheCertificateIsShownEndsTheCheck) {
    Use(1);
    check = std::make_unique<Pop3Check>(
        profile.session, pending.Door(), [] {}, 1,
        [this](const net::DistrustedServer &) {
            check.reset();
            return true;
        });
    check->Start();
    EXPECT_TRUE(Until([this] { return check == nullptr; }));
    test::Settle();
    EXPECT_EQ(mailbox.Encrypted, QByteArrayList());
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(Pop3CheckEncryptionTest, WithoutEncryptionThePortOfThePreferencesDoesNotCount) {
    Use(0);
    EXPECT_EQ(MailboxEndpoint(profile.session.Prefs).Port, 110);
}

} // namespace varlo::test
