// Encryption, its ports, and the tests of the accounts.

#include "core/TrustedServer.h"
#include "net/FakeServerTest.h"
#include "net/frmServerTest.h"
#include "prefs/OptionsFixture.h"

#include <QPointer>

namespace varlo::test {
namespace {

struct frmOptionsAccountTest : frmOptionsTest {
    OptionsDoor Door{.SendingTest = [this](const Preferences &typed) { return Make(typed); },
                     .MailboxTest = [this](const Preferences &typed) { return Make(typed); },
                     .AskTrust =
                         [this](const net::DistrustedServer &server) {
                             Asked.push_back(server);
                             return true;
                         }};

    std::unique_ptr<net::ServerTest> Make(const Preferences &typed) {
        Typed.push_back(typed);
        auto made = std::make_unique<FakeServerTest>();
        Last = made.get();
        return made;
    }
    // As the operator does it with the keys.
    static void Choose(const frmOptions &window, const char *name, int row) {
        auto *choice = Find<QComboBox>(window, name);
        while (choice->currentIndex() != row)
            QTest::keyClick(choice, choice->currentIndex() < row ? Qt::Key_Down : Qt::Key_Up);
    }
    static frmServerTest *TestWindow(const frmOptions &window) { return window.findChild<frmServerTest *>(); }

    std::vector<Preferences> Typed;
    std::vector<net::DistrustedServer> Asked;
    FakeServerTest *Last = nullptr;
};

struct Suggestion {
    const char *Choice;
    const char *Port;
    QStringList Ports; // of the entries
};

const Suggestion kSuggestions[] = {
    {"cmbPOPSecurity", "txtPOPPort", {u"110"_s, u"110"_s, u"995"_s}},
    {"cmbSMTPSecurity", "txtSMTPPort", {u"25"_s, u"587"_s, u"465"_s}},
};

TEST_F(frmOptionsAccountTest, ChoosingAnEntrySuggestsItsPort) {
    for (const Suggestion &known : kSuggestions) {
        const frmOptions window(session);
        for (const int row : {1, 2, 1, 0, 2, 0}) {
            Choose(window, known.Choice, row);
            EXPECT_EQ(Line(window, known.Port)->text(), known.Ports[row]) << known.Choice << row;
        }
    }
}

TEST_F(frmOptionsAccountTest, PortThatTheOperatorChangedStays) {
    for (const Suggestion &known : kSuggestions) {
        const frmOptions window(session);
        SetContent(window, known.Port, u"2525"_s);
        for (const int row : {1, 2, 0}) {
            Choose(window, known.Choice, row);
            EXPECT_EQ(Line(window, known.Port)->text(), u"2525"_s) << known.Choice << row;
        }
    }
}

TEST_F(frmOptionsAccountTest, OpeningTheWindowChangesNoPort) {
    Profile.Write(u"prefs.ini"_s, "[POP3]\r\nPOPSecurity=2\r\nPOPPort=110\r\n");
    const frmOptions window(session);
    EXPECT_EQ(Content(window, "cmbPOPSecurity"), u"2"_s);
    EXPECT_EQ(Line(window, "txtPOPPort")->text(), u"110"_s);
}

TEST_F(frmOptionsAccountTest, NumberThatIsNoEntryShowsTheFirst) {
    for (const char *odd : {"-1", "3", "99"}) {
        Profile.Write(u"prefs.ini"_s, QByteArray("[POP3]\r\nPOPSecurity=") + odd + "\r\n");
        EXPECT_EQ(Content(frmOptions(session), "cmbPOPSecurity"), u"0"_s) << odd;
    }
}

TEST_F(frmOptionsAccountTest, EntriesAreInTheirOrder) {
    const frmOptions window(session);
    const auto entries = [&](const char *name) {
        QStringList texts;
        const auto *choice = Find<QComboBox>(window, name);
        for (int row = 0; row < choice->count(); ++row)
            texts << choice->itemText(row);
        return texts;
    };
    EXPECT_EQ(entries("cmbPOPSecurity"), (QStringList{u"None"_s, u"STLS"_s, u"TLS"_s}));
    EXPECT_EQ(entries("cmbSMTPSecurity"), (QStringList{u"Automatic"_s, u"STARTTLS"_s, u"TLS"_s}));
    EXPECT_EQ(entries("cmbSMTPSignIn"), (QStringList{u"Password"_s, u"Token"_s}));
}

TEST_F(frmOptionsAccountTest, TestIsOfWhatIsTypedAndStoresNothing) {
    const frmOptions window(session, Door);
    SetContent(window, "txtPOPServer", u"pop.test"_s);
    SetContent(window, "txtPOPPassword", u"new"_s);
    Click(window, "cmdPOPTest");
    ASSERT_EQ(Typed.size(), 1U);
    EXPECT_EQ(Typed[0].POPServer, u"pop.test"_s);
    EXPECT_EQ(Typed[0].POPPassword, u"new"_s);
    EXPECT_TRUE(Last->Started);
    EXPECT_EQ(TestWindow(window)->windowTitle(), u"Test of [pop.test]"_s);
    EXPECT_FALSE(QFile::exists(Profile.Path(u"prefs.ini"_s)));
    EXPECT_EQ(session.Prefs, Settings::Defaults());
}

TEST_F(frmOptionsAccountTest, TestOfTheSendingAccountIsOfWhatIsTyped) {
    const frmOptions window(session, Door);
    SetContent(window, "txtSMTPServer", u"mail.test"_s);
    SetContent(window, "txtSMTPUsername", u"ann"_s);
    SetContent(window, "cmbSMTPSecurity", u"2"_s);
    Click(window, "cmdSMTPTest");
    ASSERT_EQ(Typed.size(), 1U);
    EXPECT_EQ(Typed[0].SMTPServer, u"mail.test"_s);
    EXPECT_EQ(Typed[0].SMTPUsername, u"ann"_s);
    EXPECT_EQ(Typed[0].SMTPSecurity, 2);
}

TEST_F(frmOptionsAccountTest, PortThatIsNoNumberIsCorrectedBeforeTheTest) {
    const frmOptions window(session, Door);
    SetContent(window, "txtSMTPPort", u"smtp"_s);
    Click(window, "cmdSMTPTest");
    EXPECT_TRUE(Typed.empty());
    EXPECT_EQ(Profile.Boxes.Texts(),
              QStringList{u"This is not a number. Please correct it before the test."_s});
    SetContent(window, "txtSMTPPort", u"25"_s);
    Click(window, "cmdPOPTest");
    EXPECT_EQ(Typed.size(), 1U);
}

TEST_F(frmOptionsAccountTest, LineWithoutEncryptionIsAllowedForThisServer) {
    const frmOptions window(session, Door);
    SetContent(window, "txtSMTPServer", u" mail.test"_s);
    Click(window, "cmdSMTPTest");
    Last->End({u"The server does not encrypt."_s, std::nullopt, true});
    TestWindow(window)->findChild<QPushButton *>(u"cmdAllow"_s)->click();
    ASSERT_EQ(Typed.size(), 2U);
    EXPECT_EQ(Typed[1].SMTPUnencrypted, u"mail.test"_s);
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), QByteArray("[SMTP]\r\nSMTPUnencrypted=mail.test\r\n"));
}

