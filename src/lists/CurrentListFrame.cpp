#include "lists/CurrentListFrame.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/EntryListView.h"
#include "lists/ListEditing.h"
#include "lists/ListFile.h"
#include "lists/ListManagement.h"
#include "lists/ListStore.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>

namespace varlo {

CurrentListFrame::CurrentListFrame(Session &session, ListStore &lists, ListEditing &editing, QWidget *parent)
    : QGroupBox(u"Current List"_s, parent), session_(session), lists_(lists), editing_(editing) {
    setObjectName(u"fraCurrent"_s);
    CreateControls();
    LayOutControls();
    ConnectControls();
}

void CurrentListFrame::CreateControls() {
    lblCurrentList = new QLabel(u"&Current List"_s, this);
    lblCurrentList->setObjectName(u"lblCurrentList"_s);
    cmbMList = new QComboBox(this);
    cmbMList->setObjectName(u"cmbMList"_s);
    cmbMList->setToolTip(u"The mailing list that is open"_s);
    cmbMList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbMList->setMinimumContentsLength(12);
    lblCurrentList->setBuddy(cmbMList);
    cmdFileNew = NewButton(this, "cmdFileNew", u"Ne&w"_s, u"Create new mailing list"_s, u"new");
    cmdFileRename = NewButton(this, "cmdFileRename", u"Re&name"_s, u"Rename current list"_s, u"rename");
    cmdFileDelete = NewButton(this, "cmdFileDelete", u"&Delete"_s, u"Delete current list"_s, u"delete");
    cmdFileSave = NewButton(this, "cmdFileSave", u"&Save"_s, u"Save current list"_s, u"save");
    chronological_ = new EntryListView(lists_, kChronological, u"Current list, chronological"_s, this);
    alphabetical_ = new EntryListView(lists_, kAlphabetical, u"Current list, alphabetical"_s, this);
    cmdListEdit = NewButton(this, "cmdListEdit_0", u"Edi&t"_s, u"Edit selected items"_s, u"edit");
    cmdListDelete = NewButton(this, "cmdListDelete_0", u"Delete"_s, u"Delete selected items"_s, u"delete");
    cmdListFind = NewButton(this, "cmdListFind", u"Sea&rch"_s, u"Search through list"_s, u"search");
    cmdListSort = NewButton(this, "cmdListSort", u"S&ort"_s, u"Change sort order"_s, u"sort");
}

void CurrentListFrame::LayOutControls() {
    auto *chooser = new QHBoxLayout;
    chooser->addWidget(lblCurrentList);
    chooser->addWidget(cmbMList, 1);
    auto *fileButtons = new QHBoxLayout;
    for (QPushButton *button : {cmdFileNew, cmdFileRename, cmdFileDelete, cmdFileSave})
        fileButtons->addWidget(button);
    auto *listButtons = new QHBoxLayout;
    for (QPushButton *button : {cmdListEdit, cmdListDelete, cmdListFind, cmdListSort})
        listButtons->addWidget(button);
    auto *column = new QVBoxLayout(this);
    column->addLayout(chooser);
    column->addLayout(fileButtons);
    column->addWidget(chronological_, 1);
    column->addWidget(alphabetical_, 1);
    column->addLayout(listButtons);
    ShowSortOrder();
}

void CurrentListFrame::ConnectControls() {
    connect(cmbMList, &QComboBox::currentIndexChanged, this, &CurrentListFrame::OnChosen);
    connect(cmbMList, &QComboBox::activated, this, [this] {
        // Choosing the open list again loads it again; a choice that changed the index has been loaded
        // already.
        if (!loadedByChange_)
            cmbMList_Click();
    });
    connect(cmdFileNew, &QPushButton::clicked, this, &CurrentListFrame::cmdFileNew_Click);
    connect(cmdFileRename, &QPushButton::clicked, this, &CurrentListFrame::cmdFileRename_Click);
    connect(cmdFileDelete, &QPushButton::clicked, this, &CurrentListFrame::cmdFileDelete_Click);
    connect(cmdFileSave, &QPushButton::clicked, this, &CurrentListFrame::Save);
    connect(cmdListEdit, &QPushButton::clicked, this, [this] { editing_.EditSelected(lists_.VisibleBox()); });
    connect(cmdListDelete, &QPushButton::clicked, this,
            [this] { editing_.DeleteSelected(lists_.VisibleBox()); });
    connect(cmdListFind, &QPushButton::clicked, this, [this] { editing_.Search(); });
    connect(cmdListSort, &QPushButton::clicked, this,
            [this] { Q_EMIT SortMenuWanted(cmdListSort->mapToGlobal(QPoint(0, cmdListSort->height()))); });
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, cmdFileSave, &QPushButton::click);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, cmdListFind, &QPushButton::click);
    for (EntryListView *view : {chronological_, alphabetical_}) {
        connect(view, &EntryListView::SelectionTouched, this,
                [this] { editing_.ReportSelection(lists_.VisibleBox()); });
        connect(view, &EntryListView::DeleteWanted, cmdListDelete, &QPushButton::click);
        connect(view, &EntryListView::EditWanted, cmdListEdit, &QPushButton::click);
        connect(view, &EntryListView::MenuWanted, this, &CurrentListFrame::ContextMenuWanted);
    }
}

