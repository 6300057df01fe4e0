// The two lists side by side with their menu: what the main window shows in its middle.
#pragma once

#include "lists/ListEditing.h"
#include "lists/ListStore.h"
#include "lists/PendingProcessing.h"

#include <QPointer>
#include <QWidget>

class QSplitter;

namespace varlo {

class BulkWindows;
class CurrentListFrame;
class ListsMenu;
class PendingListFrame;

// Owns the lists and everything that works on them, and joins the parts. The window around it hears by
// signals what it has to show itself.
class ListsPage : public QWidget {
    Q_OBJECT

public:
    ListsPage(Session &session, MakeMailer makeMailer, QWidget *parent = nullptr);

    ListStore &Lists() { return lists_; }
    const ListStore &Lists() const { return lists_; }
    ListEditing &Editing() { return editing_; }
    PendingProcessing &Processing() { return processing_; }
    CurrentListFrame &Current() const { return *fraCurrent_; }
    PendingListFrame &Pending() const { return *fraPending_; }
    ListsMenu &Menu() const { return *mnuLists_; }
    QSplitter &Splitter() const { return *splitter_; }

    // Shows the sort order in force: after the setting was loaded.
    void ShowSortOrder();
    // The controls follow the lists. Happens by itself after every change.
    void UpdateControls();

    // Processes the Pending list as its button does, for a mailbox check that the operator does not wait for:
    // at once, or when the run, the load or the question that is under way has ended. The requests so reach
    // the list that is open then.
    void ProcessWhenFree();

    // Asks what has to be asked before the lists go. False when the operator keeps the program open.
    bool MayClose();

Q_SIGNALS:
    void CountsChanged(int current, int pending);
    // The caption that the window is to show while addresses are captured; empty: its own again.
    void CaptionWanted(const QString &caption);
    void MailCheckWanted();
    // While a notification is sent the window is alive, but the lists are not for editing.
    void LockedChanged(bool locked);

private:
    void LayOutControls();
    void ConnectControls();
    void ConnectMenus();
    void SetLocked(bool locked);
    void PlaceFocus(const QWidget &instead);
    void ProcessIfFree();
    void mnuListsHistory_Click();
    void BringBack(const QString &list, const QStringList &entries);
    bool MayLeaveOpenList();

    Session &session_;
    ListStore lists_;
    ListEditing editing_;
    PendingProcessing processing_;
    QSplitter *splitter_;
    CurrentListFrame *fraCurrent_;
    PendingListFrame *fraPending_;
    ListsMenu *mnuLists_;
    BulkWindows *bulk_;
    QPointer<QWidget> focusBeforeLock_;
    bool isProcessingWanted_ = false;
};

} // namespace varlo
