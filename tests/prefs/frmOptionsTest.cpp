#include "prefs/frmOptions.h"

#include "prefs/OptionsFixture.h"

#include <ostream>

namespace varlo::test {
namespace {

// Without the mark of its access key.
QString Caption(const QWidget *control) {
    for (const char *property : {"text", "title"})
        if (const QVariant text = control->property(property); text.isValid())
            return text.toString().remove(u'&');
    return {};
}

// The frames, the descriptions and the buttons below; the fields stand in the table of settings.
TEST_F(frmOptionsTest, EveryCaptionIsToTheLetter) {
    const std::pair<const char *, const char *> kCaptions[] = {
        {"lblFrameTitle_0", "General"},
        {"lblFrameDesc_0", "Miscellaneous settings"},
        {"fraFrame_0", "Pending List Processing"},
        {"fraFrame_1", "Logging"},
        {"lblFrameTitle_1", "E-mail Sending"},
        {"lblFrameDesc_1", "Configure your SMTP e-mail account"},
        {"fraFrame_2", "Account"},
        {"fraFrame_3", "Formatting"},
        {"lblFrameTitle_2", "E-mail Receiving"},
        {"lblFrameDesc_2", "Configure your POP3 e-mail account"},
        {"fraFrame_4", "Account"},
        {"fraFrame_5", "Options"},
        {"lblFrameTitle_3", "E-mail Notification"},
        {"lblFrameDesc_3", "Settings for notifying subscribers by e-mail"},
        {"fraFrame_6", "Subscriptions"},
        {"fraFrame_7", "Unsubscriptions"},
        {"lblFrameTitle_4", "Compose"},
        {"lblFrameDesc_4", "Compose window settings"},
        {"fraFrame_8", "Signature"},
        {"cmdOK", "OK"},
        {"cmdCancel", "Cancel"},
        {"lblTitle", "Varlo Pro"},
    };
    const frmOptions window(session);
    EXPECT_EQ(window.windowTitle(), u"Preferences"_s);
    EXPECT_EQ(window.objectName(), u"frmOptions"_s);
    for (const auto &[name, caption] : kCaptions) {
        const auto *control = Find<QWidget>(window, name);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(Caption(control), QString::fromLatin1(caption)) << name;
    }
}

// A group keeps its number when another is put before it.
TEST_F(frmOptionsTest, EachGroupHoldsItsFields) {
    const std::pair<const char *, QStringList> kGroups[] = {
        {"picFrameCont_0", {u"chkNotify"_s}},
        {"picFrameCont_1", {u"chkLogStatus"_s, u"chkLogEmails"_s, u"cmbMaintenance"_s, u"cmdLogGo"_s}},
        {"picFrameCont_2", {u"txtSMTPServer"_s, u"txtSMTPPort"_s, u"txtSMTPFrom"_s, u"txtSMTPEmail"_s}},
        {"picFrameCont_3", {u"txtSMTPWrap"_s, u"cmdWrapDefault"_s}},
        {"picFrameCont_4", {u"txtPOPServer"_s, u"txtPOPPort"_s, u"txtPOPUsername"_s, u"txtPOPPassword"_s}},
        {"picFrameCont_5", {u"chkPOPDeleteAll"_s}},
        {"picFrameCont_6", {u"txtNotifySubSubject"_s, u"txtNotifySubBody"_s}},
        {"picFrameCont_7", {u"txtNotifyUnsubSubject"_s, u"txtNotifyUnsubBody"_s}},
        {"picFrameCont_8", {u"chkSignatureOn"_s, u"txtSignature"_s}},
    };
    const frmOptions window(session);
    for (const auto &[name, fields] : kGroups)
        for (const QString &field : fields)
            EXPECT_NE(Find<QWidget>(window, name)->findChild<QWidget *>(field), nullptr)
                << name << " lacks " << field.toStdString();
}

TEST_F(frmOptionsTest, EveryFieldHasItsCaptionAndTooltip) {
    const frmOptions window(session);
    QMap<QString, QString> labels;
    bool hasUnit = false;
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (label->buddy())
            labels[label->buddy()->objectName()] = Caption(label);
        hasUnit = hasUnit || label->text() == u"characters per line"_s;
    }
    for (const KnownSetting &known : KnownSettings()) {
        if (known.Page < 0)
            continue;
        const auto *field = Find<QWidget>(window, known.Control);
        ASSERT_NE(field, nullptr);
        const QString label = labels.take(QString::fromLatin1(known.Control));
        EXPECT_EQ(label.isEmpty() ? Caption(field) : label, QString::fromLatin1(known.Caption))
            << known.Control;
        EXPECT_EQ(field->toolTip(), QString::fromLatin1(known.Tip)) << known.Control;
        EXPECT_TRUE(Find<QWidget>(window, qPrintable(u"picFrame_%1"_s.arg(known.Page)))->isAncestorOf(field))
            << known.Control;
    }
    EXPECT_EQ(labels, (QMap<QString, QString>())) << "labels of fields that nobody knows";
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
