// Where a password may stand: in its own box, in the keyring or the file of the preferences, and nowhere else.

#include "app/frmMain.h"
#include "core/Literals.h"
#include "core/TrustedServer.h"
#include "net/FakeKeyring.h"
#include "pop3/EncryptedMailbox.h"
#include "prefs/frmOptions.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <QCheckBox>
#include <QDirIterator>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

const QString kSmtp = u"Zaubernuss-7"_s;
const QString kPop = u"Goldregen-9"_s;

class SecretsTest : public testing::Test {
protected:
    SecretsTest() {
        profile.Write(u"lists/News.vlo"_s, "ann@x.test\r\n");
        profile.Write(
            u"prefs.ini"_s,
            "[General]\r\nNotify=1\r\n[SMTP]\r\nSMTPServer=mail.test\r\nSMTPFrom=Ed\r\nSMTPEmail=ed@x."
            "test\r\n"
            "SMTPUsername=ed\r\nSMTPPassword=" +
                kSmtp.toUtf8() + "\r\n[POP3]\r\nPOPServer=localhost\r\nPOPUsername=joe\r\nPOPPassword=" +
                kPop.toUtf8() + "\r\nPOPSecurity=1\r\nPOPPort=" + QByteArray::number(mailbox.serverPort()) +
                "\r\nPOPTrusted=" + TrustText(u"localhost"_s, LocalFingerprint()).toUtf8() + "\r\n");
    }
    ~SecretsTest() override { profile.session.AppExiting = true; }

    void Load() {
        window = std::make_unique<frmMain>(
            profile.session,
            [this](const MailAccount &account) {
                Accounts.push_back(account);
                return mailers.Maker()(account);
            },
            Door());
        window->Form_Load();
        Keyring->Answer();
    }
    OptionsDoor Door() {
        return {.SendingTest = {}, .MailboxTest = {}, .AskTrust = {}, .Passwords = &passwords};
    }
    void ChooseKeyring() {
        frmOptions options(profile.session, Door());
        options.findChild<QCheckBox *>(u"chkKeyring"_s)->setChecked(true);
        options.findChild<QPushButton *>(u"cmdOK"_s)->click();
        Keyring->Answer();
    }
    void Click(const char *button) const {
        QCoreApplication::sendPostedEvents();
        window->findChild<QPushButton *>(QString::fromLatin1(button))->click();
    }
    bool UntilStatus(const char *text) {
        return WaitUntil([&] { return !profile.StatusTexts.filter(QString::fromLatin1(text)).isEmpty(); });
    }
    // A check, a notification and the end of the program.
    void Work() {
        Click("cmdAutoAdd");
        EXPECT_TRUE(UntilStatus("POP3 check complete"));
        window->findChild<QLineEdit *>(u"txtAddEmail"_s)->setText(u"new@x.test"_s);
        Click("cmdEmailAdd_0");
        Click("cmdCapturesAdd");
        EXPECT_TRUE(UntilStatus("Pending list processing complete"));
        Click("cmdFileSave");
        window->close();
        EXPECT_TRUE(mailbox.Encrypted.contains("PASS " + kPop.toUtf8()));
        ASSERT_FALSE(Accounts.empty());
        EXPECT_EQ(Accounts.back().Secret, kSmtp);
    }
    // Where one of the passwords stands: the files of the program folder, the console and the boxes.
    QStringList Places() const {
        QStringList places;
        QDirIterator files(profile.Folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            if (bytes.contains(kSmtp.toUtf8()) || bytes.contains(kPop.toUtf8()))
                places << files.fileName();
        }
        const QString shown = profile.ConsoleLines.join(u' ') + profile.Boxes.Texts().join(u' ');
        if (shown.contains(kSmtp) || shown.contains(kPop))
            places << u"shown"_s;
        return places;
    }

    TestProfile profile;
    EncryptedMailbox mailbox;
    FakeMailers mailers;
    std::vector<MailAccount> Accounts;
    std::shared_ptr<FakeKeyring::State> Keyring = std::make_shared<FakeKeyring::State>();
    net::Passwords passwords{profile.session, std::make_unique<FakeKeyring>(Keyring)};
    std::unique_ptr<frmMain> window;
};

TEST_F(SecretsTest, WithoutTheKeyringTheyStandInThePreferencesAlone) {
    Load();
    Work();
    EXPECT_EQ(Places(), QStringList{u"prefs.ini"_s});
}

TEST_F(SecretsTest, WithTheKeyringTheyStandInNoFile) {
    Load();
    ChooseKeyring();
    Work();
    EXPECT_EQ(Places(), QStringList());
    EXPECT_EQ(Keyring->Secrets.size(), 2);
}

TEST_F(SecretsTest, WithTheKeyringTheyAreThereAfterTheNextStart) {
    Load();
    ChooseKeyring();
    profile.session.Prefs.SMTPPassword.clear();
    profile.session.Prefs.POPPassword.clear();
    Load();
    Work();
    EXPECT_EQ(Places(), QStringList());
}

} // namespace
} // namespace varlo::test
