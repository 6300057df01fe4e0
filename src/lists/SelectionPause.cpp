#include "lists/SelectionPause.h"

#include "lists/ListStore.h"

namespace varlo {

namespace {

constexpr qsizetype kFewRanges = 64;

} // namespace

SelectionPause::SelectionPause(ListStore &lists, int box) : lists_(lists), box_(box) {
    if (lists_.Selection(box_).selection().size() <= kFewRanges)
        return;
    const EntryListModel &model = lists_.lstEmailList(box_);
    for (int row : lists_.SelectedRows(box_))
        serials_.insert(model.Serial(row));
    lists_.Selection(box_).clearSelection();
}

SelectionPause::~SelectionPause() {
    if (serials_.isEmpty())
        return;
    const EntryListModel &model = lists_.lstEmailList(box_);
    QList<int> rows;
    for (int row = 0; row < model.Count(); ++row)
        if (serials_.contains(model.Serial(row)))
            rows.append(row);
    lists_.SelectRows(box_, rows);
}

} // namespace varlo
