// What the Preferences window stores, holds and refuses.

#include "prefs/OptionsFixture.h"

namespace varlo::test {
namespace {

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
    const QString odd = u"  Grüße\u00A0an\\n\\n  <b>ゑ</b> & \U0001F600\\n\ttab\\nend "_s;
    const QString subject = u"\"<i>Ünlü</i> &amp; \\ 'q'\""_s;
    session.Prefs.UnsubBody = odd;
    session.Prefs.SubSubject = subject;
    frmOptions window(session);
    EXPECT_EQ(Line(window, "txtNotifySubSubject")->text(), subject);
    Click(window, "cmdOK");
    session.Prefs.UnsubBody = session.Prefs.SubSubject = u"other"_s;
    LoadSettings();
    EXPECT_EQ(session.Prefs.UnsubBody, odd);
    EXPECT_EQ(session.Prefs.SubSubject, subject);
}

// File, memory and window, there and back, for each setting that the window has.
TEST_F(frmOptionsTest, EverySettingGoesFromTheFileThroughTheWindowIntoFileAndMemory) {
    for (const KnownSetting &known : StoredSettings()) {
        const QString sample = QString::fromUtf8(known.Sample);
        session.Prefs = Settings::Defaults();
        Profile.Write(u"prefs.ini"_s,
                      QByteArray("[") + known.Section + "]\r\n" + known.Key + "=" + known.Sample + "\r\n");
        LoadSettings();
        frmOptions window(session);
        EXPECT_EQ(Content(window, known.Control), sample) << known.Control;
        SetContent(window, known.Control, QString::fromUtf8(known.Default));
        SetContent(window, known.Control, sample);
        QFile::remove(Profile.Path(u"prefs.ini"_s));
        session.Prefs = Settings::Defaults();
        Click(window, "cmdOK");
        EXPECT_EQ(Stored(known.Section, known.Key), sample) << known.Key;
        EXPECT_EQ(Held(known), sample) << known.Key << " in memory";
    }
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(frmOptionsTest, OkWithoutAChangeStoresWhatWasThere) {
    for (const KnownSetting &known : StoredSettings()) {
        session.INI.SetSection(QString::fromLatin1(known.Section));
        session.INI.Values(QString::fromLatin1(known.Key), QString::fromUtf8(known.Sample));
    }
    LoadSettings();
    const QByteArray before = Profile.Read(u"prefs.ini"_s);
    frmOptions window(session);
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), before);
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
    const QByteArray file = Profile.Read(u"prefs.ini"_s);
    EXPECT_TRUE(file.startsWith("[General]\r\nLogStatus=1\r\nLogEmails=1\r\nNotify=1\r\n"));
    EXPECT_EQ(file.count('['), 1) << "no other section";
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

// The report names no field, but all that comes before the port is taken, and General is stored.
TEST_F(frmOptionsTest, SmtpPortThatIsNoNumberLeavesTheGeneralSectionStored) {
    frmOptions window(session);
    for (const KnownSetting &known : StoredSettings())
        SetContent(window, known.Control, QString::fromUtf8(known.Sample));
    SetContent(window, "txtSMTPPort", u"smtp"_s);
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), SampleFile("General"));
    EXPECT_EQ(session.Prefs.Notify, 1);
    EXPECT_EQ(session.Prefs.LogStatus, 0);
    EXPECT_EQ(session.Prefs.SMTPServer, u"smtp.example.org"_s) << "set before the port";
    EXPECT_EQ(session.Prefs.SMTPPort, 25);
    EXPECT_EQ(session.Prefs.SMTPFrom, QString()) << "comes after the port";
}

TEST_F(frmOptionsTest, WrapColumnPast16BitsLeavesTheGeneralSectionStored) {
    frmOptions window(session);
    for (const KnownSetting &known : StoredSettings())
        SetContent(window, known.Control, QString::fromUtf8(known.Sample));
    SetContent(window, "txtSMTPWrap", u"32768"_s);
    Click(window, "cmdOK");
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), SampleFile("General"));
    EXPECT_EQ(session.Prefs.SMTPEmail, u"joerg@example.org"_s) << "set before the column";
    EXPECT_EQ(session.Prefs.SMTPWrap, 72);
    EXPECT_EQ(session.Prefs.SubSubject, Settings::Defaults().SubSubject) << "comes after the column";
}

