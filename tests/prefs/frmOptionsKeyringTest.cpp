// Passwords between the file of the preferences and the system's keyring.

#include "net/FakeKeyring.h"
#include "prefs/OptionsFixture.h"

namespace varlo::test {
namespace {

using Secrets = QMap<QString, QString>;

struct frmOptionsKeyringTest : frmOptionsTest {
    std::shared_ptr<FakeKeyring::State> Keyring = std::make_shared<FakeKeyring::State>();
    std::unique_ptr<net::Passwords> Passwords =
        std::make_unique<net::Passwords>(session, std::make_unique<FakeKeyring>(Keyring));
    OptionsDoor Door{.SendingTest = {}, .MailboxTest = {}, .AskTrust = {}, .Passwords = Passwords.get()};

    static void TypePasswords(const frmOptions &window) {
        SetContent(window, "txtSMTPPassword", u"first-secret"_s);
        SetContent(window, "txtPOPPassword", u"second-secret"_s);
    }
    // As after the next start of the program.
    void Restart() {
        session.Prefs = Settings::Defaults();
        Passwords = std::make_unique<net::Passwords>(session, std::make_unique<FakeKeyring>(Keyring));
        Door.Passwords = Passwords.get();
        LoadSettings();
        Passwords->Load();
    }
    void StoreInKeyring() {
        frmOptions window(session, Door);
        TypePasswords(window);
        SetContent(window, "chkKeyring", u"1"_s);
        Click(window, "cmdOK");
        Keyring->Answer();
        EXPECT_EQ(window.result(), QDialog::Accepted);
    }
    QByteArray File() const { return Profile.Read(u"prefs.ini"_s); }
    static bool HasASecret(const QByteArray &file) {
        return file.contains("first-secret") || file.contains("second-secret");
    }
};

TEST_F(frmOptionsKeyringTest, PasswordsGoIntoTheKeyringAndNotIntoTheFile) {
    StoreInKeyring();
    EXPECT_EQ(Keyring->Secrets.values(), (QStringList{u"second-secret"_s, u"first-secret"_s}));
    EXPECT_FALSE(HasASecret(File()));
    EXPECT_TRUE(File().contains("Keyring=1\r\n"));
    EXPECT_EQ(session.Prefs.SMTPPassword, u"first-secret"_s);
    EXPECT_EQ(session.AllSettings.Read(&Preferences::POPPassword), u"second-secret"_s);
}

TEST_F(frmOptionsKeyringTest, PasswordsComeBackAtTheNextStart) {
    StoreInKeyring();
    Restart();
    Keyring->Answer();
    const frmOptions window(session, Door);
    EXPECT_EQ(Content(window, "chkKeyring"), u"1"_s);
    EXPECT_EQ(Content(window, "txtSMTPPassword"), u"first-secret"_s);
    EXPECT_EQ(Content(window, "txtPOPPassword"), u"second-secret"_s);
}

TEST_F(frmOptionsKeyringTest, PasswordsThatWereInTheFileLeaveIt) {
    {
        frmOptions window(session, Door);
        TypePasswords(window);
        Click(window, "cmdOK");
    }
    EXPECT_TRUE(HasASecret(File()));
    {
        frmOptions window(session, Door);
        SetContent(window, "chkKeyring", u"1"_s);
        Click(window, "cmdOK");
        EXPECT_TRUE(HasASecret(File())) << "until the keyring has them";
        Keyring->Answer();
    }
    EXPECT_FALSE(HasASecret(File()));
    EXPECT_EQ(Keyring->Secrets.size(), 2);
}

TEST_F(frmOptionsKeyringTest, ClearingTheBoxBringsThemBackIntoTheFile) {
    StoreInKeyring();
    frmOptions window(session, Door);
    SetContent(window, "chkKeyring", u"0"_s);
    Click(window, "cmdOK");
    EXPECT_TRUE(File().contains("SMTPPassword=first-secret\r\n"));
    EXPECT_TRUE(File().contains("POPPassword=second-secret\r\n"));
    Keyring->Answer();
    EXPECT_EQ(Keyring->Secrets, Secrets());
}

TEST_F(frmOptionsKeyringTest, KeyringThatRefusesKeepsTheWindowOpenWithEverythingTyped) {
    Profile.Write(u"prefs.ini"_s, "[POP3]\r\nPOPPassword=second-secret\r\n");
    const QByteArray before = File();
    Keyring->Trouble = u"No keyring"_s;
    frmOptions window(session, Door);
    Show(window);
    SetContent(window, "chkKeyring", u"1"_s);
    SetContent(window, "txtSMTPPassword", u"first-secret"_s);
    Click(window, "cmdOK");
    EXPECT_FALSE(Find<QPushButton>(window, "cmdOK")->isEnabled()) << "until the keyring has answered";
    Keyring->Answer();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(Find<QPushButton>(window, "cmdOK")->isEnabled());
    EXPECT_EQ(Content(window, "txtSMTPPassword"), u"first-secret"_s);
    EXPECT_EQ(
        Profile.Boxes.Texts(),
        QStringList{u"The passwords cannot be put into the system's keyring: No keyring. Nothing was stored; "
                    "everything is as you typed it."_s});
    EXPECT_EQ(File(), before);
    EXPECT_EQ(session.Prefs.Keyring, 0);
}

TEST_F(frmOptionsKeyringTest, CancelWhileTheKeyringAsksStoresNothing) {
    frmOptions window(session, Door);
    SetContent(window, "chkKeyring", u"1"_s);
    Click(window, "cmdOK");
    Click(window, "cmdCancel");
    Keyring->Answer();
    EXPECT_EQ(window.result(), QDialog::Rejected);
    EXPECT_FALSE(QFile::exists(Profile.Path(u"prefs.ini"_s)));
    EXPECT_EQ(session.Prefs.Keyring, 0);
}

TEST_F(frmOptionsKeyringTest, PasswordsThatALockedKeyringDidNotGiveAreNotLost) {
    StoreInKeyring();
    for (const char *box : {"1", "0"}) {
        Restart();
        Keyring->Trouble = u"locked"_s;
        Keyring->Answer();
        frmOptions window(session, Door);
        EXPECT_EQ(Content(window, "txtPOPPassword"), QString());
        Keyring->Trouble.clear();
        SetContent(window, "chkKeyring", QString::fromLatin1(box));
        Click(window, "cmdOK");
        Keyring->Answer();
        EXPECT_EQ(Keyring->Secrets.values(), (QStringList{u"second-secret"_s, u"first-secret"_s})) << box;
    }
}

TEST_F(frmOptionsKeyringTest, NumberThatIsNoneMovesNoPassword) {
    Profile.Write(u"prefs.ini"_s, "[POP3]\r\nPOPPassword=second-secret\r\n");
    frmOptions window(session, Door);
    SetContent(window, "chkKeyring", u"1"_s);
    SetContent(window, "txtSMTPPort", u"smtp"_s);
    Click(window, "cmdOK");
    EXPECT_FALSE(File().contains("Keyring"));
    EXPECT_EQ(session.AllSettings.Read(&Preferences::POPPassword), u"second-secret"_s);
    EXPECT_TRUE(Keyring->Waiting.empty());
}

TEST_F(frmOptionsKeyringTest, WithoutAKeyringThePasswordsStayWhereTheyAre) {
    frmOptions window(session);
    TypePasswords(window);
    SetContent(window, "chkKeyring", u"1"_s);
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Boxes.Texts(),
              QStringList{u"This system has no keyring. The passwords stay where they are."_s});
    EXPECT_FALSE(QFile::exists(Profile.Path(u"prefs.ini"_s)));
}

} // namespace
} // namespace varlo::test
