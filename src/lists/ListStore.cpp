#include "lists/ListStore.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/ListFile.h"

#include <QCoreApplication>
#include <QScopeGuard>

namespace varlo {

ListStore::ListStore(Session &session, QObject *parent) : QObject(parent), session_(session) {
    for (size_t box = 0; box < boxes_.size(); ++box) {
        const auto order =
            box == kAlphabetical ? EntryListModel::Order::Alphabetical : EntryListModel::Order::Chronological;
        boxes_[box] = new EntryListModel(order, this);
        selections_[box] = new QItemSelectionModel(boxes_[box], this);
        connect(selections_[box], &QItemSelectionModel::selectionChanged, this, &ListStore::UpdateControls);
    }
}

QList<int> ListStore::SelectedRows(int box) const {
    QList<int> rows;
    for (const QItemSelectionRange &range : Selection(box).selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    std::sort(rows.begin(), rows.end());
    return rows;
}

int ListStore::SelectedCount(int box) const {
    int count = 0;
    for (const QItemSelectionRange &range : Selection(box).selection())
        count += range.height();
    return count;
}

QStringList ListStore::SelectedEntries(int box) const {
    QStringList entries;
    for (int row : SelectedRows(box))
        entries.append(lstEmailList(box).Entry(row));
    return entries;
}

void ListStore::SelectRows(int box, const QList<int> &rows) {
    const EntryListModel &model = lstEmailList(box);
    QItemSelection selection;
    for (qsizetype i = 0; i < rows.size();) {
        qsizetype last = i;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.append(QItemSelectionRange(model.index(rows[i]), model.index(rows[last])));
        i = last + 1;
    }
    // Telling what changed from one selection to the next costs their numbers of ranges multiplied: seconds,
    // when every other row was found twice. From an empty one it costs nothing.
    if (selection.size() > 1)
        Selection(box).clearSelection();
    Selection(box).select(selection, QItemSelectionModel::ClearAndSelect);
}

void ListStore::Fill(const QString &name) {
    lstEmailList(kChronological).SetEntries({});
    lstEmailList(kAlphabetical).SetEntries({});
    partlyLoaded_ = true;
    const QStringList lines = ListFile::Read(session_, name);
    const QStringList fitting = lines.mid(0, EntryListModel::kMostEntries); // both boxes share the texts
    lstEmailList(kChronological).SetEntries(fitting);
    lstEmailList(kAlphabetical).SetEntries(fitting);
    if (fitting.size() < lines.size())
        throw RuntimeError(Overflow);
    partlyLoaded_ = false;
}

bool ListStore::Load(const QString &name) {
    if (!PromptSaveList())
        return false;
    ErrorTrap trap(session_, u"Main.cmbMList"_s);
    loading_ = true;
    const auto loaded = qScopeGuard([this] { loading_ = false; });
    ListSaved = true;
    const Hourglass hourglass(session_.Boxes);
    trap([&] { StatusMessage(session_, u"Loading ["_s + name + u"]..."_s); });
    // Lets the status line paint. The operator's clicks wait until the list is there. The network should
    // wait, too, but not every event loop obeys: what a mail check brings meanwhile stays on the Pending
    // list.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    trap([&] { Fill(name); });
    CurrentListName = name;
    trap([&] { StatusMessage(session_, u"Loaded ["_s + name + u"]"_s); });
    UpdateControls();
    return true;
}

bool ListStore::WriteList(const QString &name) {
    ErrorTrap trap(session_, u"Main.WriteList"_s);
    QString backup;
    const bool written = trap([&] {
        if (partlyLoaded_ && name == CurrentListName) {
            backup = ListFile::KeepBackup(session_, name);
            partlyLoaded_ = false;
        }
        ListFile::Write(session_, name, lstEmailList(kChronological).Entries());
    });
    if (!backup.isEmpty())
        trap([&] { StatusMessage(session_, u"Kept the old file as ["_s + backup + u"]"_s); });
    return written;
}

bool ListStore::PromptSaveList() {
    if (ListSaved)
        return true;
    const QString question =
        u"The changes to list ["_s + CurrentListName + u"] have not been saved, save now?"_s;
    if (session_.Boxes.MsgBox(question, BoxButtons::YesNo, BoxIcon::Question) != BoxAnswer::Yes)
        return true;
    if (!WriteList(CurrentListName))
        return false;
    ListSaved = true;
    // The list is saved, whether or not the log takes the line.
    Trapped(session_, u"Main.PromptSaveList"_s,
            [&] { StatusMessage(session_, u"Saved ["_s + CurrentListName + u"]"_s); });
    return true;
}

void ListStore::AddPending(const QString &entry) {
    lstEmailList(kPending).Add(entry);
    SelectLastPending();
}

void ListStore::SelectLastPending() {
    const EntryListModel &pending = lstEmailList(kPending);
    Selection(kPending).setCurrentIndex(pending.index(pending.Count() - 1), QItemSelectionModel::NoUpdate);
}

} // namespace varlo
