// The menu "Lists" with its two sub-menus, which also pop up over the list boxes.
#pragma once

#include "core/Session.h"

#include <QMenu>

namespace varlo {

class ListEditing;
class ListStore;

class ListsMenu : public QMenu {
    Q_OBJECT

public:
    ListsMenu(Session &session, ListStore &lists, ListEditing &editing, QWidget *parent = nullptr);

    QMenu *CurrentMenu() const { return mnuListsCurrent; }
    QMenu *PendingMenu() const { return mnuListsPending; }
    QMenu *SortMenu() const { return mnuSort; }

    // Checks the entry of the sort order in force.
    void ShowSortOrder();
    void UpdateControls();

Q_SIGNALS:
    void ImportWanted();
    void ExportWanted();
    void CompareWanted();
    void HistoryWanted(); // mnuListsHistory
    // The selected entries of the Pending list, or of the visible Current box.
    void CopyWanted(bool isPending);

private:
    // What is done to the selected entries where the menu pops up.
    struct EntryActions {
        QAction *Edit = nullptr;
        QAction *Delete = nullptr;
        QAction *Copy = nullptr;
        QAction *Similar = nullptr;
    };

    void CreateCurrentMenu();
    void CreatePendingMenu();
    void CreateBulkEntries();
    void CreateUndoEntries();
    EntryActions CreateEntryActions(QMenu *menu);
    void ConnectEntryActions(const EntryActions &actions, bool isPending);
    void ConnectEntries();
    static void ShowStep(QAction *entry, const QString &caption, QString step);

    Session &session_;
    ListStore &lists_;
    ListEditing &editing_;
    QMenu *mnuListsCurrent = nullptr;
    QAction *mnuListsCurrentCopy[2] = {};
    QMenu *mnuSort = nullptr;
    QAction *mnuSortOrder[2] = {};
    QAction *mnuListsCurrentSelAll = nullptr;
    QAction *mnuListsCurrentDeSelAll = nullptr;
    EntryActions current_;
    QMenu *mnuListsPending = nullptr;
    QAction *mnuListsPendingCopy[2] = {};
    QAction *mnuListsPendingSelAll = nullptr;
    QAction *mnuListsPendingDeSelAll = nullptr;
    QAction *mnuListsImport = nullptr;
    QAction *mnuListsExport = nullptr;
    QAction *mnuListsCompare = nullptr;
    EntryActions pending_;
    QAction *mnuListsSelectDomain = nullptr;
    QAction *mnuListsUndo = nullptr;
    QAction *mnuListsRedo = nullptr;
    QAction *mnuListsHistory = nullptr;
};

} // namespace varlo
