#include "prefs/frmOptions.h"

#include "core/Literals.h"
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
            shown << Find<QWidget>(window, qPrintable(u"picFrame_%1"_s.arg(i)))->isVisible();
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
    EXPECT_EQ(window.windowTitle(), u"Preferences"_s);
    EXPECT_EQ(window.objectName(), u"frmOptions"_s);
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
        hasUnit = hasUnit || label->text() == u"characters per line"_s;
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
    EXPECT_EQ(entries, (QStringList{u"General"_s, u"E-mail Sending"_s, u"E-mail Receiving"_s,
                                    u"E-mail Notification"_s, u"Compose"_s}));
    const auto *maintenance = Find<QComboBox>(window, "cmbMaintenance");
    EXPECT_EQ(maintenance->count(), 4);
    EXPECT_EQ(maintenance->currentText(), u"Open log files folder"_s) << "the harmless one";
}

TEST_F(frmOptionsTest, FontsAreTheWantedOnes) {
    const frmOptions window(session);
    EXPECT_EQ(Find<QLabel>(window, "lblTitle")->font().families().value(0), u"Verdana"_s);
    for (const char *name : {"txtNotifySubBody", "txtNotifyUnsubBody", "txtSignature"}) {
        const QFont font = Find<QPlainTextEdit>(window, name)->font();
        EXPECT_EQ(font.families(), (QStringList{u"Courier New"_s, u"monospace"_s})) << name;
        EXPECT_TRUE(QFontInfo(font).fixedPitch()) << name;
    }
}

TEST_F(frmOptionsTest, PasswordShowsAStarForEachCharacter) {
    const frmOptions window(session);
    QLineEdit *password = Line(window, "txtPOPPassword");
    password->setText(u"sécret"_s);
    EXPECT_EQ(password->displayText(), u"******"_s);
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
    Profile.Write(u"prefs.ini"_s, "[SMTP]\r\nSMTPWrap=40\r\n");
    frmOptions window(session);
    EXPECT_EQ(Line(window, "txtSMTPWrap")->text(), u"40"_s);
    Click(window, "cmdWrapDefault");
    EXPECT_EQ(Line(window, "txtSMTPWrap")->text(), u"72"_s);
    EXPECT_EQ(session.Prefs.SMTPWrap, 40);
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), QByteArray("[SMTP]\r\nSMTPWrap=40\r\n"));
    Click(window, "cmdOK");
    EXPECT_EQ(session.Prefs.SMTPWrap, 72);
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s).contains("SMTPWrap=72\r\n"));
}

TEST_F(frmOptionsTest, BodyOfTwoLinesComesBackAsTwoLines) {
    {
        frmOptions window(session);
        Show(window);
        Find<QListWidget>(window, "lstOptions")->setCurrentRow(3);
        auto *body = Find<QPlainTextEdit>(window, "txtNotifySubBody");
        body->clear();
        QTest::keyClicks(body, u"Hello"_s);
        QTest::keyClick(body, Qt::Key_Return);
        QTest::keyClicks(body, u"again"_s);
        Click(window, "cmdOK");
        EXPECT_EQ(window.result(), QDialog::Accepted);
    }
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s).contains("\r\nSubBody=Hello\\nagain\r\n"));
    EXPECT_EQ(session.Prefs.SubBody, u"Hello\\nagain"_s);
    const frmOptions again(session);
    EXPECT_EQ(Find<QPlainTextEdit>(again, "txtNotifySubBody")->toPlainText(), u"Hello\nagain"_s);
}

TEST_F(frmOptionsTest, TextsComeBackCharacterByCharacter) {
    const QString odd = u"Grüße\u00A0an\r\n\r\n  <b>ゑ</b> & \U0001F600\r\n\ttab\r\nend"_s;
    session.Prefs.UnsubBody = QString(odd).replace(u"\r\n"_s, u"\\n"_s);
    session.Prefs.SubSubject = u"<i>Ünlü</i> &amp; \\ \"q\""_s;
    frmOptions window(session);
    EXPECT_EQ(Line(window, "txtNotifySubSubject")->text(), u"<i>Ünlü</i> &amp; \\ \"q\""_s);
    Click(window, "cmdOK");
    EXPECT_EQ(LoadOptions(session).UnsubBody, odd);
    EXPECT_EQ(LoadOptions(session).SubSubject, u"<i>Ünlü</i> &amp; \\ \"q\""_s);
}

TEST_F(frmOptionsTest, EveryFieldIsFilledAndStoredAsItWas) {
    Options sample;
    sample.Notify = sample.POPDeleteAll = sample.SignatureOn = true;
    sample.LogStatus = sample.LogEmails = false;
    sample.SMTPServer = u"a"_s;
    sample.SMTPPort = u"1"_s;
    sample.SMTPFrom = u"b"_s;
    sample.SMTPEmail = u"c"_s;
    sample.SMTPWrap = u"2"_s;
    sample.POPServer = u"d"_s;
    sample.POPPort = u"e"_s;
    sample.POPUsername = u"f"_s;
    sample.POPPassword = u"g"_s;
    sample.SubSubject = u"h"_s;
    sample.SubBody = u"i\r\ni"_s;
    sample.UnsubSubject = u"j"_s;
    sample.UnsubBody = u"k\r\nk"_s;
    sample.Signature = u"l\r\nl"_s;
    SaveOptions(session, sample);
    frmOptions window(session);
    EXPECT_TRUE(Find<QCheckBox>(window, "chkNotify")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>(window, "chkLogStatus")->isChecked());
    EXPECT_EQ(Line(window, "txtPOPPassword")->text(), u"g"_s);
    EXPECT_EQ(Find<QPlainTextEdit>(window, "txtSignature")->toPlainText(), u"l\nl"_s);
    Options other;
    other.SMTPPort = other.SMTPWrap = u"9"_s;
    SaveOptions(session, other);
    Click(window, "cmdOK");
    EXPECT_TRUE(LoadOptions(session) == sample);
}

