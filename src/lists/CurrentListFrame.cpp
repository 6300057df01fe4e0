#include "lists/CurrentListFrame.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/NameChooser.h"
#include "core/Reporting.h"
#include "lists/EntryListView.h"
#include "lists/ListEditing.h"
#include "lists/ListLibrary.h"
#include "lists/ListManagement.h"
#include "lists/ListStore.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>

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
    cmbMList = new NameChooser(12, this, u"The mailing list that is open"_s);
    cmbMList->setObjectName(u"cmbMList"_s);
    lblCurrentList->setBuddy(cmbMList);
    cmdFileNew = NewButton(this, "cmdFileNew", u"Ne&w"_s, u"Create new mailing list"_s, u"new");
    cmdFileRename = NewButton(this, "cmdFileRename", u"Re&name"_s, u"Rename current list"_s, u"rename");
    cmdFileDelete = NewButton(this, "cmdFileDelete", u"&Delete"_s, u"Delete current list"_s, u"delete");
    cmdFileSave = NewButton(this, "cmdFileSave", u"&Save"_s, u"Save current list"_s, u"save");
    txtFind = new QLineEdit(this);
    txtFind->setObjectName(u"txtFind"_s);
    txtFind->setPlaceholderText(u"Find as you type"_s);
    txtFind->setAccessibleName(u"Find in the current list"_s);
    txtFind->setClearButtonEnabled(true);
    lblFound = new QLabel(this);
    lblFound->setObjectName(u"lblFound"_s);
    chronological_ = new EntryListView(lists_, kChronological, u"Current list, chronological"_s, this);
    alphabetical_ = new EntryListView(lists_, kAlphabetical, u"Current list, alphabetical"_s, this);
    cmdListEdit = NewButton(this, "cmdListEdit_0", u"Edi&t"_s, u"Edit selected items"_s, u"edit");
    cmdListDelete = NewButton(this, "cmdListDelete_0", u"Delete"_s, u"Delete selected items"_s, u"delete");
    cmdListFind = NewButton(this, "cmdListFind", u"Sea&rch"_s, u"Search through list"_s, u"search");
    cmdListSort = NewButton(this, "cmdListSort", u"S&ort"_s, u"Change sort order"_s, u"sort");
}

void CurrentListFrame::LayOutControls() {
    auto *chooser = new QHBoxLayout;
    chooser->addStrut(cmdFileNew->sizeHint().height()); // so the rows of both frames are on one line
    chooser->addWidget(lblCurrentList);
    chooser->addWidget(cmbMList, 1);
    auto *fileButtons = new QHBoxLayout;
    for (QPushButton *button : {cmdFileNew, cmdFileRename, cmdFileDelete, cmdFileSave})
        fileButtons->addWidget(button);
    auto *find = new QHBoxLayout;
    find->addWidget(txtFind, 1);
    find->addWidget(lblFound);
    auto *listButtons = new QHBoxLayout;
    for (QPushButton *button : {cmdListEdit, cmdListDelete, cmdListFind, cmdListSort})
        listButtons->addWidget(button);
    auto *column = new QVBoxLayout(this);
    column->addLayout(chooser);
    column->addLayout(fileButtons);
    column->addLayout(find);
    column->addWidget(chronological_, 1);
    column->addWidget(alphabetical_, 1);
    column->addLayout(listButtons);
    ShowSortOrder();
}

