#include "compose/ElidedRows.h"

#include <QListView>

namespace varlo {

ElidedRows::ElidedRows(QListView *list, Qt::TextElideMode mode) : QStyledItemDelegate(list) {
    list->setItemDelegate(this);
    list->setTextElideMode(mode);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize ElidedRows::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const {
    return {1, QStyledItemDelegate::sizeHint(option, index).height()}; // the box makes them as wide as it is
}

} // namespace varlo
