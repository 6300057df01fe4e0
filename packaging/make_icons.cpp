// A tool of the build: draws an SVG icon as PNG files, for desktops that do not draw SVG themselves.
//
//     make_icons ICON.svg FOLDER SIZE...   writes FOLDER/SIZE.png for each size, in pixels

#include "core/Literals.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

int main(int argc, char **argv) {
    if (argc < 4)
        qFatal("usage: make_icons ICON.svg FOLDER SIZE...");
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid())
        qFatal("cannot read %s", argv[1]);
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    if (!folder.mkpath(u"."_s))
        qFatal("cannot make the folder %s", argv[2]);
    for (int i = 3; i < argc; ++i) {
        const QString size = QString::fromLatin1(argv[i]);
        QImage image(size.toInt(), size.toInt(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawing.render(&painter);
        painter.end();
        if (!image.save(folder.filePath(size + u".png"_s)))
            qFatal("cannot write size %s", argv[i]);
    }
    return 0;
}