TEST_F(frmOptionsTest, CancelAfterAFailedOkLeavesNothingHalfChanged) {
    session.Prefs.SMTPServer = u"kept.example.org"_s;
    const Preferences before = session.Prefs;
    for (const char *leave : {"Cancel", "Escape"}) {
        frmOptions window(session);
        Show(window);
        for (int tries = 0; tries < 2; ++tries) {
            SetContent(window, "txtSMTPServer", u"new%1.example.org"_s.arg(tries));
            SetContent(window, "txtSMTPPort", u"smtp"_s);
            Click(window, "cmdOK");
            EXPECT_TRUE(window.isVisible());
        }
        if (*leave == 'C')
            Click(window, "cmdCancel");
        else
            QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_EQ(session.Prefs, before) << leave;
        EXPECT_EQ(Stored("SMTP", "SMTPServer"), u"(none)"_s);
    }
}

TEST_F(frmOptionsTest, OkThatCannotWriteSaysSoAndStaysOpen) {
    session.INI.SetFile(Profile.Path(u"no such folder/prefs.ini"_s));
    const Preferences before = session.Prefs;
    frmOptions window(session);
    Show(window);
    SetContent(window, "txtSMTPServer", u"new.example.org"_s);
    SetContent(window, "chkNotify", u"1"_s);
    Click(window, "cmdOK");
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(Profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 76 in Prefs.Save"_s);
    EXPECT_TRUE(Profile.Boxes.Shown[0].Text.contains(u"The settings could not be written to "_s));
    EXPECT_EQ(session.Prefs, before);
    EXPECT_EQ(Line(window, "txtSMTPServer")->text(), u"new.example.org"_s);

    session.INI.SetFile(Profile.Path(u"prefs.ini"_s));
    Click(window, "cmdOK");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(session.Prefs.SMTPServer, u"new.example.org"_s);
}

TEST_F(frmOptionsTest, BlanksAroundATextAreNeitherStoredNorUsed) {
    for (const KnownSetting &known : StoredSettings()) {
        if (qstrcmp(known.Kind, "text") != 0 || qstrcmp(known.Key, "POPPassword") == 0 ||
            qstrcmp(known.Key, "SMTPPassword") == 0)
            continue;
        frmOptions window(session);
        if (!window.findChild<QLineEdit *>(QString::fromLatin1(known.Control)))
            continue;
        SetContent(window, known.Control, u" \tme@x.test "_s);
        Click(window, "cmdOK");
        EXPECT_EQ(Stored(known.Section, known.Key), u"me@x.test"_s) << known.Control;
        EXPECT_EQ(Held(known), u"me@x.test"_s) << known.Control;
    }
}

TEST_F(frmOptionsTest, APasswordComesBackAsItWasTyped) {
    for (const char *password : {" secret ", "\"secret\"", "'s'", " ", "\""}) {
        {
            frmOptions window(session);
            SetContent(window, "txtPOPPassword", QString::fromLatin1(password));
            Click(window, "cmdOK");
        }
        EXPECT_EQ(session.AllSettings.Read(&Preferences::POPPassword), QString::fromLatin1(password));
        EXPECT_EQ(Content(frmOptions(session), "txtPOPPassword"), QString::fromLatin1(password));
    }
}

TEST_F(frmOptionsTest, ATextThatWouldNotComeBackWholeIsRefusedBeforeAnythingIsStored) {
    for (const char *name : {"txtSMTPServer", "txtPOPPassword", "txtNotifyUnsubBody", "txtSignature"}) {
        Profile.Boxes.Shown.clear();
        frmOptions window(session);
        Show(window);
        SetContent(window, name, QString(3072, u'x'));
        Click(window, "cmdOK");
        EXPECT_TRUE(window.isVisible()) << name;
        ASSERT_EQ(Profile.Boxes.Shown.size(), 1U) << name;
        EXPECT_EQ(Profile.Boxes.Shown[0].Text, u"This text is too long to be stored whole: 3,071 characters "
                                               "are kept at most, a line break counts as two. Please "
                                               "shorten it."_s);
        EXPECT_EQ(window.focusWidget()->objectName(), QString::fromLatin1(name));
        EXPECT_FALSE(QFile::exists(Profile.Path(u"prefs.ini"_s))) << name;
        EXPECT_EQ(session.Prefs, Settings::Defaults()) << name;
    }
}

TEST_F(frmOptionsTest, TheLongestTextComesBackWhole) {
    const QString longest = QString(1535, u'x') + u"\\n"_s + QString(1534, u'y'); // 3071
    frmOptions window(session);
    SetContent(window, "txtSignature", longest);
    Click(window, "cmdOK");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_EQ(session.AllSettings.Read(&Preferences::SignatureText), longest);
}

TEST_F(frmOptionsTest, EmptyFieldsAreStoredAsEmptyWithoutAQuestion) {
    frmOptions window(session);
    for (const char *name : {"txtSMTPServer", "txtPOPPort", "txtNotifySubBody"})
        SetContent(window, name, QString());
    Click(window, "cmdOK");
    const QByteArray file = Profile.Read(u"prefs.ini"_s);
    EXPECT_TRUE(file.contains("SMTPServer=\r\n"));
    EXPECT_TRUE(file.contains("POPPort=\r\n"));
    EXPECT_TRUE(file.contains("SubBody=\r\n"));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
    EXPECT_EQ(Content(frmOptions(session), "txtPOPPort"), u"110"_s) << "an empty value reads as the default";
}

TEST_F(frmOptionsTest, RangesAreNotChecked) {
    frmOptions window(session);
    SetContent(window, "txtSMTPPort", u"-1"_s);
    SetContent(window, "txtSMTPWrap", u"0"_s);
    Click(window, "cmdOK");
    EXPECT_EQ(session.Prefs.SMTPPort, -1);
    EXPECT_EQ(session.Prefs.SMTPWrap, 0);
}

TEST_F(frmOptionsTest, SettingsWithACopyInMemoryComeFromThere) {
    Profile.Write(u"prefs.ini"_s,
                  "[General]\r\nNotify=0\r\n[SMTP]\r\nSMTPServer=old.example.org\r\nSMTPPort=1\r\n");
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = u"new.example.org"_s;
    session.Prefs.SMTPPort = 2525;
    const frmOptions window(session);
    EXPECT_EQ(Content(window, "chkNotify"), u"1"_s);
    EXPECT_EQ(Content(window, "txtSMTPServer"), u"new.example.org"_s);
    EXPECT_EQ(Content(window, "txtSMTPPort"), u"2525"_s);
}

TEST_F(frmOptionsTest, StatusLoggingIsReadFromTheGeneralSectionNotFromMain) {
    Profile.Write(u"prefs.ini"_s, "[Main]\r\nLogStatus=1\r\n[General]\r\nLogStatus=0\r\n");
    session.Prefs.LogStatus = 1;
    EXPECT_EQ(Content(frmOptions(session), "chkLogStatus"), u"0"_s);
}

TEST_F(frmOptionsTest, SwitchesThatAreNoNumberAreReportedAndTheRestIsShown) {
    Profile.Write(
        u"prefs.ini"_s,
        "[General]\r\nLogStatus=maybe\r\nLogEmails=0\r\n[POP3]\r\nPOPServer=pop\r\nPOPDeleteAll=x\r\n"
        "[Signature]\r\nText=a\\nb\r\n");
    const frmOptions window(session);
    EXPECT_EQ(Content(window, "chkLogStatus"), u"1"_s);
    EXPECT_EQ(Content(window, "chkLogEmails"), u"0"_s);
    EXPECT_EQ(Content(window, "txtPOPServer"), u"pop"_s);
    EXPECT_EQ(Content(window, "chkPOPDeleteAll"), u"0"_s);
    EXPECT_EQ(Content(window, "txtSignature"), u"a\\nb"_s);
    ASSERT_EQ(Profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Prefs.Load"_s);
    EXPECT_EQ(Profile.Boxes.Shown[1].Title, u"varlo-pro Error 13 in Prefs.Load"_s);
    EXPECT_EQ(Profile.Log(u"ErrorLog.txt"_s).size(), 2);
}

TEST_F(frmOptionsTest, SwitchesOtherThanOneAreOffAsEverywhereInTheProgram) {
    Profile.Write(u"prefs.ini"_s, "[General]\r\nLogStatus=2\r\nLogEmails=-1\r\n");
    session.Prefs.Notify = 7;
    const frmOptions window(session);
    for (const char *name : {"chkLogStatus", "chkLogEmails", "chkNotify"})
        EXPECT_EQ(Content(window, name), u"0"_s) << name;
}

} // namespace
} // namespace varlo::test
