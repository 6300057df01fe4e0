#include "lists/ListEditing.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"
#include "lists/SelectionPause.h"
#include "lists/SimilarEntries.h"

#include <QCoreApplication>

#include <numeric>

namespace varlo {

namespace {

QString CountText(int count) {
    return QString::number(count) + (count == 1 ? u" address"_s : u" addresses"_s);
}

// What an undo of it is called.
QString TransferText(ListEditing::Transfer transfer, int count, const QString &target) {
    const QString done = transfer == ListEditing::Transfer::Move ? u"Move "_s : u"Copy "_s;
    return done + AddressesText(count) + u" to "_s + target + u" List"_s;
}

// Where the current row, or what takes its place, stands after `rows` (ascending) have gone.
int RowAfter(const QList<int> &rows, int current) {
    const int place = current < 0 ? rows.value(0) : current;
    return place - static_cast<int>(std::lower_bound(rows.begin(), rows.end(), place) - rows.begin());
}

} // namespace

void ListEditing::EditSelected(int box) {
    const OpenList::Hold hold(lists_.Open); // what is processed meanwhile would move the rows
    Trapped(session_, u"Main.cmdListEdit"_s, [&] {
        // The boxes that ask let events run; persistent indexes follow their entries meanwhile.
        QList<QPersistentModelIndex> selected;
        for (int row : lists_.SelectedRows(box))
            selected.append(lists_.lstEmailList(box).index(row));
        const EditPolicy policy = EditPolicyOf(session_);
        for (const QPersistentModelIndex &index : selected)
            if (index.isValid() && !EditOne(box, index, policy))
                break;
    });
}

bool ListEditing::EditOne(int box, const QPersistentModelIndex &index, const EditPolicy &policy) {
    const QString old = AddressAt(box, index.row());
    QString answer = old;
    for (bool isOver = false; !isOver;) {
        answer = session_.Boxes.InputBox(u"Please enter the amended e-mail address:"_s,
                                         u"Edit e-mail address"_s, answer);
        if (answer.isEmpty())
            return false;
        const bool isTaken = IsTaken(box, old, answer, policy);
        if (isTaken && index.isValid() && answer != old)
            ReplaceAddress(box, index.row(), answer);
        isOver = isTaken || !policy.AsksAgain;
    }
    return true;
}

bool ListEditing::IsTaken(int box, const QString &old, const QString &address, const EditPolicy &policy) {
    const bool isItself = policy.MayChangeCase && LowerCased(address) == LowerCased(old);
    return (isItself || IsNewAddress(session_, address, lists_.lstEmailList(box))) &&
           IsValidAddress(session_, address, false);
}

void ListEditing::ReplaceAddress(int box, int row, const QString &address) {
    const QString old = lists_.lstEmailList(box).Entry(row);
    int newRow = row;
    const ListStep step(lists_.Undo, u"Edit"_s);
    if (box == kPending) {
        PendingRequest request = lists_.Pending.Request(row);
        request.Address = address;
        lists_.Pending.Replace(row, request);
    } else {
        newRow = lists_.Open.Replace(box, row, address);
        lists_.Selection(box).select(lists_.lstEmailList(box).index(newRow), QItemSelectionModel::Select);
    }
    MakeCurrent(box, newRow);
    StatusMessage(session_,
                  u"Changed ["_s + old + u"] to ["_s + lists_.lstEmailList(box).Entry(newRow) + u']');
}

void ListEditing::DeleteSelected(int box) {
    Trapped(session_, u"Main.cmdListDelete"_s, [&] {
        const QStringList entries = lists_.SelectedEntries(box);
        const QList<int> rows = lists_.SelectedRows(box);
        const ListStep step(lists_.Undo, u"Delete "_s + AddressesText(rows.size()));
        const int next = RowAfter(rows, lists_.Selection(box).currentIndex().row());
        if (box == kPending)
            lists_.Pending.RemoveRows(rows);
        else
            lists_.Open.RemoveRows(box, rows);
        MakeCurrent(box, std::min(next, lists_.lstEmailList(box).Count() - 1));
        for (const QString &entry : entries)
            StatusMessage(session_, u"Deleted ["_s + entry + u"]"_s);
    });
}

void ListEditing::Undo() {
    const QString text = lists_.Undo.UndoText();
    Trapped(session_, u"Main.mnuListsUndo"_s, [&] {
        lists_.Undo.Undo();
        StatusMessage(session_, u"Undone: "_s + text);
    });
}

void ListEditing::Redo() {
    const QString text = lists_.Undo.RedoText();
    Trapped(session_, u"Main.mnuListsRedo"_s, [&] {
        lists_.Undo.Redo();
        StatusMessage(session_, u"Redone: "_s + text);
    });
}

void ListEditing::Search() {
    const QString text = session_.Boxes.InputBox(
        u"Please enter the text you want to search for:\r\n(Can be a full or partial address)"_s,
        u"Find e-mail address"_s, searched_);
    if (text.isEmpty())
        return;
    searched_ = text;
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
        if (!matches.isEmpty())
            MakeCurrent(box, matches.first());
        StatusMessage(session_, u"Search returned "_s + QString::number(matches.size()) +
                                    u" matches for ["_s + text + u"]"_s);
    });
}

