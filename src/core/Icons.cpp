#include "core/Icons.h"

#include "core/IconDrawing.h"
#include "core/Literals.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

// Resources of a static library are dropped by the linker unless they are named; the macro needs the global
// namespace.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace varlo {

namespace {

class PaletteIcon : public QIconEngine {
public:
    explicit PaletteIcon(QString name) : name_(std::move(name)) {}

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
        QImage picture = DrawIcon(name_, size, Ink(mode));
        if (mode == QIcon::Disabled) { // as a whole: lines that cross would stay darker where they do
            QPainter painter(&picture);
            painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
            painter.fillRect(picture.rect(), QColor(0, 0, 0, 110));
        }
        return QPixmap::fromImage(picture);
    }

    static QColor Ink(QIcon::Mode mode) {
        const QPalette palette = QGuiApplication::palette();
        return palette.color(QPalette::Active,
                             mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
    }

    QString name_;
};

} // namespace

QIcon Icon(QStringView name) {
    InitIconResources();
    return HasDrawing(name.toString()) ? QIcon(new PaletteIcon(name.toString())) : QIcon();
}

} // namespace varlo
