// Rows of a list box that are never wider than the box.
#pragma once

#include <QStyledItemDelegate>

class QListView;

namespace varlo {

// A text that does not fit loses letters where `mode` says, instead of making the box scroll sideways.
class ElidedRows : public QStyledItemDelegate {
    Q_OBJECT

public:
    // Belongs to `list` and paints its rows.
    ElidedRows(QListView *list, Qt::TextElideMode mode);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace varlo
