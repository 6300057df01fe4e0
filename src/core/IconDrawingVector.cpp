// From SVG files, at any size.

#include "core/IconDrawing.h"
#include "core/Literals.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace varlo {

namespace {

// The ink that the drawings use; it stands for the palette's text colour.
constexpr char kInk[] = "#1c1c1c";

QString PathOf(const QString &name) {
    return u":/icons/%1.svg"_s.arg(name);
}

} // namespace

bool HasDrawing(const QString &name) {
    return QFile::exists(PathOf(name));
}

QImage DrawIcon(const QString &name, const QSize &size, const QColor &ink) {
    QFile file(PathOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QSvgRenderer drawing(file.readAll().replace(kInk, ink.name().toLatin1()));
    drawing.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter, QRectF(QPointF(), size));
    return picture;
}

} // namespace varlo
