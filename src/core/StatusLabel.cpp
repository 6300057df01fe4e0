#include "core/StatusLabel.h"

#include "core/PlainToolTip.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <chrono>

namespace varlo {

namespace {

using namespace std::chrono_literals;
constexpr auto kPaintInterval = 34ms;
constexpr int kStandstill = 100; // ms without a paint that was due: no events are handled

// What a tooltip can show at all; a line from a server can be of any length.
constexpr qsizetype kLongestToolTip = 2000;

} // namespace

StatusLabel::StatusLabel(QWidget *parent) : StatusLabel(QString(), parent) {
}

StatusLabel::StatusLabel(const QString &text, QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    paintTimer_.setSingleShot(true);
    paintTimer_.setInterval(kPaintInterval);
    connect(&paintTimer_, &QTimer::timeout, this, &StatusLabel::Refresh);
    setText(text);
}

void StatusLabel::setText(const QString &text) {
    if (text == this->text())
        return;
    StoreText(text);
    dirty_ = true;
    if (!paintTimer_.isActive()) {
        Refresh();
    } else if (sinceRefresh_.hasExpired(kStandstill)) {
        Refresh();
        repaint();
    }
}

// The text has to be QLabel's, since screen readers take it from there, but QLabel asks for a layout and a
// repaint with every text. It asks for neither when it is hidden and its updates are off, so it is told so
// while it stores the text; the two attributes alone have no other effect.
void StatusLabel::StoreText(const QString &text) {
    const bool wasHidden = testAttribute(Qt::WA_WState_Hidden);
    const bool updatesWereOff = testAttribute(Qt::WA_UpdatesDisabled);
    setAttribute(Qt::WA_WState_Hidden, true);
    setAttribute(Qt::WA_UpdatesDisabled, true);
    QLabel::setText(text);
    setAttribute(Qt::WA_UpdatesDisabled, updatesWereOff);
    setAttribute(Qt::WA_WState_Hidden, wasHidden);
}

void StatusLabel::Refresh() {
    if (!dirty_)
        return;
    dirty_ = false;
    UpdateToolTip();
    update();
    sinceRefresh_.start();
    paintTimer_.start();
}

QSize StatusLabel::sizeHint() const {
    return minimumSizeHint() + QSize(20 * fontMetrics().averageCharWidth(), 0);
}

QSize StatusLabel::minimumSizeHint() const {
    const QMargins around = contentsMargins();
    const int inner = 2 * margin();
    return {around.left() + around.right() + inner + 3 * fontMetrics().averageCharWidth(),
            around.top() + around.bottom() + inner + fontMetrics().height()};
}

// The text as it fits on the label's one line. A character is taken to be at least one pixel wide, so that
// only as many as can be seen are measured.
QString StatusLabel::ShownText() const {
    const int room = contentsRect().width() - 2 * margin();
    QString line = text().left(room + 1);
    for (QChar &c : line)
        if (c.isSpace())
            c = u' ';
    return fontMetrics().elidedText(line, Qt::ElideRight, room);
}

void StatusLabel::UpdateToolTip() {
    const bool isCut = ShownText().size() < text().size() || ShownText().endsWith(QChar(0x2026));
    setToolTip(isCut ? LongToolTip(text().left(kLongestToolTip)) : QString());
}

void StatusLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    drawFrame(&painter);
    const QRect area = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    style()->drawItemText(&painter, area, static_cast<int>(alignment()) | Qt::TextSingleLine, palette(),
                          isEnabled(), ShownText(), foregroundRole());
}

void StatusLabel::resizeEvent(QResizeEvent *event) {
    QLabel::resizeEvent(event);
    UpdateToolTip();
}

void StatusLabel::mousePressEvent(QMouseEvent *event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void StatusLabel::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT Clicked();
}

} // namespace varlo
