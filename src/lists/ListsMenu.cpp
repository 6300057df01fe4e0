#include "lists/ListsMenu.h"

#include "core/Literals.h"
#include "core/MenuEntries.h"
#include "lists/ListEditing.h"
#include "lists/ListStore.h"

#include <QActionGroup>

namespace varlo {

ListsMenu::ListsMenu(Session &session, ListStore &lists, ListEditing &editing, QWidget *parent)
    : QMenu(u"&Lists"_s, parent), session_(session), lists_(lists), editing_(editing) {
    setObjectName(u"mnuLists"_s);
    CreateCurrentMenu();
    CreatePendingMenu();
    current_ = CreateEntryActions(mnuListsCurrent);
    pending_ = CreateEntryActions(mnuListsPending);
    CreateUndoEntries();
    CreateBulkEntries();
    ConnectEntries();
    ConnectEntryActions(current_, false);
    ConnectEntryActions(pending_, true);
}

void ListsMenu::CreateCurrentMenu() {
    mnuListsCurrent = addMenu(u"&Current List"_s);
    mnuListsCurrent->setObjectName(u"mnuListsCurrent"_s);
    mnuListsCurrentCopy[0] = AddEntry(mnuListsCurrent, "mnuListsCurrentCopy_0", u"&Copy to Pending List"_s);
    mnuListsCurrentCopy[1] = AddEntry(mnuListsCurrent, "mnuListsCurrentCopy_1", u"&Move to Pending List"_s);
    mnuListsCurrent->addSeparator();
    mnuSort = mnuListsCurrent->addMenu(u"&Sort"_s);
    mnuSort->setObjectName(u"mnuSort"_s);
    mnuSortOrder[0] = AddEntry(mnuSort, "mnuSortOrder_0", u"&Chronological"_s);
    mnuSortOrder[1] = AddEntry(mnuSort, "mnuSortOrder_1", u"&Alphabetical"_s);
    auto *orders = new QActionGroup(this);
    for (QAction *order : mnuSortOrder) {
        order->setCheckable(true);
        orders->addAction(order);
    }
    mnuListsCurrent->addSeparator();
    mnuListsCurrentSelAll = AddEntry(mnuListsCurrent, "mnuListsCurrentSelAll", u"Select &All"_s);
    mnuListsCurrentDeSelAll = AddEntry(mnuListsCurrent, "mnuListsCurrentDeSelAll", u"Select &None"_s);
}

void ListsMenu::CreatePendingMenu() {
    mnuListsPending = addMenu(u"&Pending List"_s);
    mnuListsPending->setObjectName(u"mnuListsPending"_s);
    mnuListsPendingCopy[0] = AddEntry(mnuListsPending, "mnuListsPendingCopy_0", u"&Copy to Current List"_s);
    mnuListsPendingCopy[1] = AddEntry(mnuListsPending, "mnuListsPendingCopy_1", u"&Move to Current List"_s);
    mnuListsPending->addSeparator();
    mnuListsPendingSelAll = AddEntry(mnuListsPending, "mnuListsPendingSelAll", u"Select &All"_s);
    mnuListsPendingDeSelAll = AddEntry(mnuListsPending, "mnuListsPendingDeSelAll", u"Select &None"_s);
}

// Their names begin with that of their menu: "mnuListsCurrentEdit".
ListsMenu::EntryActions ListsMenu::CreateEntryActions(QMenu *menu) {
    const QString name = menu->objectName();
    menu->addSeparator();
    EntryActions actions;
    actions.Edit = AddEntry(menu, name + u"Edit"_s, u"&Edit"_s);
    actions.Delete = AddEntry(menu, name + u"Delete"_s, u"&Delete"_s);
    actions.Copy = AddEntry(menu, name + u"CopyText"_s, u"Cop&y"_s);
    actions.Similar = AddEntry(menu, name + u"Similar"_s, u"&Find Similar"_s);
    return actions;
}

void ListsMenu::ConnectEntryActions(const EntryActions &actions, bool isPending) {
    const auto box = [this, isPending] { return isPending ? int(kPending) : lists_.VisibleBox(); };
    connect(actions.Edit, &QAction::triggered, this, [this, box] { editing_.EditSelected(box()); });
    connect(actions.Delete, &QAction::triggered, this, [this, box] { editing_.DeleteSelected(box()); });
    connect(actions.Copy, &QAction::triggered, this, [this, isPending] { Q_EMIT CopyWanted(isPending); });
    connect(actions.Similar, &QAction::triggered, this, [this, box] { editing_.SelectSimilar(box()); });
}

void ListsMenu::CreateUndoEntries() {
    AddLine(this, "mnuListsLine1");
    mnuListsUndo = AddEntry(this, "mnuListsUndo", u"&Undo"_s);
    mnuListsUndo->setShortcut(u"Ctrl+Z"_s);
    mnuListsRedo = AddEntry(this, "mnuListsRedo", u"&Redo"_s);
    mnuListsRedo->setShortcut(u"Ctrl+Y"_s);
    AddLine(this, "mnuListsLine2");
    mnuListsSelectDomain = AddEntry(this, "mnuListsSelectDomain", u"Select by &Domain..."_s);
    mnuListsHistory = AddEntry(this, "mnuListsHistory", u"&History..."_s);
}

void ListsMenu::CreateBulkEntries() {
    AddLine(this, "mnuListsLine3");
    mnuListsImport = AddEntry(this, "mnuListsImport", u"&Import Addresses..."_s);
    mnuListsImport->setShortcut(u"Ctrl+I"_s);
    mnuListsExport = AddEntry(this, "mnuListsExport", u"&Export..."_s);
    mnuListsCompare = AddEntry(this, "mnuListsCompare", u"Co&mpare..."_s);
    connect(mnuListsImport, &QAction::triggered, this, &ListsMenu::ImportWanted);
    connect(mnuListsExport, &QAction::triggered, this, &ListsMenu::ExportWanted);
    connect(mnuListsCompare, &QAction::triggered, this, &ListsMenu::CompareWanted);
}

void ListsMenu::ConnectEntries() {
    using Transfer = ListEditing::Transfer;
    for (int i : {0, 1}) {
        const auto transfer = static_cast<Transfer>(i);
        connect(mnuListsCurrentCopy[i], &QAction::triggered, this,
                [this, transfer] { editing_.CurrentToPending(transfer); });
        connect(mnuListsPendingCopy[i], &QAction::triggered, this,
                [this, transfer] { editing_.PendingToCurrent(transfer); });
        connect(mnuSortOrder[i], &QAction::triggered, this, [this, i] {
            editing_.ChangeSortOrder(i);
            // Also when the operator kept the old order: the click has moved the check mark.
            ShowSortOrder();
        });
    }
    connect(mnuListsUndo, &QAction::triggered, this, [this] { editing_.Undo(); });
    connect(mnuListsRedo, &QAction::triggered, this, [this] { editing_.Redo(); });
    connect(mnuListsSelectDomain, &QAction::triggered, this, [this] { editing_.SelectDomain(); });
    connect(mnuListsHistory, &QAction::triggered, this, &ListsMenu::HistoryWanted);
    connect(mnuListsCurrentSelAll, &QAction::triggered, this,
            [this] { editing_.SelectAll(lists_.VisibleBox()); });
    connect(mnuListsCurrentDeSelAll, &QAction::triggered, this,
            [this] { editing_.SelectNone(lists_.VisibleBox()); });
    connect(mnuListsPendingSelAll, &QAction::triggered, this, [this] { editing_.SelectAll(kPending); });
    connect(mnuListsPendingDeSelAll, &QAction::triggered, this, [this] { editing_.SelectNone(kPending); });
}

void ListsMenu::ShowSortOrder() {
    mnuSortOrder[lists_.VisibleBox() == kAlphabetical ? 1 : 0]->setChecked(true);
}

// The step in the text: "Undo Delete 3 Addresses".
void ListsMenu::ShowStep(QAction *entry, const QString &caption, QString step) {
    entry->setText(step.isEmpty() ? caption : caption + u' ' + step.replace(u'&', u"&&"_s));
    entry->setEnabled(!step.isEmpty());
}

void ListsMenu::UpdateControls() {
    const bool hasCurrent = lists_.lstEmailList(kChronological).Count() > 0;
    const bool hasCurrentSelection = lists_.SelectedCount(lists_.VisibleBox()) > 0;
    const bool hasPendingSelection = lists_.SelectedCount(kPending) > 0;
    mnuListsCurrent->setEnabled(hasCurrent);
    mnuListsImport->setEnabled(!lists_.Open.Name().isEmpty());
    mnuListsExport->setEnabled(hasCurrent || lists_.Pending.Count() > 0);
    mnuListsCompare->setEnabled(!lists_.Open.Name().isEmpty());
    mnuSort->setEnabled(hasCurrent);
    mnuListsSelectDomain->setEnabled(hasCurrent);
    for (QAction *entry : {mnuListsCurrentCopy[0], mnuListsCurrentCopy[1], mnuListsCurrentDeSelAll,
                           current_.Edit, current_.Delete, current_.Copy, current_.Similar})
        entry->setEnabled(hasCurrentSelection);
    mnuListsPending->setEnabled(lists_.Pending.Count() > 0);
    for (QAction *entry : {mnuListsPendingCopy[0], mnuListsPendingCopy[1], mnuListsPendingDeSelAll,
                           pending_.Edit, pending_.Delete, pending_.Copy, pending_.Similar})
        entry->setEnabled(hasPendingSelection);
    ShowStep(mnuListsUndo, u"&Undo"_s, lists_.Undo.UndoText());
    ShowStep(mnuListsRedo, u"&Redo"_s, lists_.Undo.RedoText());
}

} // namespace varlo
