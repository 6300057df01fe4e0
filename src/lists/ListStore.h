// The lists in memory: the open list in its two orders, the Pending list, and whether there is something to
// save.
#pragma once

#include "core/Session.h"
#include "lists/EntryListModel.h"

#include <QItemSelectionModel>

#include <array>

namespace varlo {

// Places of the three list boxes in `lstEmailList`.
enum ListBox : int {
    kChronological = 0, // the open list in file order; this one is saved
    kAlphabetical = 1,  // the same entries, sorted
    kPending = 2,       // requests: "+" or "-", directly followed by the address
};

// Owns the entries and the selections of the three list boxes; windows only show them. The Pending list is
// never written to disk.
class ListStore : public QObject {
    Q_OBJECT

public:
    explicit ListStore(Session &session, QObject *parent = nullptr);

    EntryListModel &lstEmailList(int box) { return *boxes_[static_cast<size_t>(box)]; }
    const EntryListModel &lstEmailList(int box) const { return *boxes_[static_cast<size_t>(box)]; }
    QItemSelectionModel &Selection(int box) const { return *selections_[static_cast<size_t>(box)]; }

    // The list box of the open list that is shown: the alphabetical one when "ListSortBy" is 1.
    int VisibleBox() const;
    // The selected rows of a box, ascending.
    QList<int> SelectedRows(int box) const;
    int SelectedCount(int box) const;
    QStringList SelectedEntries(int box) const;
    // Selects exactly these rows (ascending), as one change.
    void SelectRows(int box, const QList<int> &rows);

    // Loads the list `name` into the two boxes, after asking about unsaved changes of the list that is left.
    // Reports failures as "Main.cmbMList"; the boxes then hold what could be read. False when the operator
    // wanted the old list saved and that failed: nothing is loaded, its changes are still there.
    bool Load(const QString &name);
    // A load is under way and lets events run: what would be put on the open list now would be lost.
    bool IsLoading() const { return loading_; }

    // Writes the chronological box to the list `name`. False after a failure, reported as "Main.WriteList". A
    // file that could not be loaded whole is first kept as a ".bak" file.
    bool WriteList(const QString &name);

    // Asks whether to save unsaved changes and does so on Yes. False only when that save failed.
    bool PromptSaveList();

    // The open list differs from its file from now on. Without an open list there is no file to differ from.
    void MarkUnsaved() { ListSaved = CurrentListName.isEmpty(); }

    // Adds a request at the end of the Pending list and makes it the current item. Throws RuntimeError 6 when
    // full.
    void AddPending(const QString &entry);

    // Makes the last entry of the Pending list its current item, so that it is in view. Nothing when it is
    // empty.
    void SelectLastPending();

    // The controls follow the lists: called after every change to a list.
    void UpdateControls() { Q_EMIT ControlsOutdated(); }

    QString CurrentListName;
    bool ListSaved = true; // the open list has no unsaved changes

Q_SIGNALS:
    void ControlsOutdated();

private:
    void Fill(const QString &name);

    Session &session_;
    std::array<EntryListModel *, 3> boxes_;
    std::array<QItemSelectionModel *, 3> selections_;
    bool loading_ = false;
    bool partlyLoaded_ = false; // the open list's file holds more than the boxes
};

} // namespace varlo
