#include "prefs/frmOptions.h"

#include "prefs/OptionsStore.h"
#include "support/TestProfile.h"

#include <ostream>

namespace varlo::test {
namespace {

struct frmOptionsTest : testing::Test {
    TestProfile Profile;
    Session &session = Profile.session;

    template<typename Control> static Control *Find(const frmOptions &window, const char *name) {
        auto *control = window.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void Click(const frmOptions &window, const char *name) {
        QTest::mouseClick(Find<QAbstractButton>(window, name), Qt::LeftButton);
    }
    static QLineEdit *Line(const frmOptions &window, const char *name) {
        return Find<QLineEdit>(window, name);
    }

    static QList<bool> PagesShown(const frmOptions &window) {
        QList<bool> shown;
        for (int i = 0; i < 5; ++i)
            shown << Find<QWidget>(window, qPrintable(QStringLiteral("picFrame_%1").arg(i)))->isVisible();
        return shown;
    }
    static void Show(frmOptions &window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
};

// What is seen of a control: caption without the mark of its access key, tooltip.
struct Seen {
    const char *Name;
    const char *Caption;
    const char *Tip;
};

QString Caption(const QWidget *control) {
    for (const char *property : {"text", "title"})
        if (const QVariant text = control->property(property); text.isValid())
            return text.toString().remove(u'&');
    return {};
}

TEST_F(frmOptionsTest, EveryCaptionAndTooltipIsToTheLetter) {
    const Seen kSeen[] = {
        {"lblFrameTitle_0", "General", ""},
        {"lblFrameDesc_0", "Miscellaneous settings", ""},
        {"fraFrame_0", "Pending List Processing", ""},
        {"chkNotify", "Enable e-mail notification",
         "Check this box to notify subscribers/unsubscribers via e-mail"},
        {"fraFrame_1", "Logging", ""},
        {"chkLogStatus", "Log status messages", "Log Varlo Pro events to text files"},
        {"chkLogEmails", "Save sent e-mails", "Save all sent messages to text files"},
        {"cmdLogGo", "Go", "Activate the selected maintenance function"},
        {"lblFrameTitle_1", "E-mail Sending", ""},
        {"lblFrameDesc_1", "Configure your SMTP e-mail account", ""},
        {"fraFrame_2", "Account", ""},
        {"txtSMTPServer", "", "Your SMTP server"},
        {"txtSMTPPort", "25", "Your SMTP server"},
        {"txtSMTPFrom", "", "Your name as it will appear on sent messages"},
        {"txtSMTPEmail", "", "Your e-mail address as it will appear on sent messages"},
        {"fraFrame_3", "Formatting", ""},
        {"txtSMTPWrap", "72", ""},
        {"cmdWrapDefault", "Default", "Set default wrap column"},
        {"lblFrameTitle_2", "E-mail Receiving", ""},
        {"lblFrameDesc_2", "Configure your POP3 e-mail account", ""},
        {"fraFrame_4", "Account", ""},
        {"txtPOPServer", "", "Your POP3 server"},
        {"txtPOPPort", "110", "Your SMTP server"},
        {"txtPOPUsername", "", "Your POP3 account username"},
        {"txtPOPPassword", "", "Your POP3 account password"},
        {"fraFrame_5", "Options", ""},
        {"chkPOPDeleteAll", "Delete unrelated messages during POP3 check",
         "Check this box to delete all non-mailing list related messages on the server"},
        {"lblFrameTitle_3", "E-mail Notification", ""},
        {"lblFrameDesc_3", "Settings for notifying subscribers by e-mail", ""},
        {"fraFrame_6", "Subscriptions", ""},
        {"fraFrame_7", "Unsubscriptions", ""},
        {"lblFrameTitle_4", "Compose", ""},
        {"lblFrameDesc_4", "Compose window settings", ""},
        {"fraFrame_8", "Signature", ""},
        {"chkSignatureOn", "Add signature when composing messages",
         "Check this box to automatically add your signature to e-mails"},
        {"cmdOK", "OK", "Save and exit options"},
        {"cmdCancel", "Cancel", "Exit options without saving"},
        {"lblTitle", "Varlo Pro", ""},
    };
    const frmOptions window(session);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Preferences"));
    EXPECT_EQ(window.objectName(), QStringLiteral("frmOptions"));
    for (const Seen &seen : kSeen) {
        const auto *control = Find<QWidget>(window, seen.Name);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(Caption(control), QString::fromLatin1(seen.Caption)) << seen.Name;
        EXPECT_EQ(control->toolTip(), QString::fromLatin1(seen.Tip)) << seen.Name;
    }
}

TEST_F(frmOptionsTest, EveryFieldHasItsLabel) {
    const std::pair<const char *, const char *> kLabels[] = {
        {"cmbMaintenance", "Maintenance:"},
        {"txtSMTPServer", "SMTP server:"},
        {"txtSMTPPort", "Port:"},
        {"txtSMTPFrom", "Your name:"},
        {"txtSMTPEmail", "Your e-mail:"},
        {"txtSMTPWrap", "Wrap messages to"},
        {"txtPOPServer", "POP3 server:"},
        {"txtPOPPort", "Port:"},
        {"txtPOPUsername", "Username:"},
        {"txtPOPPassword", "Password:"},
        {"txtNotifySubSubject", "Subject:"},
        {"txtNotifySubBody", "Body:"},
        {"txtNotifyUnsubSubject", "Subject:"},
        {"txtNotifyUnsubBody", "Body:"},
        {"txtSignature", "Signature text:"},
    };
    const frmOptions window(session);
    QMap<QString, QString> found;
    bool hasUnit = false;
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (label->buddy())
            found[label->buddy()->objectName()] = Caption(label);
        hasUnit = hasUnit || label->text() == QStringLiteral("characters per line");
    }
    QMap<QString, QString> expected;
    for (const auto &[control, caption] : kLabels)
        expected[QString::fromLatin1(control)] = QString::fromLatin1(caption);
    EXPECT_EQ(found, expected);
    EXPECT_TRUE(hasUnit);
}

TEST_F(frmOptionsTest, ChoosersHoldTheirItems) {
    const frmOptions window(session);
    const auto *pages = Find<QListWidget>(window, "lstOptions");
    QStringList entries;
    for (int i = 0; i < pages->count(); ++i)
        entries << pages->item(i)->text();
    EXPECT_EQ(entries, (QStringList{QStringLiteral("General"), QStringLiteral("E-mail Sending"),
                                    QStringLiteral("E-mail Receiving"), QStringLiteral("E-mail Notification"),
                                    QStringLiteral("Compose")}));
    const auto *maintenance = Find<QComboBox>(window, "cmbMaintenance");
    EXPECT_EQ(maintenance->count(), 4);
    EXPECT_EQ(maintenance->currentText(), QStringLiteral("Open log files folder")) << "the harmless one";
}

TEST_F(frmOptionsTest, FontsAreTheWantedOnes) {
    const frmOptions window(session);
    EXPECT_EQ(Find<QLabel>(window, "lblTitle")->font().families().value(0), QStringLiteral("Verdana"));
    for (const char *name : {"txtNotifySubBody", "txtNotifyUnsubBody", "txtSignature"}) {
        const QFont font = Find<QPlainTextEdit>(window, name)->font();
        EXPECT_EQ(font.families(), (QStringList{QStringLiteral("Courier New"), QStringLiteral("monospace")}))
            << name;
        EXPECT_TRUE(QFontInfo(font).fixedPitch()) << name;
    }
}

TEST_F(frmOptionsTest, PasswordShowsAStarForEachCharacter) {
    const frmOptions window(session);
    QLineEdit *password = Line(window, "txtPOPPassword");
    password->setText(QStringLiteral("sécret"));
    EXPECT_EQ(password->displayText(), QStringLiteral("******"));
}

TEST_F(frmOptionsTest, OpensOnTheGeneralPage) {
    frmOptions window(session);
    Show(window);
    EXPECT_EQ(Find<QListWidget>(window, "lstOptions")->currentRow(), 0);
    EXPECT_EQ(PagesShown(window), (QList<bool>{true, false, false, false, false}));
}

TEST_F(frmOptionsTest, SelectingComposeShowsOnlyTheComposePage) {
    frmOptions window(session);
    Show(window);
    auto *pages = Find<QListWidget>(window, "lstOptions");
    QTest::mouseClick(pages->viewport(), Qt::LeftButton, {}, pages->visualItemRect(pages->item(4)).center());
    EXPECT_EQ(PagesShown(window), (QList<bool>{false, false, false, false, true}));
    EXPECT_EQ(Find<QWidget>(window, "picFrame_4")->pos(), Find<QWidget>(window, "picFrame_0")->pos());
}

TEST_F(frmOptionsTest, ArrowKeysTurnThePages) {
    frmOptions window(session);
    Show(window);
    QTest::keyClick(window.focusWidget(), Qt::Key_Down);
    EXPECT_EQ(PagesShown(window), (QList<bool>{false, true, false, false, false}));
}

TEST_F(frmOptionsTest, WrapDefaultIsStoredOnlyByOk) {
    session.Prefs.SMTPWrap = 40;
    Profile.Write(QStringLiteral("prefs.ini"), "[SMTP]\r\nSMTPWrap=40\r\n");
    frmOptions window(session);
    EXPECT_EQ(Line(window, "txtSMTPWrap")->text(), QStringLiteral("40"));
    Click(window, "cmdWrapDefault");
    EXPECT_EQ(Line(window, "txtSMTPWrap")->text(), QStringLiteral("72"));
    EXPECT_EQ(session.Prefs.SMTPWrap, 40);
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")), QByteArray("[SMTP]\r\nSMTPWrap=40\r\n"));
    Click(window, "cmdOK");
    EXPECT_EQ(session.Prefs.SMTPWrap, 72);
    EXPECT_TRUE(Profile.Read(QStringLiteral("prefs.ini")).contains("SMTPWrap=72\r\n"));
}

TEST_F(frmOptionsTest, BodyOfTwoLinesComesBackAsTwoLines) {
    {
        frmOptions window(session);
        Show(window);
        Find<QListWidget>(window, "lstOptions")->setCurrentRow(3);
        auto *body = Find<QPlainTextEdit>(window, "txtNotifySubBody");
        body->clear();
        QTest::keyClicks(body, QStringLiteral("Hello"));
        QTest::keyClick(body, Qt::Key_Return);
        QTest::keyClicks(body, QStringLiteral("again"));
        Click(window, "cmdOK");
        EXPECT_EQ(window.result(), QDialog::Accepted);
    }
    EXPECT_TRUE(Profile.Read(QStringLiteral("prefs.ini")).contains("\r\nSubBody=Hello\\nagain\r\n"));
    EXPECT_EQ(session.Prefs.SubBody, QStringLiteral("Hello\\nagain"));
    const frmOptions again(session);
    EXPECT_EQ(Find<QPlainTextEdit>(again, "txtNotifySubBody")->toPlainText(), QStringLiteral("Hello\nagain"));
}

TEST_F(frmOptionsTest, TextsComeBackCharacterByCharacter) {
    const QString odd = QStringLiteral("Grüße\u00A0an\r\n\r\n  <b>ゑ</b> & \U0001F600\r\n\ttab\r\nend");
    session.Prefs.UnsubBody = QString(odd).replace(QStringLiteral("\r\n"), QStringLiteral("\\n"));
    session.Prefs.SubSubject = QStringLiteral("<i>Ünlü</i> &amp; \\ \"q\"");
    frmOptions window(session);
    EXPECT_EQ(Line(window, "txtNotifySubSubject")->text(), QStringLiteral("<i>Ünlü</i> &amp; \\ \"q\""));
    Click(window, "cmdOK");
    EXPECT_EQ(LoadOptions(session).UnsubBody, odd);
    EXPECT_EQ(LoadOptions(session).SubSubject, QStringLiteral("<i>Ünlü</i> &amp; \\ \"q\""));
}

TEST_F(frmOptionsTest, EveryFieldIsFilledAndStoredAsItWas) {
    Options sample;
    sample.Notify = sample.POPDeleteAll = sample.SignatureOn = true;
    sample.LogStatus = sample.LogEmails = false;
    sample.SMTPServer = QStringLiteral("a");
    sample.SMTPPort = QStringLiteral("1");
    sample.SMTPFrom = QStringLiteral("b");
    sample.SMTPEmail = QStringLiteral("c");
    sample.SMTPWrap = QStringLiteral("2");
    sample.POPServer = QStringLiteral("d");
    sample.POPPort = QStringLiteral("e");
    sample.POPUsername = QStringLiteral("f");
    sample.POPPassword = QStringLiteral("g");
    sample.SubSubject = QStringLiteral("h");
    sample.SubBody = QStringLiteral("i\r\ni");
    sample.UnsubSubject = QStringLiteral("j");
    sample.UnsubBody = QStringLiteral("k\r\nk");
    sample.Signature = QStringLiteral("l\r\nl");
    SaveOptions(session, sample);
    frmOptions window(session);
    EXPECT_TRUE(Find<QCheckBox>(window, "chkNotify")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>(window, "chkLogStatus")->isChecked());
    EXPECT_EQ(Line(window, "txtPOPPassword")->text(), QStringLiteral("g"));
    EXPECT_EQ(Find<QPlainTextEdit>(window, "txtSignature")->toPlainText(), QStringLiteral("l\nl"));
    Options other;
    other.SMTPPort = other.SMTPWrap = QStringLiteral("9");
    SaveOptions(session, other);
    Click(window, "cmdOK");
    EXPECT_TRUE(LoadOptions(session) == sample);
}

TEST_F(frmOptionsTest, CancelLeavesFileAndMemoryUnchanged) {
    const QByteArray before = "[SMTP]\r\nSMTPServer=kept\r\n";
    Profile.Write(QStringLiteral("prefs.ini"), before);
    session.Prefs.SMTPServer = QStringLiteral("kept");
    for (const bool byKey : {false, true}) {
        frmOptions window(session);
        Show(window);
        Line(window, "txtSMTPServer")->setText(QStringLiteral("changed"));
        Find<QCheckBox>(window, "chkNotify")->setChecked(true);
        Find<QCheckBox>(window, "chkLogStatus")->setChecked(false);
        Find<QPlainTextEdit>(window, "txtSignature")->setPlainText(QStringLiteral("changed"));
        if (byKey)
            QTest::keyClick(&window, Qt::Key_Escape);
        else
            Click(window, "cmdCancel");
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.result(), QDialog::Rejected);
    }
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")), before);
    EXPECT_EQ(session.Prefs.SMTPServer, QStringLiteral("kept"));
    EXPECT_EQ(session.Prefs.Notify, 0);
    EXPECT_EQ(session.Prefs.LogStatus, 1);
}

TEST_F(frmOptionsTest, DeleteAllIsStoredAsOne) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(2);
    Find<QCheckBox>(window, "chkPOPDeleteAll")->click();
    Click(window, "cmdOK");
    EXPECT_TRUE(Profile.Read(QStringLiteral("prefs.ini")).contains("POPDeleteAll=1\r\n"));
}

TEST_F(frmOptionsTest, SignatureBoxIsUntickedUntilTheProfileWasSavedOnce) {
    frmOptions window(session);
    EXPECT_FALSE(Find<QCheckBox>(window, "chkSignatureOn")->isChecked());
    Find<QCheckBox>(window, "chkSignatureOn")->setChecked(true);
    Click(window, "cmdOK");
    const frmOptions again(session);
    EXPECT_TRUE(Find<QCheckBox>(again, "chkSignatureOn")->isChecked());
}

TEST_F(frmOptionsTest, PortThatIsNoNumberKeepsTheWindowOpenWithEverythingTyped) {
    frmOptions window(session);
    Show(window);
    Find<QCheckBox>(window, "chkNotify")->setChecked(true);
    Line(window, "txtSMTPPort")->setText(QStringLiteral("twenty"));
    Line(window, "txtPOPServer")->setText(QStringLiteral("pop.example.org"));
    Click(window, "cmdOK");
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 13 in Unknown"));
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")),
              QByteArray("[General]\r\nLogStatus=1\r\nLogEmails=1\r\nNotify=1\r\n"));
    EXPECT_EQ(Line(window, "txtPOPServer")->text(), QStringLiteral("pop.example.org"));
    EXPECT_EQ(window.focusWidget(), Line(window, "txtSMTPPort"));
    EXPECT_EQ(Line(window, "txtSMTPPort")->selectedText(), QStringLiteral("twenty"));

