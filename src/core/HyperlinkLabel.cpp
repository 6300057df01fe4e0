#include "core/HyperlinkLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace varlo {

HyperlinkLabel::HyperlinkLabel(const QString &text, QWidget *parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed); // only the words are the link, not the row
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
    ShowColour();
}

void HyperlinkLabel::ShowColour() {
    // The palette's own link colour is a deep blue on many dark themes.
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QColor resting = isDark ? QColor(0x6c, 0xb4, 0xff) : QColor(0x0b, 0x5c, 0xbd);
    const QColor colour = down_ ? QColor(Qt::red) : resting;
    // This also ends the chain of palette changes that setting one begins.
    if (palette().color(QPalette::WindowText) == colour)
        return;
    // Sets this colour only; the others stay the theme's.
    QPalette colours;
    colours.setColor(QPalette::WindowText, colour);
    setPalette(colours);
}

void HyperlinkLabel::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    down_ = true;
    ShowColour();
}

void HyperlinkLabel::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !down_)
        return;
    down_ = false;
    ShowColour();
    if (rect().contains(event->position().toPoint()))
        Q_EMIT Clicked();
}

void HyperlinkLabel::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space)
        Q_EMIT Clicked();
    else
        QLabel::keyPressEvent(event);
}

void HyperlinkLabel::changeEvent(QEvent *event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowColour();
}

void HyperlinkLabel::paintEvent(QPaintEvent *event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(backgroundRole());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

} // namespace varlo
