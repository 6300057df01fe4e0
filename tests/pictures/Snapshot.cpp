#include "pictures/Snapshot.h"

#include "core/Icons.h"

#include <QApplication>
#include <QHash>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace varlo::test {

namespace {

constexpr int kTitleBar = 30;
constexpr int kPaletteSize = 256;

bool IsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

QColor FrameColour() {
    return IsDark() ? QColor(0x6a, 0x6a, 0x6a) : QColor(0xa0, 0xa0, 0xa0);
}

void DrawTitleBar(QPainter &painter, const QWidget &window, int width) {
    const QRect bar(0, 0, width, kTitleBar);
    painter.fillRect(bar, IsDark() ? QColor(40, 40, 40) : QColor(220, 225, 230));
    Icon(u"varlo-pro").paint(&painter, QRect(8, (kTitleBar - 16) / 2, 16, 16));
    QFont bold = QApplication::font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(IsDark() ? QColor(0xe6, 0xe6, 0xe6) : QColor(0x2c, 0x2c, 0x2c));
    painter.drawText(bar, Qt::AlignCenter, window.windowTitle());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(painter.pen().color(), 1.5));
    const QRectF cross(width - 20, kTitleBar / 2 - 4, 8, 8);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
    painter.setRenderHint(QPainter::Antialiasing, false);
}

int Distance(QRgb a, QRgb b) {
    const int red = qRed(a) - qRed(b);
    const int green = qGreen(a) - qGreen(b);
    const int blue = qBlue(a) - qBlue(b);
    return red * red + green * green + blue * blue;
}

// The shades of grey at the edges of letters would leave no room in a palette for the icons: no eye tells
// them from multiples of five. Black and white stay what they are.
QImage WithFewerShades(QImage image) {
    const auto rounded = [](int channel) { return (channel + 2) / 5 * 5; };
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb colour = image.pixel(x, y);
            image.setPixel(x, y,
                           qRgb(rounded(qRed(colour)), rounded(qGreen(colour)), rounded(qBlue(colour))));
        }
    return image;
}

// The colours that are most frequent in `image`, as many as a palette holds.
QList<QRgb> FrequentColours(const QImage &image) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    QList<QRgb> colours = counts.keys();
    std::sort(colours.begin(), colours.end(),
              [&](QRgb a, QRgb b) { return std::pair(-counts[a], a) < std::pair(-counts[b], b); });
    return colours.mid(0, kPaletteSize);
}

// A third of the size on the disk; the few colours that are lost are those of single pixels.
QImage WithPalette(const QImage &image) {
    const QList<QRgb> colours = FrequentColours(image);
    QHash<QRgb, uchar> places;
    for (qsizetype i = 0; i < colours.size(); ++i)
        places[colours[i]] = static_cast<uchar>(i);
    QImage indexed(image.size(), QImage::Format_Indexed8);
    indexed.setColorTable(colours);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb colour = image.pixel(x, y);
            if (!places.contains(colour))
                places[colour] =
                    static_cast<uchar>(std::min_element(colours.begin(), colours.end(),
                                                        [&](QRgb a, QRgb b) {
                                                            return Distance(a, colour) < Distance(b, colour);
                                                        }) -
                                       colours.begin());
            indexed.setPixel(x, y, places[colour]);
        }
    return indexed;
}

void Save(const QImage &image, const QString &path) {
    // Quality 0 is the smallest file; PNG loses nothing.
    if (!WithPalette(WithFewerShades(image)).save(path, "PNG", 0))
        qFatal("cannot write %s", qPrintable(path));
}

void Settle() {
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

void Take(QWidget &window, const QString &path, int above) {
    const QPixmap content = window.grab();
    const QSize inner = content.deviceIndependentSize().toSize();
    const QSize outer(inner.width() + 2, inner.height() + above + 2);
    QImage image(outer * content.devicePixelRatio(), QImage::Format_RGB32);
    image.setDevicePixelRatio(content.devicePixelRatio());
    image.fill(FrameColour());
    QPainter painter(&image);
    if (above > 0)
        DrawTitleBar(painter, window, outer.width());
    painter.drawPixmap(1, above + 1, content);
    painter.setPen(FrameColour());
    painter.drawRect(0, 0, outer.width() - 1, outer.height() - 1);
    painter.end();
    Save(image, path);
}

} // namespace

void UseDarkColours() {
    QPalette dark(QColor(60, 60, 60), QColor(45, 45, 45)); // its edges and shadows come from these two
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(38, 38, 38));
    for (QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText})
        dark.setColor(role, QColor(230, 230, 230));
    dark.setColor(QPalette::Highlight, QColor(42, 110, 190));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    QApplication::setPalette(dark);
}

void TakeWindow(QWidget &window, const QString &path) {
    window.show();
    Settle();
    Take(window, path, kTitleBar);
}

void TakeMenu(QMenu &menu, const QString &path) {
    menu.popup(QPoint(0, 0));
    Settle();
    Take(menu, path, 0);
    menu.hide();
}

} // namespace varlo::test
