// The frame "Current List": the list chooser with its file buttons, and the open list with its own buttons.
#pragma once

#include "core/Session.h"

#include <QGroupBox>

class QLabel;
class QLineEdit;
class QPushButton;

namespace varlo {

class EntryListView;
class ListEditing;
class ListStore;
class NameChooser;

class CurrentListFrame : public QGroupBox {
    Q_OBJECT

public:
    CurrentListFrame(Session &session, ListStore &lists, ListEditing &editing, QWidget *parent = nullptr);

    // Refills the chooser with the names of the list files; none is chosen then.
    void RefreshListNames();
    // There are other list files than the chooser names; the open list stays open.
    void TakeNewNames();
    // Chooses and so loads a list, also when it is the one that is open.
    void ChooseList(int index);
    // The same by its name. False when it is not open then: there is none of the name, or the operator wanted the
    // list that is left saved and that failed.
    bool OpenListOf(const QString &name);
    int ChosenIndex() const;
    QStringList ListNames() const;
    QString ChosenName() const;

    // Saves the open list. False when that failed (and was reported).
    bool Save();

    // Shows the list box of the order in force and hides the other.
    void ShowSortOrder();
    void UpdateControls();
    // The one that is shown.
    EntryListView *ListBox() const;

Q_SIGNALS:
    // The sort menu is to pop up at `position` (of the screen).
    void SortMenuWanted(const QPoint &position);
    void ContextMenuWanted(const QPoint &position);
    // The operator has made a list, and it is open.
    void ListCreated();

private:
    void CreateControls();
    void LayOutControls();
    void ConnectControls();
    void ConnectViews();
    void ConnectFindBox();

    void cmbMList_Click();
    void ChooseName(const QString &name);
    void ShowOpenList();
    void Narrow();
    void ShowFoundCount();
    void cmdFileNew_Click();
    void cmdFileRename_Click();
    void cmdFileDelete_Click();

    Session &session_;
    ListStore &lists_;
    ListEditing &editing_;
    QLabel *lblCurrentList = nullptr;
    NameChooser *cmbMList = nullptr;
    QPushButton *cmdFileNew = nullptr;
    QPushButton *cmdFileRename = nullptr;
    QPushButton *cmdFileDelete = nullptr;
    QPushButton *cmdFileSave = nullptr;
    QLineEdit *txtFind = nullptr;
    QLabel *lblFound = nullptr;
    EntryListView *chronological_ = nullptr; // lstEmailList_0
    EntryListView *alphabetical_ = nullptr;  // lstEmailList_1
    QPushButton *cmdListEdit = nullptr;
    QPushButton *cmdListDelete = nullptr;
    QPushButton *cmdListFind = nullptr;
    QPushButton *cmdListSort = nullptr;
};

} // namespace varlo