TEST_F(frmOptionsTest, CancelLeavesFileAndMemoryUnchanged) {
    const QByteArray before = "[SMTP]\r\nSMTPServer=kept\r\n";
    Profile.Write(u"prefs.ini"_s, before);
    session.Prefs.SMTPServer = u"kept"_s;
    for (const bool byKey : {false, true}) {
        frmOptions window(session);
        Show(window);
        Line(window, "txtSMTPServer")->setText(u"changed"_s);
        Find<QCheckBox>(window, "chkNotify")->setChecked(true);
        Find<QCheckBox>(window, "chkLogStatus")->setChecked(false);
        Find<QPlainTextEdit>(window, "txtSignature")->setPlainText(u"changed"_s);
        if (byKey)
            QTest::keyClick(&window, Qt::Key_Escape);
        else
            Click(window, "cmdCancel");
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.result(), QDialog::Rejected);
    }
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), before);
    EXPECT_EQ(session.Prefs.SMTPServer, u"kept"_s);
    EXPECT_EQ(session.Prefs.Notify, 0);
    EXPECT_EQ(session.Prefs.LogStatus, 1);
}

TEST_F(frmOptionsTest, DeleteAllIsStoredAsOne) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(2);
    Find<QCheckBox>(window, "chkPOPDeleteAll")->click();
    Click(window, "cmdOK");
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s).contains("POPDeleteAll=1\r\n"));
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
    Line(window, "txtSMTPPort")->setText(u"twenty"_s);
    Line(window, "txtPOPServer")->setText(u"pop.example.org"_s);
    Click(window, "cmdOK");
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Unknown"_s);
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s),
              QByteArray("[General]\r\nLogStatus=1\r\nLogEmails=1\r\nNotify=1\r\n"));
    EXPECT_EQ(Line(window, "txtPOPServer")->text(), u"pop.example.org"_s);
    EXPECT_EQ(window.focusWidget(), Line(window, "txtSMTPPort"));
    EXPECT_EQ(Line(window, "txtSMTPPort")->selectedText(), u"twenty"_s);

    QTest::keyClicks(window.focusWidget(), u"26"_s);
    Click(window, "cmdOK");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(session.Prefs.SMTPPort, 26);
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s).contains("POPServer=pop.example.org\r\n"));
}

TEST_F(frmOptionsTest, WrapColumnPast16BitsLeadsTheCaretThere) {
    frmOptions window(session);
    Show(window);
    Line(window, "txtSMTPWrap")->setText(u"40000"_s);
    Click(window, "cmdOK");
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 6 in Unknown"_s);
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
    QTest::keyClicks(wrap, u"-5"_s);
    EXPECT_EQ(wrap->text(), u"-5"_s) << "typing is never refused";
    QTest::keyClick(wrap, Qt::Key_Tab);
    EXPECT_EQ(wrap->text(), u"1"_s);
}

TEST_F(frmOptionsTest, EnterInTheWrapFieldStoresOneInPlaceOfNought) {
    frmOptions window(session);
    Show(window);
    Find<QListWidget>(window, "lstOptions")->setCurrentRow(1);
    QLineEdit *wrap = Line(window, "txtSMTPWrap");
    wrap->setFocus();
    wrap->selectAll();
    QTest::keyClicks(wrap, u"0"_s);
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
    QTest::keyClicks(wrap, u"wide"_s);
    QTest::keyClick(wrap, Qt::Key_Tab);
    EXPECT_EQ(wrap->text(), u"wide"_s);
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(frmOptionsTest, GoRunsTheSelectedFunction) {
    Profile.Write(u"logs/StatusLog.txt"_s, "x");
    frmOptions window(session);
    Click(window, "cmdLogGo");
    EXPECT_EQ(Profile.Boxes.Opened, std::vector<QUrl>{QUrl::fromLocalFile(Profile.Path(u"logs"_s))});
    Find<QComboBox>(window, "cmbMaintenance")->setCurrentText(u"Delete log files"_s);
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Click(window, "cmdLogGo");
    EXPECT_FALSE(QFile::exists(Profile.Path(u"logs/StatusLog.txt"_s)));
    EXPECT_EQ(Profile.Boxes.Texts(),
              (QStringList{u"Are you sure you want to delete all log files?"_s, u"Log files deleted"_s}));
}

TEST_F(frmOptionsTest, SwitchThatCannotBeReadIsReportedAndTheWindowStillOpens) {
    Profile.Write(u"prefs.ini"_s, "[General]\r\nLogEmails=?\r\n[POP3]\r\nPOPServer=pop\r\n");
    const frmOptions window(session);
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Prefs.Load"_s);
    EXPECT_EQ(Line(window, "txtPOPServer")->text(), u"pop"_s);
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
