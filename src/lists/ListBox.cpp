#include "lists/ListBox.h"

#include <utility>

namespace varlo {

void ListBox::TellChanges() {
    connect(&model_, &EntryListModel::rowsInserted, this, &ListBox::Touched);
    connect(&model_, &EntryListModel::rowsRemoved, this, &ListBox::Touched);
    connect(&model_, &EntryListModel::modelReset, this, &ListBox::Touched);
    connect(&selection_, &QItemSelectionModel::selectionChanged, this, &ListBox::Touched);
}

QList<int> ListBox::SelectedRows() const {
    QList<int> rows;
    for (const QItemSelectionRange &range : selection_.selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    std::sort(rows.begin(), rows.end());
    return rows;
}

int ListBox::SelectedCount() const {
    int count = 0;
    for (const QItemSelectionRange &range : selection_.selection())
        count += range.height();
    return count;
}

QStringList ListBox::SelectedEntries() const {
    QStringList entries;
    for (int row : SelectedRows())
        entries.append(model_.Entry(row));
    return entries;
}

void SelectExactly(QItemSelectionModel &selection, const QList<int> &rows) {
    const QAbstractItemModel &model = *selection.model();
    QItemSelection ranges;
    for (qsizetype i = 0; i < rows.size();) {
        qsizetype last = i;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        ranges.append(QItemSelectionRange(model.index(rows[i], 0), model.index(rows[last], 0)));
        i = last + 1;
    }
    // Telling what changed from one selection to the next costs their numbers of ranges multiplied: seconds,
    // when every other row was found twice. From an empty one it costs nothing.
    if (ranges.size() > 1)
        selection.clearSelection();
    selection.select(ranges, QItemSelectionModel::ClearAndSelect);
}

void ChangingList::Touch() {
    if (std::exchange(isTouched_, true))
        return;
    const auto tell = [this] {
        isTouched_ = false;
        Q_EMIT Changed();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

} // namespace varlo
