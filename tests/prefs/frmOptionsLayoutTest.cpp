#include "core/Literals.h"
#include "core/Preferences.h"
#include "prefs/frmOptions.h"
#include "support/KnownSettings.h"
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

int Lightness(const QImage &picture, QPoint point) {
    return QColor(picture.pixel(point * picture.devicePixelRatio())).lightness();
}

TEST_F(frmOptionsLayoutTest, FitsASmallScreen) {
    const frmOptions window(Profile.session);
    EXPECT_LE(window.minimumSizeHint().width(), 780);
    EXPECT_LE(window.minimumSizeHint().height(), 540);
    EXPECT_LE(window.size().width(), 780);
    EXPECT_LE(window.size().height(), 540);
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
            const QPoint corner = band->mapTo(&window, QPoint(6, 3));
            EXPECT_EQ(Lightness(picture, corner) < 128, dark) << "the band keeps to the theme";
            Keep(picture, u"options-%1%2.png"_s.arg(kPageNames[page], dark ? u"-dark"_s : QString()));
        }
    }
}

TEST_F(frmOptionsLayoutTest, TheDescriptionDoesNotLookLikeAField) {
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? DarkPalette() : Light);
        frmOptions window(Profile.session);
        window.show();
        TurnTo(window, 1);
        const QImage picture = window.grab().toImage();
        const auto colour = [&](const char *name) {
            const auto *part = window.findChild<QWidget *>(QString::fromLatin1(name));
            return picture.pixelColor(part->mapTo(&window, QPoint(part->width() - 6, part->height() - 6)));
        };
        const QColor behind = window.palette().color(QPalette::Window);
        EXPECT_NE(colour("shpFrameDesc_1"), colour("txtSMTPServer")) << dark;
        EXPECT_NE(colour("shpFrameDesc_1"), behind) << "a band is seen";
        EXPECT_LT(std::abs(colour("shpFrameDesc_1").lightness() - behind.lightness()), 40)
            << "the letters of the window are read on it";
    }
}

// Down the page, and from left to right where two stand in one line.
bool IsBefore(const QWidget *first, const QWidget *second) {
    const QRect one(first->mapTo(first->window(), QPoint()), first->size());
    const QRect other(second->mapTo(second->window(), QPoint()), second->size());
    return one.bottom() < other.top() || (one.top() <= other.bottom() && one.left() < other.left());
}

TEST_F(frmOptionsLayoutTest, TabGoesThroughEveryFieldInReadingOrder) {
    frmOptions window(Profile.session);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (int page = 0; page < kPageNames.size(); ++page) {
        TurnTo(window, page);
        window.findChild<QListWidget *>()->setFocus();
        QStringList visited;
        const QWidget *before = nullptr;
        do {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            const QWidget *field = window.focusWidget();
            visited << field->objectName();
            EXPECT_TRUE(!before || visited.last() == u"lstOptions"_s || IsBefore(before, field))
                << field->objectName().toStdString() << " does not follow "
                << before->objectName().toStdString();
            before = field;
        } while (visited.last() != u"lstOptions"_s && visited.size() < 20);
        QStringList expected{u"cmdOK"_s, u"cmdCancel"_s, u"lstOptions"_s};
        for (const KnownSetting &known : KnownSettings())
            if (known.Page == page)
                expected << QString::fromLatin1(known.Control);
        visited.sort();
        expected.sort();
        EXPECT_EQ(visited, expected);
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