    QTest::keyClicks(window.focusWidget(), QStringLiteral("26"));
    Click(window, "cmdOK");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(session.Prefs.SMTPPort, 26);
    EXPECT_TRUE(Profile.Read(QStringLiteral("prefs.ini")).contains("POPServer=pop.example.org\r\n"));
}

TEST_F(frmOptionsTest, WrapColumnPast16BitsLeadsTheCaretThere) {
    frmOptions window(session);
    Show(window);
    Line(window, "txtSMTPWrap")->setText(QStringLiteral("40000"));
    Click(window, "cmdOK");
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 6 in Unknown"));
    EXPECT_EQ(PagesShown(window), (QList<bool>{false, true, false, false, false}));
    EXPECT_EQ(window.focusWidget(), Line(window, "txtSMTPWrap"));
}

TEST_F(frmOptionsTest, TypedWrapColumnBelowOneBecomesOneWhenTheFieldIsLeft) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(1);
    QLineEdit *wrap = Line(window, "txtSMTPWrap");
    wrap->setFocus();
    wrap->selectAll();
    QTest::keyClicks(wrap, QStringLiteral("-5"));
    EXPECT_EQ(wrap->text(), QStringLiteral("-5")) << "typing is never refused";
    QTest::keyClick(wrap, Qt::Key_Tab);
    EXPECT_EQ(wrap->text(), QStringLiteral("1"));
}

