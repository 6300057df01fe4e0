#include "core/NameChooser.h"

#include "core/Literals.h"

#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace varlo {

NameChooser::NameChooser(int columns, QWidget *parent, ToolTip toolTip)
    : QComboBox(parent), toolTip_(toolTip) {
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

void NameChooser::UpdateToolTip() {
    if (toolTip_ == ToolTip::OfCaller)
        return;
    // Marked as markup and escaped: a tooltip otherwise guesses.
    setToolTip(ShownText() == currentText() ? QString() : u"<html>"_s + currentText().toHtmlEscaped());
}

} // namespace varlo
