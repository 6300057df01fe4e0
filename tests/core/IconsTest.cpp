#include "core/Icons.h"

#include "core/Literals.h"
#include "support/Printers.h"

namespace varlo::test {
namespace {

const QStringList kToolNames{u"new"_s,       u"rename"_s, u"delete"_s,     u"save"_s,      u"search"_s,
                             u"sort"_s,      u"edit"_s,   u"swap"_s,       u"clipboard"_s, u"mailbox"_s,
                             u"add"_s,       u"remove"_s, u"validate"_s,   u"process"_s,   u"attach"_s,
                             u"signature"_s, u"send"_s,   u"draft-open"_s, u"draft-save"_s};

struct IconsTest : testing::Test {
    QPalette Before = QApplication::palette();
    ~IconsTest() override { QApplication::setPalette(Before); }

    static void SetTheme(bool dark) {
        QApplication::setPalette(dark ? QPalette(QColor(0x35, 0x35, 0x38), QColor(0x2b, 0x2b, 0x2e))
                                      : QPalette(QColor(0xef, 0xef, 0xef)));
    }
};

QImage Drawn(const QString &name, QIcon::Mode mode = QIcon::Normal, int size = 48) {
    return Icon(name).pixmap(QSize(size, size), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

// How many pixels are covered by more than a trace.
int Covered(const QImage &picture) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            count += qAlpha(picture.pixel(x, y)) > 64 ? 1 : 0;
    return count;
}

bool HasOpaque(const QImage &picture, QColor colour) {
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == colour)
                return true;
    return false;
}

TEST_F(IconsTest, EveryToolHasADrawingThatStaysInItsSquare) {
    for (const QString &name : kToolNames) {
        const QImage picture = Drawn(name);
        ASSERT_EQ(picture.size(), QSize(48, 48)) << name.toStdString();
        const int covered = Covered(picture);
        EXPECT_GT(covered, 48 * 48 / 20) << name.toStdString();
        EXPECT_LT(covered, 48 * 48 * 2 / 3) << name.toStdString();
        for (int i = 0; i < 48; ++i) {
            EXPECT_LT(qAlpha(picture.pixel(i, 0)) + qAlpha(picture.pixel(i, 47)), 64) << name.toStdString();
            EXPECT_LT(qAlpha(picture.pixel(0, i)) + qAlpha(picture.pixel(47, i)), 64) << name.toStdString();
        }
    }
}

TEST_F(IconsTest, LinesTakeTheTextColourOfTheThemeEvenAfterItChanged) {
    for (const QString &name : kToolNames) {
        const QIcon icon = Icon(name);
        for (const bool dark : {false, true, false}) {
            SetTheme(dark);
            const QColor ink = QApplication::palette().color(QPalette::ButtonText);
            const QImage picture = icon.pixmap(QSize(48, 48), 1.0).toImage();
            EXPECT_TRUE(HasOpaque(picture, ink)) << name.toStdString() << (dark ? " dark" : " light");
        }
    }
}

TEST_F(IconsTest, DisabledIconIsPaler) {
    const auto strongest = [](const QImage &picture) {
        int alpha = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                alpha = qMax(alpha, qAlpha(picture.pixel(x, y)));
        return alpha;
    };
    EXPECT_EQ(strongest(Drawn(u"save"_s)), 255);
    EXPECT_LT(strongest(Drawn(u"save"_s, QIcon::Disabled)), 160);
}

TEST_F(IconsTest, ProgramIconKeepsItsColours) {
    SetTheme(false);
    const QImage light = Drawn(u"varlo-pro"_s);
    SetTheme(true);
    EXPECT_EQ(Drawn(u"varlo-pro"_s), light);
    EXPECT_TRUE(HasOpaque(light, QColor(0xff, 0xff, 0xff)));
}

TEST_F(IconsTest, HighResolutionIsDrawnNotStretched) {
    const QPixmap picture = Icon(u"send").pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(picture.size(), QSize(48, 48));
    EXPECT_EQ(picture.devicePixelRatio(), 2.0);
}

TEST_F(IconsTest, UnknownNameIsANullIcon) {
    EXPECT_TRUE(Icon(u"no such drawing").isNull());
    EXPECT_TRUE(Icon(u"../../etc/passwd").isNull());
    EXPECT_FALSE(Icon(u"save").isNull());
}

// A sheet of all icons for the eye, written when VARLO_PICTURES names a folder.
TEST_F(IconsTest, SheetShowsEveryIconInBothThemes) {
    QImage sheet(20 * 60 + 20, 2 * 110, QImage::Format_RGB32);
    QPainter painter(&sheet);
    for (const bool dark : {false, true}) {
        SetTheme(dark);
        const int top = dark ? 110 : 0;
        painter.fillRect(0, top, sheet.width(), 110, QApplication::palette().window());
        int x = 20;
        for (const QString &name : kToolNames + QStringList(u"varlo-pro"_s)) {
            painter.drawPixmap(x, top + 10, Icon(name).pixmap(QSize(16, 16), 1.0));
            painter.drawPixmap(x + 22, top + 10, Icon(name).pixmap(QSize(16, 16), 1.0, QIcon::Disabled));
            painter.drawPixmap(x, top + 40, Icon(name).pixmap(QSize(48, 48), 1.0));
            x += 60;
        }
    }
    painter.end();
    EXPECT_LT(qGray(sheet.pixel(1, 111)), 80);
    EXPECT_GT(qGray(sheet.pixel(1, 1)), 200);
    const QString folder = qEnvironmentVariable("VARLO_PICTURES");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(sheet.save(QDir(folder).filePath(u"icons.png"_s)));
    }
}

} // namespace
} // namespace varlo::test
