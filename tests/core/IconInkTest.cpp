#include "core/IconInk.h"

#include "core/IconDrawing.h"
#include "core/Icons.h"
#include "core/Literals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace varlo {
namespace {

// The most that a channel of a pixel differs by.
int Difference(const QImage &one, const QImage &other) {
    int most = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            if (qAlpha(a) < 32) // the colour of next to nothing
                continue;
            most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
        }
    return most;
}

TEST(IconInk, TwoDrawingsGiveEveryOther) {
    ASSERT_FALSE(Icon(u"send").isNull()); // which loads the drawings
    const QSize size(96, 96);
    for (const QString &name : {u"send"_s, u"add"_s, u"clipboard"_s, u"varlo-pro"_s}) {
        const QImage black = DrawIcon(name, size, Qt::black);
        const QImage white = DrawIcon(name, size, Qt::white);
        for (const QColor ink : {QColor(0x1c, 0x1c, 0x1c), QColor(0xfc, 0x40, 0x80)})
            EXPECT_LE(Difference(Inked(black, white, ink), DrawIcon(name, size, ink)), 12)
                << name.toStdString();
    }
}

TEST(IconInk, InkShowsOnlyWhereThereIsInk) {
    QImage black(2, 1, QImage::Format_ARGB32_Premultiplied);
    black.setPixel(0, 0, qRgba(0, 0, 0, 255));
    black.setPixel(1, 0, qRgba(47, 158, 95, 255));
    QImage white = black;
    white.setPixel(0, 0, qRgba(255, 255, 255, 255));
    const QImage red = Inked(black, white, Qt::red);
    EXPECT_EQ(red.pixel(0, 0), qRgba(255, 0, 0, 255));
    EXPECT_EQ(red.pixel(1, 0), qRgba(47, 158, 95, 255));
}

TEST(IconInk, DrawingsOfTwoSizesGiveNone) {
    EXPECT_TRUE(Inked(QImage(1, 1, QImage::Format_ARGB32), QImage(), Qt::red).isNull());
}

} // namespace
} // namespace varlo
