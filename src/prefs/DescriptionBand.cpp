#include "prefs/DescriptionBand.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace varlo {

DescriptionBand::DescriptionBand(QLabel *words) {
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(words);
}

void DescriptionBand::paintEvent(QPaintEvent *) {
    constexpr int kTint = 40; // of 255: the letters stay as readable as on the window itself
    constexpr int kEdge = 3;
    QPainter painter(this);
    QColor colour = palette().color(QPalette::Highlight);
    painter.fillRect(QRect(0, 0, kEdge, height()), colour);
    colour.setAlpha(kTint);
    painter.fillRect(rect().adjusted(kEdge, 0, 0, 0), colour);
}

} // namespace varlo
