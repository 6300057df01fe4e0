#include "lists/PendingListFrame.h"

#include "core/Buttons.h"
#include "lists/AddressRules.h"
#include "lists/EntryListView.h"
#include "lists/ListEditing.h"
#include "lists/ListStore.h"
#include "lists/ManualAdd.h"
#include "lists/PendingProcessing.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace varlo {

namespace {

constexpr int kCaptureInterval = 500; // milliseconds

ClipboardAccess SystemClipboard() {
    return {.Text = [] { return QGuiApplication::clipboard()->text(); },
            .Clear = [] { QGuiApplication::clipboard()->clear(); }};
}

} // namespace

PendingListFrame::PendingListFrame(Session &session, ListStore &lists, ListEditing &editing,
                                   PendingProcessing &processing, QWidget *parent)
    : QGroupBox(QStringLiteral("Pending List"), parent), session_(session), lists_(lists), editing_(editing),
      processing_(processing), capture_(session, lists, SystemClipboard()) {
    setObjectName(QStringLiteral("Frame3"));
    CreateControls();
    LayOutControls();
    ConnectControls();
}

void PendingListFrame::CreateControls() {
    pending_ = new EntryListView(lists_, kPending, QStringLiteral("Pending list"), this);
    txtAddEmail = new QLineEdit(this);
    txtAddEmail->setObjectName(QStringLiteral("txtAddEmail"));
    txtAddEmail->setToolTip(QStringLiteral("Enter e-mail addresses here"));
    txtAddEmail->setPlaceholderText(QStringLiteral("name@example.com"));
    txtAddEmail->setAccessibleName(QStringLiteral("E-mail address"));
    chkInstantAdd = new QCheckBox(QStringLiteral("&Bypass"), this);
    chkInstantAdd->setObjectName(QStringLiteral("chkInstantAdd"));
    chkInstantAdd->setToolTip(QStringLiteral("Check to automatically process the pending list"));
    tmrCaptureEmail = new QTimer(this);
    tmrCaptureEmail->setObjectName(QStringLiteral("tmrCaptureEmail"));
    tmrCaptureEmail->setInterval(kCaptureInterval);
    CreateButtons();
}

void PendingListFrame::CreateButtons() {
    cmdEmailAdd[0] =
        NewButton(this, "cmdEmailAdd_0", QStringLiteral("&Add"), QStringLiteral("Add to list"), u"add");
    cmdEmailAdd[1] = NewButton(this, "cmdEmailAdd_1", QStringLiteral("Re&move"),
                               QStringLiteral("Remove from list"), u"remove");
    cmdEmailValidate = NewButton(this, "cmdEmailValidate", QStringLiteral("Val&idate"),
                                 QStringLiteral("Validate address"), u"validate");
    cmdCapture = NewButton(this, "cmdCapture", QStringLiteral("Cli&pboard"),
                           QStringLiteral("Capture new e-mail addresses from the clipboard"), u"clipboard");
    cmdAutoAdd =
        NewButton(this, "cmdAutoAdd", QStringLiteral("E-mail Acco&unt"),
                  QStringLiteral("Automatic download of e-mail addresses from a POP3 account"), u"mailbox");
    cmdCapturesAdd = NewButton(this, "cmdCapturesAdd", QStringLiteral("<<< Process Pendin&g List"),
                               QStringLiteral("Add to current list and clear pending"));
    cmdListEdit = NewButton(this, "cmdListEdit_1", QStringLiteral("&Edit"),
                            QStringLiteral("Edit selected items"), u"edit");
    cmdListDelete = NewButton(this, "cmdListDelete_1", QStringLiteral("Delete"),
                              QStringLiteral("Delete selected items"), u"delete");
    cmdListSwap = NewButton(this, "cmdListSwap", QStringLiteral("+/-"),
                            QStringLiteral("Reverse +/- status of selected addresses"), u"swap");
    cmdListSwap->setAccessibleName(QStringLiteral("Reverse sign"));
}

