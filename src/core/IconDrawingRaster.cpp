// From two pictures each, drawn large when the program was built, where Qt's SVG library is not to be had.

#include "core/IconDrawing.h"
#include "core/IconInk.h"
#include "core/Literals.h"

#include <QFile>
#include <QPainter>

namespace varlo {

namespace {

QString PathOf(const QString &name, const char *ink) {
    return u":/icons/%1-%2.png"_s.arg(name, QString::fromLatin1(ink));
}

} // namespace

bool HasDrawing(const QString &name) {
    return QFile::exists(PathOf(name, "black"));
}

QImage DrawIcon(const QString &name, const QSize &size, const QColor &ink) {
    const QImage drawn = Inked(QImage(PathOf(name, "black")), QImage(PathOf(name, "white")), ink);
    if (drawn.isNull())
        return {};
    const QImage fitting = drawn.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.drawImage((size.width() - fitting.width()) / 2, (size.height() - fitting.height()) / 2, fitting);
    return picture;
}

} // namespace varlo
