// Paints the rows of a list box that was narrowed, the text that was looked for in bold.
#pragma once

#include <QStyledItemDelegate>

namespace varlo {

class FoundDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // What is bold, lower-cased; empty: nothing.
    void SetText(const QString &text) { text_ = text; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QString text_;
};

} // namespace varlo