TEST_F(frmOptionsTest, EnterInTheWrapFieldStoresOneInPlaceOfNought) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(1);
    QLineEdit *wrap = Line(window, "txtSMTPWrap");
    wrap->setFocus();
    wrap->selectAll();
    QTest::keyClicks(wrap, QStringLiteral("0"));
    QTest::keyClick(wrap, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible()) << "Enter is OK";
    EXPECT_EQ(session.Prefs.SMTPWrap, 1);
}

TEST_F(frmOptionsTest, LettersInTheWrapFieldAreNotMendedButFail) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(1);
    QLineEdit *wrap = Line(window, "txtSMTPWrap");
    wrap->setFocus();
    wrap->selectAll();
    QTest::keyClicks(wrap, QStringLiteral("wide"));
    QTest::keyClick(wrap, Qt::Key_Tab);
    EXPECT_EQ(wrap->text(), QStringLiteral("wide"));
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(frmOptionsTest, GoRunsTheSelectedFunction) {
    Profile.Write(QStringLiteral("logs/StatusLog.txt"), "x");
    frmOptions window(session);
    Click(window, "cmdLogGo");
    EXPECT_EQ(Profile.Boxes.Opened,
              std::vector<QUrl>{QUrl::fromLocalFile(Profile.Path(QStringLiteral("logs")))});
    Find<QComboBox>(window, "cmbMaintenance")->setCurrentText(QStringLiteral("Delete log files"));
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Click(window, "cmdLogGo");
    EXPECT_FALSE(QFile::exists(Profile.Path(QStringLiteral("logs/StatusLog.txt"))));
    EXPECT_EQ(Profile.Boxes.Texts(),
              (QStringList{QStringLiteral("Are you sure you want to delete all log files?"),
                           QStringLiteral("Log files deleted")}));
}

TEST_F(frmOptionsTest, SwitchThatCannotBeReadIsReportedAndTheWindowStillOpens) {
    Profile.Write(QStringLiteral("prefs.ini"), "[General]\r\nLogEmails=?\r\n[POP3]\r\nPOPServer=pop\r\n");
    const frmOptions window(session);
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 13 in Prefs.Load"));
    EXPECT_EQ(Line(window, "txtPOPServer")->text(), QStringLiteral("pop"));
}

TEST_F(frmOptionsTest, ExecIsModalAndEndsWithOk) {
    frmOptions window(session);
    bool wasModal = false;
    QTimer::singleShot(0, &window, [&] {
        wasModal = QApplication::activeModalWidget() == &window;
        Find<QPushButton>(window, "cmdOK")->click();
    });
    EXPECT_EQ(window.exec(), QDialog::Accepted);
    EXPECT_TRUE(wasModal);
}

} // namespace
} // namespace varlo::test
