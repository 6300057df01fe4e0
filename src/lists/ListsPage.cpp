#include "lists/ListsPage.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "history/frmHistory.h"
#include "lists/BulkWindows.h"
#include "lists/CurrentListFrame.h"
#include "lists/EntryListView.h"
#include "lists/ListLibrary.h"
#include "lists/ListsMenu.h"
#include "lists/PendingListFrame.h"
#include "lists/UnsavedOffer.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace varlo {

ListsPage::ListsPage(Session &session, MakeMailer makeMailer, QWidget *parent)
    : QWidget(parent), session_(session), lists_(session), editing_(session, lists_),
      processing_(session, lists_, std::move(makeMailer)), splitter_(new QSplitter(this)),
      fraCurrent_(new CurrentListFrame(session, lists_, editing_, splitter_)),
      fraPending_(new PendingListFrame(session, lists_, editing_, processing_, splitter_)),
      mnuLists_(new ListsMenu(session, lists_, editing_, this)),
      bulk_(new BulkWindows(session, lists_, *this)) {
    LayOutControls();
    ConnectControls();
    ConnectMenus();
    UpdateControls();
}

void ListsPage::LayOutControls() {
    splitter_->setObjectName(u"splitter"_s);
    splitter_->addWidget(fraCurrent_);
    splitter_->addWidget(fraPending_);
    splitter_->setChildrenCollapsible(false);
    splitter_->setStretchFactor(0, 1);
    splitter_->setStretchFactor(1, 1);
    auto *around = new QVBoxLayout(this); // a splitter would forget margins of its own in its least size
    around->setContentsMargins(8, 6, 8, 2);
    auto *barUnsaved = new UnsavedOffer(session_, lists_.Open, this);
    connect(&processing_, &PendingProcessing::RunningChanged, barUnsaved, &QWidget::setDisabled);
    around->addWidget(barUnsaved);
    around->addWidget(splitter_);
}

void ListsPage::ConnectControls() {
    connect(&lists_.Open, &OpenList::Changed, this, &ListsPage::UpdateControls);
    connect(&lists_.Open, &OpenList::SortOrderChanged, this, &ListsPage::ShowSortOrder);
    connect(&lists_.Pending, &PendingList::Changed, this, &ListsPage::UpdateControls);
    connect(&processing_, &PendingProcessing::RunningChanged, this, &ListsPage::UpdateControls);
    connect(&processing_, &PendingProcessing::RunningChanged, this, &ListsPage::SetLocked);
    // Queued: what has ended is still on its way out.
    connect(&lists_.Open, &OpenList::Released, this, &ListsPage::ProcessIfFree, Qt::QueuedConnection);
    connect(&processing_, &PendingProcessing::RunningChanged, this, &ListsPage::ProcessIfFree,
            Qt::QueuedConnection);
    connect(fraCurrent_, &CurrentListFrame::ListCreated, fraPending_, &PendingListFrame::FocusAddressBox);
    connect(fraPending_, &PendingListFrame::MailCheckWanted, this, &ListsPage::MailCheckWanted);
    connect(fraPending_, &PendingListFrame::CaptionWanted, this, &ListsPage::CaptionWanted);
    connect(fraPending_, &PendingListFrame::ImportWanted, this, [this](const QString &text) {
        if (bulk_->ImportText(text))
            fraPending_->ClearAddressBox();
    });
    connect(&processing_, &PendingProcessing::RunningChanged, bulk_, &BulkWindows::SetLocked);
}

void ListsPage::ConnectMenus() {
    const auto popUp = [](QMenu *menu) { return [menu](const QPoint &position) { menu->popup(position); }; };
    connect(mnuLists_, &ListsMenu::CopyWanted, this, [this](bool isPending) {
        (isPending ? fraPending_->ListBox() : fraCurrent_->ListBox())->CopySelection();
    });
    connect(mnuLists_, &ListsMenu::HistoryWanted, this, &ListsPage::mnuListsHistory_Click);
    connect(fraCurrent_, &CurrentListFrame::SortMenuWanted, mnuLists_, popUp(mnuLists_->SortMenu()));
    connect(fraCurrent_, &CurrentListFrame::ContextMenuWanted, mnuLists_, popUp(mnuLists_->CurrentMenu()));
    connect(fraPending_, &PendingListFrame::ContextMenuWanted, mnuLists_, popUp(mnuLists_->PendingMenu()));
    connect(mnuLists_, &ListsMenu::ImportWanted, bulk_, &BulkWindows::Import);
    connect(mnuLists_, &ListsMenu::ExportWanted, bulk_, &BulkWindows::Export);
    connect(mnuLists_, &ListsMenu::CompareWanted, bulk_, &BulkWindows::Compare);
    connect(bulk_, &BulkWindows::ListMade, fraCurrent_, &CurrentListFrame::TakeNewNames);
}

