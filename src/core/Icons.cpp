#include "core/Icons.h"

#include "core/Literals.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// Resources of a static library are dropped by the linker unless they are named; the macro needs the global
// namespace.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace varlo {

namespace {

// The ink that the drawings use; it stands for the palette's text colour.
constexpr char kInk[] = "#1c1c1c";

class PaletteIcon : public QIconEngine {
public:
    PaletteIcon(QString name, QByteArray svg) : name_(std::move(name)), svg_(std::move(svg)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override {
        const QSize pixels = rect.size() * painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap(pixels, mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override {
        const QString key = u"varlo-icon %1 %2x%3 %4 %5"_s.arg(name_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode)
                                .arg(Ink(mode).rgb());
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
            picture = Draw(size, mode);
            QPixmapCache::insert(key, picture);
        }
        return picture;
    }

    QIconEngine *clone() const override { return new PaletteIcon(*this); }
    bool isNull() override { return false; }

private:
    QPixmap Draw(const QSize &size, QIcon::Mode mode) const {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        QSvgRenderer drawing(QByteArray(svg_).replace(kInk, Ink(mode).name().toLatin1()));
        drawing.setAspectRatioMode(Qt::KeepAspectRatio);
        drawing.render(&painter, QRectF(QPointF(), size));
        if (mode == QIcon::Disabled) { // as a whole: lines that cross would stay darker where they do
            painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
            painter.fillRect(picture.rect(), QColor(0, 0, 0, 110));
        }
        return picture;
    }

    static QColor Ink(QIcon::Mode mode) {
        const QPalette palette = QGuiApplication::palette();
        return palette.color(QPalette::Active,
                             mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
    }

    QString name_;
    QByteArray svg_;
};

} // namespace

QIcon Icon(QStringView name) {
    InitIconResources();
    QFile file(u":/icons/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new PaletteIcon(name.toString(), file.readAll()));
}

} // namespace varlo
