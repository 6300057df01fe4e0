// The open mailing list: its entries in two orders, its name, and whether there is something to save.
#pragma once

#include "core/Session.h"
#include "lists/ListBox.h"

#include <QSet>

#include <array>
#include <functional>

namespace varlo {

// The one entrance for every change to the list. Both boxes hold the same entries, but for what
// AddToVisibleOnly adds to one.
class OpenList : public ChangingList {
    Q_OBJECT

public:
    explicit OpenList(Session &session, QObject *parent = nullptr);

    // The box `box`, kChronological or kAlphabetical. Its selection is anybody's, its entries are the list's.
    ListBox &Box(int box) { return boxes_[static_cast<size_t>(box)]; }
    const ListBox &Box(int box) const { return boxes_[static_cast<size_t>(box)]; }
    const QString &Name() const { return name_; } // empty when no list is open
    // Without an open list there is no file to differ from.
    bool IsSaved() const { return name_.isEmpty() || IsSavedRevision(revision_); }

    // A number for what the list holds, another one after each change that is to be saved.
    quint64 Revision() const { return revision_; }
    // The list's file has what the list held then.
    bool IsSavedRevision(quint64 revision) const { return savedRevisions_.contains(revision); }
    // The boxes hold again what they held then: for who undoes changes.
    void ReturnTo(quint64 revision);

    // The box that is shown: the alphabetical one when "ListSortBy" is 1.
    int VisibleBox() const;
    // Shows the other order, 0 chronological or 1 alphabetical.
    void SetSortOrder(int order);

    // Adds to both boxes or to none. Throws RuntimeError 6 when one is full.
    void Add(const QString &address);
    // Removes the first entry that equals the address, letter case aside, from each box. True when the
    // chronological box had one.
    bool Remove(const QString &address);
    // Replaces one entry of a box, and the first one of the other box that is the same. Returns its row.
    int Replace(int box, int row, const QString &entry);
    // Removes entries of a box (ascending rows), and the same ones from the other.
    void RemoveRows(int box, const QList<int> &rows);
    // Takes these entries in place of its own, as a change. Throws RuntimeError 6 after as many as fit.
    void ReplaceAll(const QStringList &entries);
    // Adds to the box that is shown alone; the list does not become unsaved. Wanted: in alphabetical order
    // such an entry is seen but not saved, a place to try out. Throws RuntimeError 6 after as many as fit.
    void AddToVisibleOnly(const QStringList &entries);

    // Somebody asks or loads, so that another list may be open soon: what can wait waits.
    class Hold {
    public:
        explicit Hold(OpenList &list) : list_(list) { ++list_.holds_; }
        ~Hold() {
            if (--list_.holds_ == 0)
                Q_EMIT list_.Released();
        }
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;

    private:
        OpenList &list_;
    };
    bool IsHeld() const { return holds_ > 0; }

    // Opens the list `name`, after asking about unsaved changes of the list that is left. Reports failures as
    // "Main.cmbMList"; the boxes then hold what could be read. False when the operator wanted the old list
    // saved and that failed: nothing is loaded, its changes are still there.
    bool Load(const QString &name);
    // A load is under way and lets events run: what would be put on the list now would be lost.
    bool IsLoading() const { return loading_; }

    // What a save is called in the history of the list; without it, "Save".
    void DescribeChangesBy(std::function<QString()> describe) { describe_ = std::move(describe); }

    // Writes the chronological box to the list `name`. False after a failure, reported as "Main.WriteList". A
    // file that could not be loaded whole is first kept as a ".bak" file.
    bool WriteList(const QString &name);
    // Does the same; then the list counts as saved, the status line says so, and Saved is sent. A status line
    // that fails is reported under `label`.
    bool Save(const QString &name, const QString &label);
    // Asks whether to save unsaved changes and does so on Yes. False only when that save failed.
    bool PromptSaveList();

    // The list's file has another name now.
    void Rename(const QString &name);
    // The list's file was deleted, and unsaved changes with it.
    void DropChanges();
    // No list is open any more. Wanted: the alphabetical box keeps its entries, a last look at what was
    // deleted.
    void Close();

Q_SIGNALS:
    // Another list is open now, or the same one anew.
    void Loaded();
    // No list is open any more.
    void Closed();
    void Saved(const QString &name);
    // The last Hold has gone.
    void Released();
    // The other box is the visible one now.
    void SortOrderChanged();

private:
    ListBox &Other(int box) { return Box(box == kChronological ? kAlphabetical : kChronological); }
    void Fill(const QString &name);
    void MarkSaved();
    void TellKept(const QString &label);
    void MarkUnsaved();

    Session &session_;
    std::function<QString()> describe_;
    std::array<ListBox, 2> boxes_{ListBox(EntryListModel::Order::Chronological),
                                  ListBox(EntryListModel::Order::Alphabetical)};
    QString name_;
    quint64 revision_ = 0;
    quint64 lastRevision_ = 0;
    QSet<quint64> savedRevisions_{0}; // more than one after AddToVisibleOnly
    bool loading_ = false;
    bool isLeaving_ = false; // Load asks about the list that is left, or loads the next one
    int holds_ = 0;
    bool partlyLoaded_ = false; // the list's file holds more than the boxes
    QString keptAs_;            // its backup, as long as that is not told
};

} // namespace varlo