void ListsPage::mnuListsHistory_Click() {
    const OpenList::Hold hold(lists_.Open);
    frmHistory window(session_, fraCurrent_->ListNames(), lists_.Open.Name(), this);
    connect(&window, &frmHistory::BringBackWanted, this, &ListsPage::BringBack);
    window.exec();
}

// A list that was deleted is a file again; what a list held comes back as a change that is not saved yet.
void ListsPage::BringBack(const QString &list, const QStringList &entries) {
    Trapped(session_, u"Main.mnuListsHistory"_s, [&] {
        const bool isDeleted = !ListLibrary::Names(session_).contains(list);
        if (isDeleted) {
            ListLibrary::Write(session_, list, entries);
            fraCurrent_->RefreshListNames();
        }
        if ((isDeleted || lists_.Open.Name() != list) && !fraCurrent_->OpenListOf(list))
            return;
        if (!isDeleted) {
            const ListStep step(lists_.Undo, u"Bring Back Version"_s);
            lists_.Open.ReplaceAll(entries.mid(0, EntryListModel::kMostEntries));
        }
        StatusMessage(session_, isDeleted ? u"Brought back list ["_s + list + u']'
                                          : u"Brought back a version of ["_s + list + u']');
    });
}

void ListsPage::ShowSortOrder() {
    mnuLists_->ShowSortOrder();
    fraCurrent_->ShowSortOrder();
}

void ListsPage::UpdateControls() {
    const QPointer<QWidget> focus = window()->focusWidget();
    fraCurrent_->UpdateControls();
    fraPending_->UpdateControls(!fraCurrent_->ChosenName().isEmpty());
    mnuLists_->UpdateControls();
    if (focus && isAncestorOf(focus) && !focus->isEnabled())
        PlaceFocus(*focus);
    Q_EMIT CountsChanged(lists_.lstEmailList(kChronological).Count(), lists_.Pending.Count());
}

// A control that is disabled with the focus on it hands it to its neighbour, where the next key press would do
// something that nobody meant. The list box of its frame is a good place, else the address box.
void ListsPage::PlaceFocus(const QWidget &instead) {
    fraPending_->FocusAddressBox();
    const bool isPending = fraPending_->isAncestorOf(&instead);
    if (QWidget *box = isPending ? fraPending_->ListBox() : fraCurrent_->ListBox(); box->isEnabled())
        box->setFocus();
}

void ListsPage::SetLocked(bool locked) {
    if (locked)
        focusBeforeLock_ = window()->focusWidget();
    splitter_->setEnabled(!locked);
    mnuLists_->setEnabled(!locked);
    Q_EMIT LockedChanged(locked);
    if (locked || !focusBeforeLock_)
        return;
    focusBeforeLock_->setFocus();
    if (isAncestorOf(focusBeforeLock_) && !focusBeforeLock_->isEnabled())
        PlaceFocus(*focusBeforeLock_);
}

void ListsPage::ProcessWhenFree() {
    isProcessingWanted_ = true;
    ProcessIfFree();
}

void ListsPage::ProcessIfFree() {
    if (processing_.IsRunning() || lists_.Open.IsHeld() || session_.AppExiting)
        return;
    if (std::exchange(isProcessingWanted_, false))
        processing_.Run();
}

// A failed save keeps the window, so that the operator is asked again.
bool ListsPage::MayLeaveOpenList() {
    if (lists_.Open.IsSaved())
        return true;
    const QString question =
        u"The changes to list ["_s + fraCurrent_->ChosenName() + u"] have not been saved, save now?"_s;
    switch (session_.Boxes.MsgBox(question, BoxButtons::YesNoCancel, BoxIcon::Question)) {
    case BoxAnswer::Yes:
        return fraCurrent_->Save();
    case BoxAnswer::No:
        return true;
    default:
        return false;
    }
}

bool ListsPage::MayClose() {
    const OpenList::Hold hold(lists_.Open);
    const QString question = u"There are unprocessed e-mail addresses on the pending list, exit anyway?"_s;
    return MayLeaveOpenList() &&
           (lists_.Pending.Count() == 0 || session_.Boxes.AskToDestroy(question) == BoxAnswer::Yes);
}

} // namespace varlo
