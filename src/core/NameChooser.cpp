#include "core/NameChooser.h"

#include "core/PlainToolTip.h"

#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

namespace varlo {

NameChooser::NameChooser(int columns, QWidget *parent, const std::optional<QString> &toolTip)
    : QComboBox(parent), toolTip_(toolTip) {
    setFocusPolicy(Qt::StrongFocus);
    if (toolTip_)
        setToolTip(*toolTip_);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(columns);
    connect(this, &QComboBox::currentTextChanged, this, &NameChooser::UpdateToolTip);
}

QString NameChooser::ShownText() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect place =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(currentText(), Qt::ElideRight, place.width() - 4); // styles keep a margin
}

void NameChooser::paintEvent(QPaintEvent *) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = ShownText();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void NameChooser::resizeEvent(QResizeEvent *event) {
    QComboBox::resizeEvent(event);
    UpdateToolTip();
}

void NameChooser::wheelEvent(QWheelEvent *event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void NameChooser::UpdateToolTip() {
    if (toolTip_)
        setToolTip(ShownText() == currentText() ? *toolTip_ : LongToolTip(currentText()));
}

} // namespace varlo