void CurrentListFrame::RefreshListNames() {
    const QSignalBlocker quiet(cmbMList);
    cmbMList->clear();
    cmbMList->addItems(ListFile::Names(session_));
    cmbMList->setCurrentIndex(-1);
}

void CurrentListFrame::ChooseList(int index) {
    if (index == cmbMList->currentIndex())
        cmbMList_Click();
    else
        cmbMList->setCurrentIndex(index);
}

int CurrentListFrame::ChosenIndex() const {
    return cmbMList->currentIndex();
}

QStringList CurrentListFrame::ListNames() const {
    QStringList names;
    for (int i = 0; i < cmbMList->count(); ++i)
        names << cmbMList->itemText(i);
    return names;
}

QString CurrentListFrame::ChosenName() const {
    return cmbMList->currentText();
}

void CurrentListFrame::ChooseName(const QString &name) {
    const int index = cmbMList->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0)
        ShowOpenList();
    else
        ChooseList(index);
}

// The list that is open stays open, and the chooser says so: a save goes to the list that it names.
void CurrentListFrame::ShowOpenList() {
    const QSignalBlocker quiet(cmbMList);
    cmbMList->setCurrentIndex(
        cmbMList->findText(lists_.CurrentListName, Qt::MatchExactly | Qt::MatchCaseSensitive));
    lists_.UpdateControls();
}

void CurrentListFrame::OnChosen(int index) {
    if (index < 0)
        return;
    cmbMList_Click();
    loadedByChange_ = true;
    QTimer::singleShot(0, this, [this] { loadedByChange_ = false; });
}

void CurrentListFrame::cmbMList_Click() {
    if (!lists_.Load(cmbMList->currentText()))
        ShowOpenList();
}

// Says so when there is no list to work on.
bool CurrentListFrame::HasList(const QString &name) {
    if (name.isEmpty())
        session_.Boxes.MsgBox(u"Please create or choose a mailing list first."_s, BoxButtons::Ok,
                              BoxIcon::Exclamation);
    return !name.isEmpty();
}

bool CurrentListFrame::Save() {
    // The chooser names no list when the file of the open one has vanished; its entries are still here.
    const QString name = ChosenName().isEmpty() ? lists_.CurrentListName : ChosenName();
    if (!HasList(name) || !lists_.WriteList(name))
        return false;
    lists_.ListSaved = true;
    Trapped(session_, u"Main.cmdFileSave"_s, [&] { StatusMessage(session_, u"Saved ["_s + name + u"]"_s); });
    lists_.UpdateControls();
    return true;
}

void CurrentListFrame::cmdFileNew_Click() {
    const auto name = CreateList(session_);
    if (!name)
        return;
    RefreshListNames();
    lists_.UpdateControls();
    ChooseName(*name);
    if (!ListNames().contains(*name))
        return; // it could not be created, which has been reported
    Trapped(session_, u"Main.cmdFileNew"_s,
            [&] { StatusMessage(session_, u"Created mailing list ["_s + *name + u"]"_s); });
}

void CurrentListFrame::cmdFileRename_Click() {
    const auto name = RenameList(session_, lists_, ChosenName());
    if (!name)
        return;
    RefreshListNames();
    ChooseName(*name);
    lists_.ListSaved = true;
}

void CurrentListFrame::cmdFileDelete_Click() {
    const QString name = ChosenName();
    if (!HasList(name) || !DeleteList(session_, name))
        return;
    lists_.ListSaved = true; // before another list is loaded, which would ask about the changes that are gone
    RefreshListNames();
    lists_.UpdateControls();
    if (cmbMList->count() > 0) {
        ChooseList(0);
    } else {
        // Wanted: the alphabetical box keeps the entries of the last list, a last look at what was deleted.
        lists_.lstEmailList(kChronological).SetEntries({});
        lists_.CurrentListName.clear();
        lists_.UpdateControls();
    }
    Trapped(session_, u"Main.cmdFileDelete"_s,
            [&] { StatusMessage(session_, u"Deleted mailing list ["_s + name + u"]"_s); });
}

void CurrentListFrame::ShowSortOrder() {
    const bool alphabetical = lists_.VisibleBox() == kAlphabetical;
    chronological_->setVisible(!alphabetical);
    alphabetical_->setVisible(alphabetical);
}

void CurrentListFrame::Apply(const ControlStates &states) {
    cmbMList->setEnabled(states.cmbMList);
    cmdFileRename->setEnabled(states.OpenList);
    for (QWidget *control :
         std::initializer_list<QWidget *>{cmdListFind, cmdListSort, chronological_, alphabetical_})
        control->setEnabled(states.Current);
    cmdListEdit->setEnabled(states.CurrentSelection);
    cmdListDelete->setEnabled(states.CurrentSelection);
}

} // namespace varlo