void PendingListFrame::LayOutControls() {
    auto *entry = new QGridLayout;
    entry->addWidget(txtAddEmail, 0, 0, 1, 3);
    entry->addWidget(cmdEmailAdd[0], 1, 0);
    entry->addWidget(cmdEmailAdd[1], 1, 1);
    entry->addWidget(cmdEmailValidate, 1, 2);
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
    column->addWidget(pending_, 1);
    column->addLayout(listButtons);
    column->addLayout(process);
    setTabOrder(txtAddEmail, cmdEmailAdd[0]);
    setTabOrder(cmdEmailAdd[0], cmdEmailAdd[1]);
    setTabOrder(cmdEmailAdd[1], cmdEmailValidate);
    setTabOrder(cmdEmailValidate, cmdCapture);
    setTabOrder(cmdCapture, cmdAutoAdd);
    setTabOrder(cmdAutoAdd, pending_);
    setTabOrder(pending_, cmdListEdit);
    setTabOrder(cmdListEdit, cmdListDelete);
    setTabOrder(cmdListDelete, cmdListSwap);
    setTabOrder(cmdListSwap, cmdCapturesAdd);
    setTabOrder(cmdCapturesAdd, chkInstantAdd);
}

void PendingListFrame::ConnectControls() {
    for (int index : {0, 1})
        connect(cmdEmailAdd[index], &QPushButton::clicked, this, [this, index] { cmdEmailAdd_Click(index); });
    connect(txtAddEmail, &QLineEdit::returnPressed, cmdEmailAdd[0], &QPushButton::click);
    connect(txtAddEmail, &QLineEdit::textChanged, this, &PendingListFrame::txtAddEmail_Change);
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

bool PendingListFrame::HasTypedAddress() const {
    return !txtAddEmail->text().isEmpty();
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
    const Request request = index == 0 ? Request::Subscribe : Request::Unsubscribe;
    if (AddTypedAddress(session_, lists_, txtAddEmail->text(), request, process))
        txtAddEmail->clear();
    lists_.UpdateControls();
}

void PendingListFrame::txtAddEmail_Change() {
    const QString clean = CleanTypedAddress(txtAddEmail->text());
    if (clean != txtAddEmail->text())
        txtAddEmail->setText(clean); // a change of its own, which comes here again
    else
        lists_.UpdateControls();
}

void PendingListFrame::cmdCapture_Click() {
    if (!IsCapturing()) {
        cmdCapture->setText(QStringLiteral("End Ca&pture"));
        Q_EMIT CaptionWanted(ClipboardCapture::Caption(0));
        capture_.Begin();
        tmrCaptureEmail->start();
        return;
    }
    cmdCapture->setText(QStringLiteral("Cli&pboard"));
    Q_EMIT CaptionWanted(QString());
    capture_.End();
    tmrCaptureEmail->stop();
    if (Bypass())
        ProcessPendingList();
}

void PendingListFrame::tmrCaptureEmail_Timer() {
    const QString caption = capture_.Tick();
    if (!caption.isEmpty())
        Q_EMIT CaptionWanted(caption);
}

void PendingListFrame::Apply(const ControlStates &states) {
    for (QWidget *control :
         std::initializer_list<QWidget *>{txtAddEmail, cmdAutoAdd, cmdCapture, chkInstantAdd})
        control->setEnabled(states.OpenList);
    for (QPushButton *button : {cmdEmailAdd[0], cmdEmailAdd[1], cmdEmailValidate})
        button->setEnabled(states.TypedAddress);
    pending_->setEnabled(states.Pending);
    cmdCapturesAdd->setEnabled(states.Pending);
    for (QPushButton *button : {cmdListEdit, cmdListDelete, cmdListSwap})
        button->setEnabled(states.PendingSelection);
}

} // namespace varlo
