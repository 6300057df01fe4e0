// One list box: its entries, and which of them are selected.
#pragma once

#include "lists/EntryListModel.h"

#include <QItemSelectionModel>

namespace varlo {

// Places of the three list boxes in `lstEmailList`.
enum BoxIndex : int {
    kChronological = 0, // the open list in file order; this one is saved
    kAlphabetical = 1,  // the same entries, sorted
    kPending = 2,       // requests: "+" or "-", directly followed by the address
};

// Selects exactly these rows (ascending), as one change.
void SelectExactly(QItemSelectionModel &selection, const QList<int> &rows);

class ListBox : public QObject {
    Q_OBJECT

public:
    explicit ListBox(EntryListModel::Order order) : model_(order), selection_(&model_) { TellChanges(); }

    EntryListModel &Model() { return model_; }
    const EntryListModel &Model() const { return model_; }
    QItemSelectionModel &Selection() { return selection_; }

    // The selected rows, ascending.
    QList<int> SelectedRows() const;
    int SelectedCount() const;
    QStringList SelectedEntries() const;
    void SelectRows(const QList<int> &rows) { SelectExactly(selection_, rows); }

Q_SIGNALS:
    // Entries or the selection; at once, and for each change.
    void Touched();

private:
    void TellChanges();

    EntryListModel model_;
    QItemSelectionModel selection_;
};

// A list that tells of its changes: many of one event turn are told once, in the next.
class ChangingList : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    // Entries, selections or whatever else the controls show of the list.
    void Changed();

protected:
    void Touch();

private:
    bool isTouched_ = false;
};

} // namespace varlo