void CurrentListFrame::ConnectControls() {
    // Also when the open list is chosen again, which loads it again.
    connect(cmbMList, &QComboBox::activated, this, &CurrentListFrame::cmbMList_Click);
    connect(cmdFileNew, &QPushButton::clicked, this, &CurrentListFrame::cmdFileNew_Click);
    connect(cmdFileRename, &QPushButton::clicked, this, &CurrentListFrame::cmdFileRename_Click);
    connect(cmdFileDelete, &QPushButton::clicked, this, &CurrentListFrame::cmdFileDelete_Click);
    connect(cmdFileSave, &QPushButton::clicked, this, &CurrentListFrame::Save);
    connect(cmdListEdit, &QPushButton::clicked, this, [this] { editing_.EditSelected(lists_.VisibleBox()); });
    connect(cmdListDelete, &QPushButton::clicked, this,
            [this] { editing_.DeleteSelected(lists_.VisibleBox()); });
    connect(cmdListFind, &QPushButton::clicked, this, [this] {
        txtFind->clear(); // the matches are selected among all addresses
        editing_.Search();
    });
    connect(cmdListSort, &QPushButton::clicked, this,
            [this] { Q_EMIT SortMenuWanted(cmdListSort->mapToGlobal(QPoint(0, cmdListSort->height()))); });
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, cmdFileSave, &QPushButton::click);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, cmdListFind, &QPushButton::click);
    for (const bool next : {true, false})
        connect(new QShortcut(QKeySequence(next ? u"F3"_s : u"Shift+F3"_s), this), &QShortcut::activated,
                this, [this, next] { editing_.ShowSelected(next); });
    ConnectViews();
    ConnectFindBox();
}

void CurrentListFrame::ConnectViews() {
    for (EntryListView *view : {chronological_, alphabetical_}) {
        connect(view, &EntryListView::SelectionTouched, this,
                [this] { editing_.ReportSelection(lists_.VisibleBox()); });
        connect(view, &EntryListView::DeleteWanted, cmdListDelete, &QPushButton::click);
        connect(view, &EntryListView::EditWanted, cmdListEdit, &QPushButton::click);
        connect(view, &EntryListView::MenuWanted, this, &CurrentListFrame::ContextMenuWanted);
        connect(view, &EntryListView::FoundAnew, this, &CurrentListFrame::ShowFoundCount);
    }
}

void CurrentListFrame::ConnectFindBox() {
    connect(txtFind, &QLineEdit::textChanged, this, &CurrentListFrame::Narrow);
    connect(&lists_.Open, &OpenList::Loaded, txtFind, &QLineEdit::clear);
    auto *find = new QShortcut(QKeySequence(u"Ctrl+Shift+F"_s), this);
    connect(find, &QShortcut::activated, txtFind, [this] { txtFind->setFocus(Qt::ShortcutFocusReason); });
    auto *showAll = new QShortcut(QKeySequence(Qt::Key_Escape), txtFind);
    showAll->setContext(Qt::WidgetShortcut);
    connect(showAll, &QShortcut::activated, txtFind, &QLineEdit::clear);
    auto *toTheFound = new QShortcut(QKeySequence(Qt::Key_Down), txtFind);
    toTheFound->setContext(Qt::WidgetShortcut);
    connect(toTheFound, &QShortcut::activated, this, [this] {
        ListBox()->setFocus(Qt::ShortcutFocusReason);
        if (!ListBox()->selectionModel()->hasSelection())
            ListBox()->setCurrentIndex(ListBox()->model()->index(0, 0));
    });
}

void CurrentListFrame::RefreshListNames() {
    cmbMList->clear();
    cmbMList->addItems(ListLibrary::Names(session_));
    cmbMList->setCurrentIndex(-1);
}

void CurrentListFrame::TakeNewNames() {
    RefreshListNames();
    ShowOpenList();
}