TEST_F(frmOptionsAccountTest, PasswordOfTheSendingAccountIsShownAsStarsAndComesBackAsTyped) {
    for (const char *password : {" secret ", "\"secret\"", "'"}) {
        frmOptions window(session);
        SetContent(window, "txtSMTPPassword", QString::fromLatin1(password));
        EXPECT_EQ(Line(window, "txtSMTPPassword")->displayText(),
                  QString(u'*').repeated(static_cast<qsizetype>(qstrlen(password))));
        Click(window, "cmdOK");
        LoadSettings();
        EXPECT_EQ(session.Prefs.SMTPPassword, QString::fromLatin1(password));
    }
}

TEST_F(frmOptionsAccountTest, TestWindowCanBeClosedAtAnyTime) {
    const frmOptions window(session, Door);
    Click(window, "cmdPOPTest");
    const QPointer<frmServerTest> shown = TestWindow(window);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->windowModality(), Qt::WindowModal);
    Last->Connect();
    shown->close();
    QTest::qWait(0);
    EXPECT_TRUE(shown.isNull());
    EXPECT_EQ(FakeServerTest::Alive, 0);
}

TEST_F(frmOptionsAccountTest, TrustedCertificateIsStoredAtOnceWithTheServersName) {
    Profile.Write(u"prefs.ini"_s, "[POP3]\r\nPOPServer=kept\r\n");
    frmOptions window(session, Door);
    SetContent(window, "txtPOPServer", u"pop.test"_s);
    Click(window, "cmdPOPTest");
    Last->End({u"It is self-signed."_s, SomeCertificate()});
    TestWindow(window)->findChild<QPushButton *>(u"cmdTrust"_s)->click();
    ASSERT_EQ(Asked.size(), 1U);
    EXPECT_EQ(Asked[0].Name, u"pop.test"_s);
    EXPECT_FALSE(Asked[0].IsOther);
    const QString trust = TrustText(u"pop.test"_s, SomeCertificate().Sha256);
    EXPECT_EQ(Typed.back().POPTrusted, trust) << "the next test is made with it";
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s),
              "[POP3]\r\nPOPServer=kept\r\nPOPTrusted=" + trust.toUtf8() + "\r\n");
    window.reject();
    EXPECT_EQ(session.Prefs.POPTrusted, trust) << "whatever becomes of the rest";
}

TEST_F(frmOptionsAccountTest, TrustGivenAfterAFailedOkOutlivesCancel) {
    frmOptions window(session, Door);
    SetContent(window, "txtPOPServer", u"pop.test"_s);
    SetContent(window, "txtSMTPPort", u"none"_s);
    Click(window, "cmdOK");
    Click(window, "cmdPOPTest");
    Last->End({u"It is self-signed."_s, SomeCertificate()});
    TestWindow(window)->findChild<QPushButton *>(u"cmdTrust"_s)->click();
    window.reject();
    EXPECT_EQ(session.Prefs.POPTrusted, TrustText(u"pop.test"_s, SomeCertificate().Sha256));
}

TEST_F(frmOptionsAccountTest, ChangedCertificateIsSaidToBeOne) {
    session.Prefs.POPTrusted = TrustText(u"pop.test"_s, QByteArray(32, 'x'));
    const frmOptions window(session, Door);
    SetContent(window, "txtPOPServer", u"pop.test"_s);
    Click(window, "cmdPOPTest");
    Last->End({u"It is self-signed."_s, SomeCertificate()});
    TestWindow(window)->findChild<QPushButton *>(u"cmdTrust"_s)->click();
    EXPECT_TRUE(Asked.at(0).IsOther);
}

} // namespace
} // namespace varlo::test
