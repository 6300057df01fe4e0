// The two lists in memory and, by their numbers, the three list boxes that show them.
#pragma once

#include "lists/ListUndo.h"
#include "lists/OpenList.h"
#include "lists/PendingList.h"

namespace varlo {

class ListStore {
public:
    explicit ListStore(Session &session) : Open(session), Pending(session) {
        Open.DescribeChangesBy([this] { return DescribeSteps(Undo.TextsSinceSaved()); });
    }

    OpenList Open;
    PendingList Pending;
    ListUndo Undo{Open, Pending};

    ListBox &Box(int box) { return box == kPending ? Pending.Box() : Open.Box(box); }
    const ListBox &Box(int box) const { return box == kPending ? Pending.Box() : Open.Box(box); }
    const EntryListModel &lstEmailList(int box) const { return Box(box).Model(); }
    QItemSelectionModel &Selection(int box) { return Box(box).Selection(); }
    int VisibleBox() const { return Open.VisibleBox(); }

    QList<int> SelectedRows(int box) const { return Box(box).SelectedRows(); }
    int SelectedCount(int box) const { return Box(box).SelectedCount(); }
    QStringList SelectedEntries(int box) const { return Box(box).SelectedEntries(); }
    void SelectRows(int box, const QList<int> &rows) { Box(box).SelectRows(rows); }
};

} // namespace varlo
