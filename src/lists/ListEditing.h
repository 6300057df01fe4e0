// What the operator does to entries by hand: edit, delete, search, sort order, signs, selections, copy and
// move.
#pragma once

#include "core/Session.h"
#include "lists/EditPolicy.h"

#include <QPersistentModelIndex>

#include <functional>

namespace varlo {

class ListStore;

// Every routine works on the selected entries of one list, and reports on the status line. `box` is the
// visible Current box or the Pending box. Failures are reported under the label of the routine's control.
class ListEditing {
public:
    ListEditing(Session &session, ListStore &lists) : session_(session), lists_(lists) {}

    // Asks for each selected entry's new address, from the top. An empty or cancelled box ends the round.
    void EditSelected(int box);
    // Deletes the selected entries as one change; Current entries go from both boxes.
    void DeleteSelected(int box);
    // Go back over the last change of the lists, or forth again. For when there is one.
    void Undo();
    void Redo();
    // Asks for a text, offering that of the last search, and selects the entries of the visible Current box
    // that contain it; the first one becomes the current row, in view. An empty or cancelled box leaves the
    // selection alone.
    void Search();
    // Asks for a domain, offering that of the current row, and selects the entries of the visible Current box that
    // are of it or of one below it. An empty or cancelled box leaves the selection alone.
    void SelectDomain();
    // Selects the entries of the box that are similar to a selected one (SimilarEntries.h).
    void SelectSimilar(int box);
    // Makes the next selected entry of the visible Current box the current row, or the previous one; round
    // and round.
    void ShowSelected(bool next);
    // Shows the other order (0 chronological, 1 alphabetical) and carries at most 500 selections over to it.
    // False when the operator kept the order because more would be lost.
    bool ChangeSortOrder(int order);
    // Turns "+" into "-" and back in the selected Pending entries.
    void SwapSigns();
    void SelectAll(int box);
    void SelectNone(int box);
    // The status line after a click in a list box.
    void ReportSelection(int box);

    enum class Transfer { Copy = 0, Move = 1 };
    // Adds the selected Current entries to the Pending list as "+", with no test.
    void CurrentToPending(Transfer transfer);
    // Adds the selected Pending entries, whatever their sign, to the visible Current box only, with no test;
    // the list does not become unsaved. Wanted: in alphabetical order such an entry is seen but not saved, a
    // place to try out.
    void PendingToCurrent(Transfer transfer);

    // The most selected entries that a change of the order carries over.
    static constexpr int kMostCarriedSelections = 500;

private:
    QString AddressAt(int box, int row) const;
    // Selects the entries for whose address `isMeant` holds; the first one becomes the current row. Says how many.
    void SelectMeant(int box, const std::function<bool(const QString &)> &isMeant);
    // False when the round is over.
    bool EditOne(int box, const QPersistentModelIndex &index, const EditPolicy &policy);
    // Whether the entry `old` may become `address`; tells why not.
    bool IsTaken(int box, const QString &old, const QString &address, const EditPolicy &policy);
    void MakeCurrent(int box, int row);
    void TellTransfer(Transfer transfer, int count, const QString &target);
    void ReplaceAddress(int box, int row, const QString &address);

    Session &session_;
    ListStore &lists_;
    QString searched_;
};

} // namespace varlo
