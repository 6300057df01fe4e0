#include "lists/OpenList.h"

#include "core/Preferences.h"
#include "core/Reporting.h"
#include "history/KeepVersion.h"
#include "lists/ListLibrary.h"

#include <QCoreApplication>
#include <QScopeGuard>

namespace varlo {

OpenList::OpenList(Session &session, QObject *parent) : ChangingList(parent), session_(session) {
    for (ListBox &box : boxes_)
        connect(&box, &ListBox::Touched, this, [this] { Touch(); });
}

void OpenList::SetSortOrder(int order) {
    session_.Prefs.ListSortBy = order;
    Q_EMIT SortOrderChanged();
    Touch();
}

int OpenList::VisibleBox() const {
    return session_.Prefs.ListSortBy == 1 ? kAlphabetical : kChronological;
}

void OpenList::MarkSaved() {
    savedRevisions_ = {revision_};
    Touch();
}

void OpenList::MarkUnsaved() {
    revision_ = ++lastRevision_;
    Touch();
}

void OpenList::ReturnTo(quint64 revision) {
    revision_ = revision;
    Touch();
}

void OpenList::Add(const QString &address) {
    // A full alphabetical box must not leave the two with different entries.
    if (Box(kAlphabetical).Model().Count() >= EntryListModel::kMostEntries)
        throw RuntimeError(Overflow);
    for (ListBox &box : boxes_)
        box.Model().Add(address);
    MarkUnsaved();
}

bool OpenList::Remove(const QString &address) {
    const auto removeFirst = [&](int box) {
        const int row = Box(box).Model().FindFirst(address);
        if (row >= 0)
            Box(box).Model().Remove(row);
        return row >= 0;
    };
    const bool found = removeFirst(kChronological);
    removeFirst(kAlphabetical); // whether or not it was found above: the two may differ
    if (found)
        MarkUnsaved();
    return found;
}

int OpenList::Replace(int box, int row, const QString &entry) {
    EntryListModel &model = Box(box).Model();
    const QString old = model.Entry(row);
    const int newRow = model.Replace(row, entry);
    EntryListModel &other = Other(box).Model();
    if (const int otherRow = other.FindExact(old); otherRow >= 0)
        other.Replace(otherRow, entry);
    MarkUnsaved();
    return newRow;
}

void OpenList::RemoveRows(int box, const QList<int> &rows) {
    if (rows.isEmpty())
        return;
    QStringList entries;
    for (int row : rows)
        entries.append(Box(box).Model().Entry(row));
    Box(box).Model().RemoveRows(rows);
    EntryListModel &other = Other(box).Model();
    other.RemoveRows(other.RowsOf(entries));
    MarkUnsaved();
}

void OpenList::ReplaceAll(const QStringList &entries) {
    for (ListBox &box : boxes_)
        box.Model().ReplaceAll(entries);
    MarkUnsaved();
}

void OpenList::AddToVisibleOnly(const QStringList &entries) {
    const bool wasSaved = IsSaved();
    const auto counted = qScopeGuard([&] {
        if (VisibleBox() != kChronological || entries.isEmpty())
            return; // what is to be saved is as before
        revision_ = ++lastRevision_;
        if (wasSaved)
            savedRevisions_.insert(revision_);
    });
    Box(VisibleBox()).Model().AddAll(entries);
}

void OpenList::Fill(const QString &name) {
    for (ListBox &box : boxes_)
        box.Model().SetEntries({});
    partlyLoaded_ = true;
    const QStringList lines = ListLibrary::Read(session_, name);
    const QStringList fitting = lines.mid(0, EntryListModel::kMostEntries); // both boxes share the texts
    for (ListBox &box : boxes_)
        box.Model().SetEntries(fitting);
    if (fitting.size() < lines.size())
        throw RuntimeError(Overflow);
    partlyLoaded_ = false;
}

bool OpenList::Load(const QString &name) {
    const Hold hold(*this);
    isLeaving_ = true;
    const auto left = qScopeGuard([this] { isLeaving_ = false; });
    if (!PromptSaveList())
        return false;
    const QString label = u"Main.cmbMList"_s;
    ErrorTrap trap(session_, label);
    loading_ = true;
    const auto loaded = qScopeGuard([this] { loading_ = false; });
    MarkSaved();
    const Hourglass hourglass(session_.Boxes);
    trap([&] { StatusMessage(session_, u"Loading ["_s + name + u"]..."_s); });
    // Lets the status line paint. The operator's clicks wait until the list is there. The network should
    // wait, too, but not every event loop obeys: what a mail check brings meanwhile stays on the Pending
    // list.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    trap([&] { Fill(name); });
    name_ = name;
    trap([&] { StatusMessage(session_, u"Loaded ["_s + name + u"]"_s); });
    TellKept(label);
    Q_EMIT Loaded();
    return true;
}

bool OpenList::WriteList(const QString &name) {
    ErrorTrap trap(session_, u"Main.WriteList"_s);
    return trap([&] {
        if (partlyLoaded_ && name == name_) {
            keptAs_ = ListLibrary::KeepBackup(session_, name);
            partlyLoaded_ = false;
        }
        const QStringList entries = Box(kChronological).Model().Entries();
        const QString changes = describe_ ? describe_() : QString();
        History::ReplaceKeeping(session_, name, changes.isEmpty() ? u"Save"_s : changes, entries,
                                [&] { ListLibrary::Write(session_, name, entries); });
    });
}

bool OpenList::Save(const QString &name, const QString &label) {
    if (!WriteList(name))
        return false;
    MarkSaved();
    // The list is saved, whether or not the log takes the line.
    Trapped(session_, label, [&] { StatusMessage(session_, u"Saved ["_s + name + u"]"_s); });
    if (!isLeaving_) // else the lines of the next list follow
        TellKept(label);
    Q_EMIT Saved(name);
    return true;
}

// As the last line of all, so that it can be read.
void OpenList::TellKept(const QString &label) {
    const QString kept = std::exchange(keptAs_, {});
    if (!kept.isEmpty())
        Trapped(session_, label,
                [&] { StatusMessage(session_, u"Kept the old file as ["_s + kept + u"]"_s); });
}

bool OpenList::PromptSaveList() {
    if (IsSaved())
        return true;
    const Hold hold(*this);
    const QString question = u"The changes to list ["_s + name_ + u"] have not been saved, save now?"_s;
    if (session_.Boxes.MsgBox(question, BoxButtons::YesNo, BoxIcon::Question) != BoxAnswer::Yes)
        return true;
    return Save(name_, u"Main.PromptSaveList"_s);
}

void OpenList::Rename(const QString &name) {
    name_ = name; // changes that are still unsaved belong to the file under its new name
    Touch();
}

void OpenList::DropChanges() {
    MarkSaved();
}

void OpenList::Close() {
    Box(kChronological).Model().SetEntries({});
    name_.clear();
    MarkSaved();
    Q_EMIT Closed();
}

} // namespace varlo
