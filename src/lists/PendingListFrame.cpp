#include "lists/PendingListFrame.h"

#include "core/Buttons.h"
#include "core/HyperlinkLabel.h"
#include "core/Literals.h"
#include "import/AddressFinder.h"
#include "lists/AddressBox.h"
#include "lists/CarefulClipboard.h"
#include "lists/EntryListView.h"
#include "lists/ListEditing.h"
#include "lists/ListStore.h"
#include "lists/ManualAdd.h"
#include "lists/PendingProcessing.h"
#include "lists/RequestDelegate.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QTimer>

namespace varlo {

namespace {

constexpr int kCaptureInterval = 500; // milliseconds

} // namespace

PendingListFrame::PendingListFrame(Session &session, ListStore &lists, ListEditing &editing,
                                   PendingProcessing &processing, QWidget *parent)
    : QGroupBox(u"Pending List"_s, parent), session_(session), lists_(lists), editing_(editing),
      processing_(processing), capture_(session, lists, SystemClipboard()) {
    setObjectName(u"Frame3"_s);
    CreateControls();
    LayOutControls();
    ConnectControls();
}

void PendingListFrame::CreateControls() {
    pending_ = new EntryListView(lists_, kPending, u"Pending list"_s, this);
    pending_->setItemDelegate(new RequestDelegate(pending_));
    pending_->SetHint(
        u"No requests are waiting. What you add, or capture, waits here until it is processed."_s);
    txtAddEmail = new AddressBox(this);
    txtAddEmail->setObjectName(u"txtAddEmail"_s);
    txtAddEmail->setToolTip(u"Enter e-mail addresses here"_s);
    txtAddEmail->setPlaceholderText(u"name@example.com"_s);
    txtAddEmail->setAccessibleName(u"E-mail address"_s);
    lblImportHint = new HyperlinkLabel(QString(), this);
    lblImportHint->setObjectName(u"lblImportHint"_s);
    lblImportHint->hide();
    chkInstantAdd = new QCheckBox(u"&Bypass"_s, this);
    chkInstantAdd->setObjectName(u"chkInstantAdd"_s);
    chkInstantAdd->setToolTip(u"Check to automatically process the pending list"_s);
    tmrCaptureEmail = new QTimer(this);
    tmrCaptureEmail->setObjectName(u"tmrCaptureEmail"_s);
    tmrCaptureEmail->setInterval(kCaptureInterval);
    CreateButtons();
}

void PendingListFrame::CreateButtons() {
    cmdEmailAdd[0] = NewButton(this, "cmdEmailAdd_0", u"&Add"_s, u"Add to list"_s, u"add");
    cmdEmailAdd[1] = NewButton(this, "cmdEmailAdd_1", u"Re&move"_s, u"Remove from list"_s, u"remove");
    cmdEmailValidate =
        NewButton(this, "cmdEmailValidate", u"Val&idate"_s, u"Validate address"_s, u"validate");
    cmdCapture = NewButton(this, "cmdCapture", u"Cli&pboard"_s,
                           u"Capture new e-mail addresses from the clipboard"_s, u"clipboard");
    cmdCapture->setCheckable(true); // pressed while addresses are captured
    cmdAutoAdd = NewButton(this, "cmdAutoAdd", u"E-mail Acco&unt"_s,
                           u"Automatic download of e-mail addresses from a POP3 account"_s, u"mailbox");
    cmdCapturesAdd = NewButton(this, "cmdCapturesAdd", u"<<< Process Pendin&g List"_s,
                               u"Add to current list and clear pending"_s);
    cmdListEdit = NewButton(this, "cmdListEdit_1", u"&Edit"_s, u"Edit selected items"_s, u"edit");
    cmdListDelete = NewButton(this, "cmdListDelete_1", u"Delete"_s, u"Delete selected items"_s, u"delete");
    cmdListSwap =
        NewButton(this, "cmdListSwap", u"+/-"_s, u"Reverse +/- status of selected addresses"_s, u"swap");
    cmdListSwap->setAccessibleName(u"Reverse sign"_s);
}

void PendingListFrame::LayOutControls() {
    auto *entry = new QGridLayout;
    entry->setRowMinimumHeight(0, cmdEmailAdd[0]->sizeHint().height()); // as beside, in the other frame
    entry->addWidget(txtAddEmail, 0, 0, 1, 3);
    entry->addWidget(lblImportHint, 1, 0, 1, 3);
    entry->addWidget(cmdEmailAdd[0], 2, 0);
    entry->addWidget(cmdEmailAdd[1], 2, 1);
    entry->addWidget(cmdEmailValidate, 2, 2);
    auto *sources = new QHBoxLayout;
    sources->addWidget(cmdCapture, 1);
    sources->addWidget(cmdAutoAdd, 1);
    auto *listButtons = new QHBoxLayout;
    for (QPushButton *button : {cmdListEdit, cmdListDelete, cmdListSwap})
        listButtons->addWidget(button);
    auto *process = new QHBoxLayout;
    process->addWidget(cmdCapturesAdd, 1);
    process->addWidget(chkInstantAdd);
    auto *column = new QVBoxLayout(this);
    column->addLayout(entry);
    column->addLayout(sources);
    column->addLayout(process);
    column->addWidget(pending_, 1);
    column->addLayout(listButtons);
    setTabOrder(txtAddEmail, lblImportHint);
    setTabOrder(lblImportHint, cmdEmailAdd[0]);
    setTabOrder(cmdEmailAdd[0], cmdEmailAdd[1]);
    setTabOrder(cmdEmailAdd[1], cmdEmailValidate);
    setTabOrder(cmdEmailValidate, cmdCapture);
    setTabOrder(cmdCapture, cmdAutoAdd);
    setTabOrder(cmdAutoAdd, cmdCapturesAdd);
    setTabOrder(cmdCapturesAdd, chkInstantAdd);
    setTabOrder(chkInstantAdd, pending_);
    setTabOrder(pending_, cmdListEdit);
    setTabOrder(cmdListEdit, cmdListDelete);
    setTabOrder(cmdListDelete, cmdListSwap);
}

void PendingListFrame::ConnectControls() {
    for (int index : {0, 1})
        connect(cmdEmailAdd[index], &QPushButton::clicked, this, [this, index] { cmdEmailAdd_Click(index); });
    connect(txtAddEmail, &QLineEdit::returnPressed, cmdEmailAdd[0], &QPushButton::click);
    connect(txtAddEmail, &QLineEdit::textChanged, this, &PendingListFrame::UpdateTypedAddress);
    connect(txtAddEmail, &QLineEdit::textChanged, this, &PendingListFrame::UpdateImportHint);
    connect(lblImportHint, &HyperlinkLabel::Clicked, this, &PendingListFrame::lblImportHint_Click);
    connect(cmdEmailValidate, &QPushButton::clicked, this,
            [this] { ReportValidity(session_, txtAddEmail->text()); });
    connect(cmdCapture, &QPushButton::clicked, this, &PendingListFrame::cmdCapture_Click);
    connect(tmrCaptureEmail, &QTimer::timeout, this, &PendingListFrame::tmrCaptureEmail_Timer);
    connect(cmdAutoAdd, &QPushButton::clicked, this, &PendingListFrame::MailCheckWanted);
    connect(cmdCapturesAdd, &QPushButton::clicked, this, &PendingListFrame::ProcessPendingList);
    connect(cmdListEdit, &QPushButton::clicked, this, [this] { editing_.EditSelected(kPending); });
    connect(cmdListDelete, &QPushButton::clicked, this, [this] { editing_.DeleteSelected(kPending); });
    connect(cmdListSwap, &QPushButton::clicked, this, [this] { editing_.SwapSigns(); });
    connect(pending_, &EntryListView::SelectionTouched, this, [this] { editing_.ReportSelection(kPending); });
    connect(pending_, &EntryListView::DeleteWanted, cmdListDelete, &QPushButton::click);
    connect(pending_, &EntryListView::EditWanted, cmdListEdit, &QPushButton::click);
    connect(pending_, &EntryListView::MenuWanted, this, &PendingListFrame::ContextMenuWanted);
}

bool PendingListFrame::Bypass() const {
    return chkInstantAdd->isChecked();
}

void PendingListFrame::SetBypass(bool on) {
    chkInstantAdd->setChecked(on);
}

bool PendingListFrame::IsCapturing() const {
    return tmrCaptureEmail->isActive();
}

void PendingListFrame::ProcessPendingList() {
    processing_.Run();
}

void PendingListFrame::cmdEmailAdd_Click(int index) {
    const auto process = Bypass() ? std::function<void()>([this] { ProcessPendingList(); }) : nullptr;
    const RequestKind kind = index == 0 ? RequestKind::Subscribe : RequestKind::Unsubscribe;
    if (AddTypedAddress(lists_, txtAddEmail->text(), kind, process))
        txtAddEmail->clear();
}

void PendingListFrame::cmdCapture_Click() {
    if (!IsCapturing()) {
        cmdCapture->setText(u"End Ca&pture"_s);
        Q_EMIT CaptionWanted(ClipboardCapture::Caption(0));
        capture_.Begin();
        tmrCaptureEmail->start();
        cmdCapture->setChecked(true);
        return;
    }
    EndCapture();
    if (Bypass())
        ProcessPendingList();
}

void PendingListFrame::EndCapture() {
    cmdCapture->setText(u"Cli&pboard"_s);
    Q_EMIT CaptionWanted(QString());
    capture_.End();
    tmrCaptureEmail->stop();
    cmdCapture->setChecked(false);
}

void PendingListFrame::tmrCaptureEmail_Timer() {
    const QString caption = capture_.Tick();
    if (!caption.isEmpty())
        Q_EMIT CaptionWanted(caption);
}

void PendingListFrame::FocusAddressBox() {
    txtAddEmail->setFocus();
}

void PendingListFrame::ClearAddressBox() {
    txtAddEmail->clear();
}

// The box takes one address; that several stand in it is told under it, and Add answers as ever.
void PendingListFrame::UpdateImportHint() {
    const QString text = txtAddEmail->text();
    const bool maybeSeveral = text.count(u'@') > 1;
    const qsizetype count = maybeSeveral ? FindAddresses(text).size() : 0;
    if (lblImportHint->hasFocus() && count < 2)
        FocusAddressBox();
    const bool isNew = count > 1 && lblImportHint->isHidden();
    lblImportHint->setText(u"These are %1 addresses: import them"_s.arg(count));
    lblImportHint->setVisible(count > 1);
    if (isNew) { // also for somebody who does not see it
        QAccessibleEvent alert(lblImportHint, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

// What was too long for the box is still on the clipboard.
void PendingListFrame::lblImportHint_Click() {
    const QString typed = txtAddEmail->text();
    const QString copied = QGuiApplication::clipboard()->text();
    Q_EMIT ImportWanted(copied.contains(typed) ? copied : typed);
}

EntryListView *PendingListFrame::ListBox() const {
    return pending_;
}

void PendingListFrame::UpdateTypedAddress() {
    const bool hasText = !txtAddEmail->text().isEmpty();
    for (QPushButton *button : {cmdEmailAdd[0], cmdEmailAdd[1], cmdEmailValidate}) {
        if (!hasText && button == window()->focusWidget())
            FocusAddressBox(); // for the next one
        button->setEnabled(hasText);
    }
}

void PendingListFrame::UpdateControls(bool hasOpenList) {
    const bool hasEntries = lists_.Pending.Count() > 0;
    const bool hasSelection = lists_.SelectedCount(kPending) > 0;
    if (!hasOpenList && IsCapturing())
        EndCapture(); // its button cannot be pressed any more
    for (QWidget *control :
         std::initializer_list<QWidget *>{txtAddEmail, cmdAutoAdd, cmdCapture, chkInstantAdd})
        control->setEnabled(hasOpenList);
    UpdateTypedAddress();
    pending_->setEnabled(hasEntries);
    cmdCapturesAdd->setEnabled(hasEntries);
    for (QPushButton *button : {cmdListEdit, cmdListDelete, cmdListSwap})
        button->setEnabled(hasSelection);
}

} // namespace varlo
