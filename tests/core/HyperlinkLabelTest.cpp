#include "core/HyperlinkLabel.h"

#include "core/Literals.h"
#include "support/Printers.h"

namespace varlo::test {
namespace {

struct HyperlinkLabelTest : testing::Test {
    QPalette Before = QApplication::palette();
    HyperlinkLabel Link{u"<b>here</b>"_s};
    QSignalSpy Clicks{&Link, &HyperlinkLabel::Clicked};

    HyperlinkLabelTest() { Link.show(); }
    ~HyperlinkLabelTest() override { QApplication::setPalette(Before); }

    QColor Colour() const { return Link.palette().color(QPalette::WindowText); }
};

TEST_F(HyperlinkLabelTest, TextIsRedWhileTheButtonIsDownAndRestoredOnRelease) {
    const QColor resting = Colour();
    EXPECT_NE(resting, QColor(255, 0, 0));
    QTest::mousePress(&Link, Qt::LeftButton);
    EXPECT_EQ(Colour(), QColor(255, 0, 0));
    QTest::mouseRelease(&Link, Qt::LeftButton);
    EXPECT_EQ(Colour(), resting);
    EXPECT_EQ(Clicks.count(), 1);
}

TEST_F(HyperlinkLabelTest, ReleaseElsewhereRestoresTheColourWithoutAClick) {
    const QColor resting = Colour();
    QTest::mousePress(&Link, Qt::LeftButton);
    QTest::mouseRelease(&Link, Qt::LeftButton, {}, QPoint(-20, -20));
    EXPECT_EQ(Colour(), resting);
    EXPECT_EQ(Clicks.count(), 0);
}

TEST_F(HyperlinkLabelTest, OtherButtonsDoNothing) {
    const QColor resting = Colour();
    QTest::mousePress(&Link, Qt::RightButton);
    EXPECT_EQ(Colour(), resting);
    QTest::mouseRelease(&Link, Qt::RightButton);
    EXPECT_EQ(Clicks.count(), 0);
}

TEST_F(HyperlinkLabelTest, EnterAndSpaceAreClicks) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A})
        QTest::keyClick(&Link, key);
    EXPECT_EQ(Clicks.count(), 3);
    EXPECT_EQ(Link.focusPolicy(), Qt::StrongFocus);
}

TEST_F(HyperlinkLabelTest, ColourFollowsAChangeOfTheme) {
    QApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
    const QColor onLight = Colour();
    QApplication::setPalette(QPalette(QColor(0x35, 0x35, 0x38), QColor(0x2b, 0x2b, 0x2e)));
    QApplication::processEvents(); // the new palette is handed on by an event
    const QColor onDark = Colour();
    EXPECT_LT(onLight.lightness(), 110);
    EXPECT_GT(onDark.lightness(), 160);
}

TEST_F(HyperlinkLabelTest, MarkupIsShownAsItStands) {
    EXPECT_EQ(Link.textFormat(), Qt::PlainText);
    EXPECT_EQ(Link.text(), u"<b>here</b>"_s);
}

} // namespace
} // namespace varlo::test
