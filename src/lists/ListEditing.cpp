#include "lists/ListEditing.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"
#include "lists/SelectionPause.h"

#include <QCoreApplication>

#include <numeric>

namespace varlo {

namespace {

int OtherCurrentBox(int box) {
    return box == kChronological ? kAlphabetical : kChronological;
}

QHash<QString, int> CountTexts(const QStringList &entries) {
    QHash<QString, int> counts;
    for (const QString &entry : entries)
        ++counts[entry];
    return counts;
}

// The rows of `model`, from the top, that match `entries` to the letter, each entry as often as it is given.
QList<int> MatchingRows(const EntryListModel &model, const QStringList &entries) {
    QHash<QString, int> wanted = CountTexts(entries);
    const QStringList all = model.Entries();
    QList<int> rows;
    for (qsizetype i = 0; i < all.size(); ++i) {
        const auto found = wanted.find(all[i]);
        if (found != wanted.end() && (*found)-- > 0)
            rows.append(static_cast<int>(i));
    }
    return rows;
}

} // namespace

void ListEditing::EditSelected(int box) {
    Trapped(session_, u"Main.cmdListEdit"_s, [&] {
        // The boxes that ask let events run; persistent indexes follow their entries meanwhile.
        QList<QPersistentModelIndex> selected;
        for (int row : lists_.SelectedRows(box))
            selected.append(lists_.lstEmailList(box).index(row));
        for (const QPersistentModelIndex &index : selected)
            if (index.isValid() && !EditOne(box, index))
                break;
    });
    lists_.UpdateControls();
}

bool ListEditing::EditOne(int box, const QPersistentModelIndex &index) {
    const EntryListModel &model = lists_.lstEmailList(box);
    const QString old = model.Entry(index.row());
    const QString sign = box == kPending ? old.left(1) : QString();
    const QString answer = session_.Boxes.InputBox(u"Please enter the amended e-mail address:"_s,
                                                   u"Edit e-mail address"_s, old.mid(sign.size()));
    if (answer.isEmpty())
        return false;
    if (IsNewAddress(session_, answer, model) && IsValidAddress(session_, answer, false) && index.isValid())
        ReplaceEntry(box, index.row(), sign + answer);
    return true;
}

void ListEditing::ReplaceEntry(int box, int row, const QString &entry) {
    EntryListModel &model = lists_.lstEmailList(box);
    const QString old = model.Entry(row);
    const int newRow = model.Replace(row, entry);
    lists_.Selection(box).select(model.index(newRow), QItemSelectionModel::Select);
    if (box == kPending)
        return;
    EntryListModel &other = lists_.lstEmailList(OtherCurrentBox(box));
    if (const int otherRow = other.FindExact(old); otherRow >= 0)
        other.Replace(otherRow, entry);
    lists_.MarkUnsaved();
}

void ListEditing::DeleteSelected(int box) {
    Trapped(session_, u"Main.cmdListDelete"_s, [&] {
        const QStringList entries = lists_.SelectedEntries(box);
        lists_.lstEmailList(box).RemoveRows(lists_.SelectedRows(box));
        if (box != kPending && !entries.isEmpty()) {
            RemoveFromOtherBox(box, entries);
            lists_.MarkUnsaved();
        }
        for (const QString &entry : entries)
            StatusMessage(session_, u"Deleted ["_s + entry + u"]"_s);
    });
    lists_.UpdateControls();
}

void ListEditing::RemoveFromOtherBox(int box, const QStringList &entries) {
    EntryListModel &other = lists_.lstEmailList(OtherCurrentBox(box));
    other.RemoveRows(MatchingRows(other, entries));
}

void ListEditing::Search() {
    const QString text = session_.Boxes.InputBox(
        u"Please enter the text you want to search for:\r\n(Can be a full or partial address)"_s,
        u"Find e-mail address"_s);
    if (text.isEmpty())
        return;
    Trapped(session_, u"Main.cmdListFind"_s, [&] {
        StatusMessage(session_, u"Searching for ["_s + text + u"]..."_s);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const int box = lists_.VisibleBox();
        const QString lower = text.toLower();
        const QStringList entries = lists_.lstEmailList(box).Entries();
        QList<int> matches;
        for (qsizetype i = 0; i < entries.size(); ++i)
            if (LowerCased(entries[i]).contains(lower))
                matches.append(static_cast<int>(i));
        lists_.SelectRows(box, matches);
        StatusMessage(session_, u"Search returned "_s + QString::number(matches.size()) +
                                    u" matches for ["_s + text + u"]"_s);
    });
    lists_.UpdateControls();
}

bool ListEditing::ChangeSortOrder(int order) {
    const int from = lists_.VisibleBox();
    const int to = order == 1 ? kAlphabetical : kChronological;
    const bool tooMany = lists_.SelectedCount(from) > kMostCarriedSelections;
    const QString question =
        u"Due to the amount of selections on the current list your selections will be lost "
        "when sorting. Continue?"_s;
    if (tooMany && session_.Boxes.MsgBox(question, BoxButtons::OkCancel, BoxIcon::Question, u"Confirm"_s) !=
                       BoxAnswer::Ok)
        return false;
    const Hourglass hourglass(session_.Boxes);
    Trapped(session_, u"Main.mnuSortOrder"_s, [&] {
        StatusMessage(session_, u"Sorting list..."_s);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const QStringList carried = tooMany ? QStringList() : lists_.SelectedEntries(from);
        if (from != to || tooMany) {
            lists_.Selection(from).clearSelection();
            lists_.SelectRows(to, MatchingRows(lists_.lstEmailList(to), carried));
        }
        session_.Prefs.ListSortBy = order;
        StatusMessage(session_, order == 1 ? u"E-mail addresses sorted by alphabetical order"_s
                                           : u"E-mail addresses sorted by chronological order"_s);
    });
    lists_.UpdateControls();
    return true;
}

void ListEditing::SwapSigns() {
    EntryListModel &pending = lists_.lstEmailList(kPending);
    for (int row : lists_.SelectedRows(kPending)) {
        const QString entry = pending.Entry(row);
        if (entry.startsWith(u'+'))
            pending.Replace(row, u'-' + entry.mid(1));
        else if (entry.startsWith(u'-'))
            pending.Replace(row, u'+' + entry.mid(1));
    }
    lists_.UpdateControls();
}

void ListEditing::SelectAll(int box) {
    QList<int> rows(lists_.lstEmailList(box).Count());
    std::iota(rows.begin(), rows.end(), 0);
    lists_.SelectRows(box, rows);
    ReportSelection(box);
}

void ListEditing::SelectNone(int box) {
    lists_.Selection(box).clearSelection();
    Trapped(session_, u"Main.mnuListsDeSelAll"_s,
            [&] { StatusMessage(session_, u"Cleared address selections"_s); });
    lists_.UpdateControls();
}

void ListEditing::ReportSelection(int box) {
    const int count = lists_.SelectedCount(box);
    Trapped(session_, u"Main.lstEmailList"_s, [&] {
        StatusMessage(session_, u"Selected "_s + QString::number(count) +
                                    (count == 1 ? u" address"_s : u" addresses"_s));
    });
    lists_.UpdateControls();
}

void ListEditing::CurrentToPending(Transfer transfer) {
    const bool copied = Trapped(session_, u"Main.mnuListsCurrentCopy"_s, [&] {
        QStringList entries = lists_.SelectedEntries(lists_.VisibleBox());
        for (QString &entry : entries)
            entry.prepend(u'+');
        lists_.lstEmailList(kPending).AddAll(entries);
    });
    if (copied && transfer == Transfer::Move)
        DeleteSelected(lists_.VisibleBox());
    lists_.UpdateControls();
}

void ListEditing::PendingToCurrent(Transfer transfer) {
    const bool copied = Trapped(session_, u"Main.mnuListsPendingCopy"_s, [&] {
        QStringList entries = lists_.SelectedEntries(kPending);
        for (QString &entry : entries)
            entry.remove(0, 1);
        const SelectionPause pause(lists_, lists_.VisibleBox());
        lists_.lstEmailList(lists_.VisibleBox()).AddAll(entries);
    });
    if (copied && transfer == Transfer::Move)
        DeleteSelected(kPending);
    lists_.UpdateControls();
}

} // namespace varlo