QString ListEditing::AddressAt(int box, int row) const {
    return box == kPending ? lists_.Pending.Request(row).Address : lists_.lstEmailList(box).Entry(row);
}

void ListEditing::SelectMeant(int box, const std::function<bool(const QString &)> &isMeant) {
    QList<int> rows;
    for (int row = 0; row < lists_.lstEmailList(box).Count(); ++row)
        if (isMeant(AddressAt(box, row)))
            rows.append(row);
    lists_.SelectRows(box, rows);
    if (!rows.isEmpty())
        MakeCurrent(box, rows.first());
    ReportSelection(box);
}

void ListEditing::SelectDomain() {
    const int box = lists_.VisibleBox();
    const int current = lists_.Selection(box).currentIndex().row();
    const QString domain = session_.Boxes.InputBox(
        u"Please enter the domain whose addresses you want to select:"_s, u"Select by domain"_s,
        current < 0 ? QString() : DomainOf(AddressAt(box, current)));
    const QString wanted = domain.section(u'@', -1).trimmed();
    if (!wanted.isEmpty())
        SelectMeant(box, [&](const QString &address) { return IsOfDomain(address, wanted); });
}

void ListEditing::SelectSimilar(int box) {
    constexpr qsizetype kMostPatterns = 20; // each is held against every entry
    QStringList patterns;
    for (const int row : lists_.SelectedRows(box).mid(0, kMostPatterns))
        patterns.append(AddressAt(box, row));
    SelectMeant(box, [&](const QString &address) {
        return std::any_of(patterns.begin(), patterns.end(),
                           [&](const QString &pattern) { return AreSimilar(address, pattern); });
    });
}

// A view shows its current row.
void ListEditing::MakeCurrent(int box, int row) {
    lists_.Selection(box).setCurrentIndex(lists_.lstEmailList(box).index(row), QItemSelectionModel::NoUpdate);
}

void ListEditing::ShowSelected(bool next) {
    const int box = lists_.VisibleBox();
    const QList<int> rows = lists_.SelectedRows(box);
    if (rows.isEmpty())
        return;
    const int current = lists_.Selection(box).currentIndex().row();
    const auto behind = std::upper_bound(rows.begin(), rows.end(), current);
    const auto at = std::lower_bound(rows.begin(), rows.end(), current);
    if (next)
        MakeCurrent(box, behind == rows.end() ? rows.first() : *behind);
    else
        MakeCurrent(box, at == rows.begin() ? rows.last() : *std::prev(at));
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
            lists_.SelectRows(to, lists_.lstEmailList(to).RowsOf(carried));
        }
        lists_.Open.SetSortOrder(order);
        StatusMessage(session_, order == 1 ? u"E-mail addresses sorted by alphabetical order"_s
                                           : u"E-mail addresses sorted by chronological order"_s);
    });
    return true;
}

void ListEditing::SwapSigns() {
    const QList<int> rows = lists_.SelectedRows(kPending);
    const ListStep step(lists_.Undo, u"Reverse "_s + AddressesText(rows.size()));
    for (int row : rows)
        lists_.Pending.Replace(row, lists_.Pending.Request(row).Reversed());
    Trapped(session_, u"Main.cmdListSwap"_s,
            [&] { StatusMessage(session_, u"Reversed "_s + CountText(static_cast<int>(rows.size()))); });
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
}

void ListEditing::ReportSelection(int box) {
    const int count = lists_.SelectedCount(box);
    Trapped(session_, u"Main.lstEmailList"_s,
            [&] { StatusMessage(session_, u"Selected "_s + CountText(count)); });
}

void ListEditing::TellTransfer(Transfer transfer, int count, const QString &target) {
    const QString done = transfer == Transfer::Move ? u"Moved "_s : u"Copied "_s;
    Trapped(session_, u"Main.mnuLists"_s,
            [&] { StatusMessage(session_, done + CountText(count) + u" to the "_s + target + u" list"_s); });
}

void ListEditing::CurrentToPending(Transfer transfer) {
    const int count = lists_.SelectedCount(lists_.VisibleBox());
    const ListStep step(lists_.Undo, TransferText(transfer, count, u"Pending"_s));
    const bool copied = Trapped(session_, u"Main.mnuListsCurrentCopy"_s, [&] {
        lists_.Pending.AddAll(RequestKind::Subscribe, lists_.SelectedEntries(lists_.VisibleBox()));
    });
    if (copied && transfer == Transfer::Move)
        DeleteSelected(lists_.VisibleBox());
    if (copied)
        TellTransfer(transfer, count, u"pending"_s);
}

void ListEditing::PendingToCurrent(Transfer transfer) {
    const int count = lists_.SelectedCount(kPending);
    const ListStep step(lists_.Undo, TransferText(transfer, count, u"Current"_s));
    const bool copied = Trapped(session_, u"Main.mnuListsPendingCopy"_s, [&] {
        QStringList addresses;
        for (int row : lists_.SelectedRows(kPending))
            addresses.append(lists_.Pending.Request(row).Address);
        const SelectionPause pause(lists_, lists_.VisibleBox());
        lists_.Open.AddToVisibleOnly(addresses);
    });
    if (copied && transfer == Transfer::Move)
        DeleteSelected(kPending);
    if (copied)
        TellTransfer(transfer, count, u"current"_s);
}

} // namespace varlo
