#include "lists/FoundRows.h"

#include "core/modPublic.h"

#include <algorithm>
#include <utility>

namespace varlo {

FoundRows::FoundRows(const EntryListModel &entries, QObject *parent)
    : QAbstractListModel(parent), entries_(entries) {
    connect(&entries_, &EntryListModel::rowsInserted, this, &FoundRows::Forget);
    connect(&entries_, &EntryListModel::rowsRemoved, this, &FoundRows::Forget);
    connect(&entries_, &EntryListModel::dataChanged, this, &FoundRows::Forget);
    connect(&entries_, &EntryListModel::modelReset, this, &FoundRows::Forget);
}

void FoundRows::SetText(const QString &text) {
    text_ = LowerCased(text);
    Find();
}

int FoundRows::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant FoundRows::data(const QModelIndex &index, int role) const {
    return entries_.data(entries_.index(rows_.at(index.row())), role);
}

int FoundRows::RowFound(int row) const {
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), row);
    return at != rows_.end() && *at == row ? static_cast<int>(at - rows_.begin()) : -1;
}

void FoundRows::Find() {
    isStale_ = false;
    beginResetModel();
    rows_.clear();
    for (int row = 0, count = text_.isEmpty() ? 0 : entries_.Count(); row < count; ++row)
        if (LowerCased(entries_.Entry(row)).contains(text_))
            rows_.append(row);
    endResetModel();
}

void FoundRows::Forget() {
    if (text_.isEmpty() || std::exchange(isStale_, true))
        return;
    beginResetModel();
    rows_.clear();
    endResetModel();
    const auto findAnew = [this] {
        if (!isStale_)
            return; // there is another text since
        Find();
        Q_EMIT FoundAnew();
    };
    QMetaObject::invokeMethod(this, findAnew, Qt::QueuedConnection);
}

} // namespace varlo
