#include "lists/FoundDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace varlo {

namespace {

QList<QTextLayout::FormatRange> BoldParts(const QString &entry, const QString &text) {
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QList<QTextLayout::FormatRange> parts;
    for (qsizetype at = entry.indexOf(text, 0, Qt::CaseInsensitive); at >= 0;
         at = entry.indexOf(text, at + text.size(), Qt::CaseInsensitive))
        parts.append({static_cast<int>(at), static_cast<int>(text.size()), bold});
    return parts;
}

QPalette::ColorGroup GroupOf(QStyle::State state) {
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

} // namespace

void FoundDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const {
    if (text_.isEmpty())
        return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &row, row.widget) + 1;
    const QRect place =
        style->subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget).adjusted(margin, 0, -margin, 0);
    QTextLayout layout(std::exchange(row.text, QString()), row.font);
    layout.setFormats(BoldParts(layout.text(), text_));
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget); // all but the text
    painter->save();
    painter->setClipRect(place);
    const bool isSelected = row.state & QStyle::State_Selected;
    painter->setPen(
        row.palette.color(GroupOf(row.state), isSelected ? QPalette::HighlightedText : QPalette::Text));
    layout.draw(painter, QPointF(place.left(), place.center().y() + 0.5 - line.height() / 2));
    painter->restore();
}

} // namespace varlo
