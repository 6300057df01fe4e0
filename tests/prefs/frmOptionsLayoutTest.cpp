#include "core/Literals.h"
#include "prefs/frmOptions.h"
#include "support/TestProfile.h"

namespace varlo::test {
namespace {

const QStringList kPageNames{u"general"_s, u"sending"_s, u"receiving"_s, u"notification"_s, u"compose"_s};

QPalette DarkPalette() {
    QPalette dark(QColor(0x35, 0x35, 0x38), QColor(0x2b, 0x2b, 0x2e));
    dark.setColor(QPalette::Base, QColor(0x1f, 0x1f, 0x22));
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
    return dark;
}

struct frmOptionsLayoutTest : testing::Test {
    TestProfile Profile;
    QPalette Light = QApplication::palette();

    frmOptionsLayoutTest() {
        Preferences &prefs = Profile.session.Prefs;
        prefs.SMTPServer = u"smtp.example.org"_s;
        prefs.SMTPFrom = u"Garden Club"_s;
        prefs.SMTPEmail = u"news@garden.example"_s;
        prefs.SubSubject = u"Mailing list subscription notification"_s;
        prefs.SubBody = u"Your e-mail address has been subscribed to our mailing list."_s;
        prefs.UnsubSubject = u"Mailing list unsubscription notification"_s;
        prefs.UnsubBody = u"Your e-mail address has been unsubscribed from our mailing list."_s;
        Profile.Write(u"prefs.ini"_s,
                      "[POP3]\r\nPOPServer=pop.example.org\r\nPOPUsername=garden\r\nPOPPassword=secret12\r\n"
                      "[Signature]\r\nAutoAdd=1\r\nText=-- \\nThe Garden Club\\nhttp://garden.example\r\n");
    }
    ~frmOptionsLayoutTest() override { QApplication::setPalette(Light); }

    static void TurnTo(const frmOptions &window, int page) {
        window.findChild<QListWidget *>()->setCurrentRow(page);
        QApplication::processEvents();
    }

    // Kept for the eye when VARLO_PICTURES names a folder.
    static void Keep(const QImage &picture, const QString &name) {
        const QString folder = qEnvironmentVariable("VARLO_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QDir(folder).filePath(name)));
        }
    }
};

// The visible controls that are given less room than their text needs.
QStringList Clipped(const QWidget &window) {
    QStringList names;
    for (const QWidget *control : window.findChildren<QWidget *>()) {
        const bool hasText = qobject_cast<const QLabel *>(control) ||
                             qobject_cast<const QAbstractButton *>(control) ||
                             qobject_cast<const QComboBox *>(control);
        if (!hasText || !control->isVisible() || control->sizeHint().isEmpty())
            continue;
        if (control->width() < control->sizeHint().width() ||
            control->height() < control->minimumSizeHint().height())
            names << control->objectName();
    }
    return names;
}

int Lightness(const QImage &picture, QPoint point) {
    return QColor(picture.pixel(point * picture.devicePixelRatio())).lightness();
}

TEST_F(frmOptionsLayoutTest, FitsASmallScreenWithNothingCutOff) {
    frmOptions window(Profile.session);
    EXPECT_LE(window.minimumSizeHint().width(), 780);
    EXPECT_LE(window.minimumSizeHint().height(), 540);
    EXPECT_LE(window.size().width(), 780);
    EXPECT_LE(window.size().height(), 540);
    window.show();
    window.resize(window.minimumSizeHint());
    for (int page = 0; page < kPageNames.size(); ++page) {
        TurnTo(window, page);
        EXPECT_EQ(Clipped(window), QStringList()) << kPageNames[page].toStdString();
    }
}

TEST_F(frmOptionsLayoutTest, GrowingGivesTheRoomToTheTexts) {
    frmOptions window(Profile.session);
    window.show();
    TurnTo(window, 4);
    const auto *signature = window.findChild<QPlainTextEdit *>(u"txtSignature"_s);
    const QSize before = signature->size();
    window.resize(window.size() + QSize(200, 150));
    QApplication::processEvents();
    EXPECT_EQ(signature->size(), before + QSize(200, 150));
}

TEST_F(frmOptionsLayoutTest, EveryPageReadsOnLightAndDark) {
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? DarkPalette() : Light);
        frmOptions window(Profile.session);
        window.show();
        for (int page = 0; page < kPageNames.size(); ++page) {
            TurnTo(window, page);
            const QImage picture = window.grab().toImage();
            const auto *band = window.findChild<QWidget *>(u"shpFrameDesc_%1"_s.arg(page));
            const QPoint corner = band->mapTo(&window, QPoint(3, 3));
            EXPECT_EQ(Lightness(picture, corner) < 128, dark) << "the band keeps to the theme";
            Keep(picture, u"options-%1%2.png"_s.arg(kPageNames[page], dark ? u"-dark"_s : QString()));
        }
    }
}

TEST_F(frmOptionsLayoutTest, TabGoesThroughEveryFieldInReadingOrder) {
    const QStringList kOrder[] = {
        {u"chkNotify"_s, u"chkLogStatus"_s, u"chkLogEmails"_s, u"cmbMaintenance"_s, u"cmdLogGo"_s},
        {u"txtSMTPServer"_s, u"txtSMTPPort"_s, u"txtSMTPFrom"_s, u"txtSMTPEmail"_s, u"txtSMTPWrap"_s,
         u"cmdWrapDefault"_s},
        {u"txtPOPServer"_s, u"txtPOPPort"_s, u"txtPOPUsername"_s, u"txtPOPPassword"_s, u"chkPOPDeleteAll"_s},
        {u"txtNotifySubSubject"_s, u"txtNotifySubBody"_s, u"txtNotifyUnsubSubject"_s,
         u"txtNotifyUnsubBody"_s},
        {u"chkSignatureOn"_s, u"txtSignature"_s},
    };
    const QStringList kBottom{u"cmdOK"_s, u"cmdCancel"_s, u"lstOptions"_s};
    frmOptions window(Profile.session);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (int page = 0; page < kPageNames.size(); ++page) {
        TurnTo(window, page);
        window.findChild<QListWidget *>()->setFocus();
        QStringList visited;
        do {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            visited << window.focusWidget()->objectName();
        } while (visited.last() != u"lstOptions"_s && visited.size() < 12);
        EXPECT_EQ(visited, kOrder[page] + kBottom);
    }
}

TEST_F(frmOptionsLayoutTest, AccessKeysAreThereAndDifferWithinAPage) {
    const frmOptions window(Profile.session);
    for (int page = 0; page < kPageNames.size(); ++page) {
        const auto *frame = window.findChild<QWidget *>(u"picFrame_%1"_s.arg(page));
        QList<QKeySequence> keys;
        for (const QWidget *control : frame->findChildren<QWidget *>()) {
            const auto *label = qobject_cast<const QLabel *>(control);
            if (!qobject_cast<const QCheckBox *>(control) && !(label && label->buddy()))
                continue;
            const auto key = QKeySequence::mnemonic(control->property("text").toString());
            EXPECT_FALSE(key.isEmpty()) << control->property("text").toString().toStdString();
            EXPECT_FALSE(keys.contains(key)) << control->property("text").toString().toStdString();
            keys << key;
        }
        EXPECT_GE(keys.size(), 2);
    }
}

TEST_F(frmOptionsLayoutTest, AccessKeyOfALabelLeadsToItsField) {
    frmOptions window(Profile.session);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    TurnTo(window, 3);
    QTest::keyClick(&window, Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(window.focusWidget()->objectName(), u"txtNotifyUnsubBody"_s);
}

} // namespace
} // namespace varlo::test
