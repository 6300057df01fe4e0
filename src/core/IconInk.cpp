#include "core/IconInk.h"

namespace varlo {

namespace {

// From `dark` to `bright` by so much of 255.
int Between(int dark, int bright, int part) {
    return dark + ((bright - dark) * part + 127) / 255;
}

QRgb Mixed(QRgb dark, QRgb bright, const QColor &ink) {
    return qRgba(Between(qRed(dark), qRed(bright), ink.red()),
                 Between(qGreen(dark), qGreen(bright), ink.green()),
                 Between(qBlue(dark), qBlue(bright), ink.blue()), qAlpha(dark));
}

} // namespace

QImage Inked(const QImage &black, const QImage &white, const QColor &ink) {
    if (black.size() != white.size())
        return {};
    // With the colours weighted by their coverage, as they were painted.
    QImage mixed = black.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage bright = white.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < mixed.height(); ++y)
        for (int x = 0; x < mixed.width(); ++x)
            mixed.setPixel(x, y,
                           Mixed(reinterpret_cast<const QRgb *>(mixed.constScanLine(y))[x],
                                 reinterpret_cast<const QRgb *>(bright.constScanLine(y))[x], ink));
    return mixed;
}

} // namespace varlo