void CurrentListFrame::ChooseList(int index) {
    cmbMList->setCurrentIndex(index);
    cmbMList_Click();
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

bool CurrentListFrame::OpenListOf(const QString &name) {
    ChooseName(name);
    return lists_.Open.Name() == name;
}

// The list that is open stays open, and the chooser says so: a save goes to the list that it names.
void CurrentListFrame::ShowOpenList() {
    cmbMList->setCurrentIndex(
        cmbMList->findText(lists_.Open.Name(), Qt::MatchExactly | Qt::MatchCaseSensitive));
}

void CurrentListFrame::cmbMList_Click() {
    if (!lists_.Open.Load(cmbMList->currentText()))
        ShowOpenList();
}

bool CurrentListFrame::Save() {
    // The chooser names no list when the file of the open one has vanished; its entries are still here.
    const QString name = ChosenName().isEmpty() ? lists_.Open.Name() : ChosenName();
    return HasList(session_, name) && lists_.Open.Save(name, u"Main.cmdFileSave"_s);
}

void CurrentListFrame::cmdFileNew_Click() {
    const OpenList::Hold hold(lists_.Open);
    const auto name = CreateList(session_);
    if (!name)
        return;
    RefreshListNames();
    ChooseName(*name);
    if (!ListNames().contains(*name))
        return; // it could not be created, which has been reported
    Trapped(session_, u"Main.cmdFileNew"_s,
            [&] { StatusMessage(session_, u"Created mailing list ["_s + *name + u"]"_s); });
    Q_EMIT ListCreated();
}

void CurrentListFrame::cmdFileRename_Click() {
    const OpenList::Hold hold(lists_.Open);
    const auto name = RenameList(session_, lists_.Open, ChosenName());
    if (!name)
        return;
    RefreshListNames();
    ChooseName(*name); // saved then, unless the operator wanted the changes saved and that failed
}

void CurrentListFrame::cmdFileDelete_Click() {
    const OpenList::Hold hold(lists_.Open);
    const QString name = ChosenName();
    if (!HasList(session_, name) || !DeleteList(session_, name))
        return;
    // Before another list is loaded, which would ask about the changes that are gone.
    lists_.Open.DropChanges();
    RefreshListNames();
    if (cmbMList->count() > 0)
        ChooseList(0);
    else
        lists_.Open.Close();
    Trapped(session_, u"Main.cmdFileDelete"_s,
            [&] { StatusMessage(session_, u"Deleted mailing list ["_s + name + u"]"_s); });
}

void CurrentListFrame::ShowSortOrder() {
    const bool alphabetical = lists_.VisibleBox() == kAlphabetical;
    chronological_->setVisible(!alphabetical);
    alphabetical_->setVisible(alphabetical);
    Narrow();
}

// The order that is not shown need not be searched.
void CurrentListFrame::Narrow() {
    for (EntryListView *view : {chronological_, alphabetical_})
        view->Narrow(view == ListBox() ? txtFind->text() : QString());
    ShowFoundCount();
}

// Who presses "Delete" should know of what he has selected and does not see.
void CurrentListFrame::ShowFoundCount() {
    const auto *view = lists_.VisibleBox() == kAlphabetical ? alphabetical_ : chronological_;
    const QLocale locale;
    QString text = locale.toString(view->ShownCount()) + u" of "_s +
                   locale.toString(lists_.lstEmailList(lists_.VisibleBox()).Count());
    if (const int hidden = view->HiddenSelectedCount(); hidden > 0)
        text += u", "_s + locale.toString(hidden) + u" selected not shown"_s;
    lblFound->setText(text);
    lblFound->setVisible(!txtFind->text().isEmpty());
}

EntryListView *CurrentListFrame::ListBox() const {
    return lists_.VisibleBox() == kAlphabetical ? alphabetical_ : chronological_;
}

void CurrentListFrame::UpdateControls() {
    const int visible = lists_.VisibleBox();
    const bool hasEntries = lists_.lstEmailList(kChronological).Count() > 0;
    const bool hasSelection = lists_.SelectedCount(visible) > 0;
    for (EntryListView *view : {chronological_, alphabetical_})
        view->SetHint(ChosenName().isEmpty() ? u"There is no list yet. Press \"New\" to create one."_s
                                             : u"This list is empty. Add addresses on the right, then press "
                                               "\"<<< Process Pending List\"."_s);
    cmbMList->setEnabled(cmbMList->count() > 0);
    cmdFileRename->setEnabled(!ChosenName().isEmpty());
    for (QWidget *control :
         std::initializer_list<QWidget *>{txtFind, cmdListFind, cmdListSort, chronological_, alphabetical_})
        control->setEnabled(hasEntries);
    ShowFoundCount();
    cmdListEdit->setEnabled(hasSelection);
    cmdListDelete->setEnabled(hasSelection);
}

} // namespace varlo
