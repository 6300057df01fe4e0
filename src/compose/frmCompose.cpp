#include "compose/frmCompose.h"

#include "compose/AttachmentList.h"
#include "compose/ComposeHost.h"
#include "compose/Draft.h"
#include "compose/MessageEdit.h"
#include "compose/Signature.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "core/Literals.h"
#include "core/NoticeBar.h"
#include "core/PlainToolTip.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "core/StatusLabel.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QToolButton>

#include <initializer_list>

namespace varlo {

frmCompose::frmCompose(Session &session, ComposeHost &host, MakeMailer makeMailer, QWidget *parent)
    : QMainWindow(parent), session_(session), host_(host),
      engine_(session, std::move(makeMailer),
              [this](const PendingRequest &request) { host_.Offer(request); }),
      recipients_(session), unsent_(session) {
    CreateControls();
    LayOut();
    ConnectControls();
    Form_Load();
}

// Each step is tried, whatever became of the one before.
void frmCompose::Form_Load() {
    ErrorTrap trap(session_, u"Compose.Load"_s);
    trap([this] { FillSources(); });
    trap([this] { signature_ = LoadSignature(session_); });
    trap([this] { txtMessage->SetText(InitialBody(signature_, AutoAddSignature(session_))); });
    history_.Clear();
    ShowAttachmentsOfBefore();
    trap([this] { unsent_.Load(); });
    OfferUnsent();
    restoreGeometry(
        QByteArray::fromBase64(session_.AllSettings.Read(&Preferences::ComposeGeometry).toLatin1()));
    // Reading runs events; none of them should meet a window that is half made.
    QMetaObject::invokeMethod(this, &frmCompose::ReadCurrentList, Qt::QueuedConnection);
}

void frmCompose::FillSources() {
    listNames_ = host_.ListNames();
    cmbTo->addItems(RecipientSourceTexts(listNames_, !host_.SelectedAddresses().isEmpty()));
    for (int row = 0; row < static_cast<int>(listNames_.size()); ++row)
        cmbTo->setItemData(row, PlainToolTip(listNames_.at(row)), Qt::ToolTipRole);
    cmbTo->setCurrentIndex(static_cast<int>(listNames_.indexOf(host_.CurrentListName())));
}

void frmCompose::ReadCurrentList() {
    if (cmbTo->currentIndex() >= 0)
        cmbTo_Click(cmbTo->currentIndex());
}

void frmCompose::cmbTo_Click(int index) {
    ChooseRecipients(index, [this] { return PickLists(); });
}

void frmCompose::ChooseRecipients(int index, std::function<QStringList()> pickLists) {
    ShowSources(QString()); // a row that stands for no list has none to tell of
    RecipientChoice choice;
    choice.Index = index;
    choice.ListNames = listNames_;
    choice.CurrentListName = host_.CurrentListName();
    if (RecipientSourceAt(index, listNames_.size()) == RecipientSource::CurrentSelection)
        choice.SelectedAddresses = host_.SelectedAddresses();
    choice.PickLists = std::move(pickLists);
    recipients_.Choose(choice);
}

// Closed without "OK", the dialog selects nothing: a message never goes to lists that were not confirmed.
QStringList frmCompose::PickLists() {
    const QPointer<frmCompRecip> dialog = new frmCompRecip(listNames_, this);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) // the window went while the dialog was open, and the dialog with it
        return {};
    const QStringList names = isAccepted ? dialog->SelectedLists() : QStringList();
    delete dialog;
    return UsePickedLists(names);
}

QStringList frmCompose::UsePickedLists(const QStringList &names) {
    pickedLists_ = names;
    ShowSources(ListNamesText(names));
    return names;
}

void frmCompose::ShowSources(const QString &names) {
    cmbTo->setToolTip(PlainToolTip(names));
}

void frmCompose::txtMessage_Change() {
    Trapped(session_, u"Main.txtMessage_Change"_s, [this] {
        const QString text = txtMessage->Text();
        if (text == recordedText_) // a text box also tells of changes that leave its text as it was
            return;
        recordedText_ = text;
        history_.Record(text);
    });
}

void frmCompose::txtMessage_KeyDown(int key, bool *taken) {
    Trapped(session_, u"Compose.txtMessage_KeyDown"_s, [this, key, taken] {
        *taken = true;
        switch (key) {
        case Qt::Key_Z:
            mnuEditUndo_Click();
            break;
        case Qt::Key_Y:
            mnuEditRedo_Click();
            break;
        case Qt::Key_X:
            mnuEditCut_Click();
            break;
        case Qt::Key_C:
            mnuEditCopy_Click();
            break;
        case Qt::Key_V:
            mnuEditPaste_Click();
            break;
        case Qt::Key_A:
            mnuEditSelectAll_Click();
            break;
        case Qt::Key_Backspace:
            txtMessage->DeleteWord();
            break;
        default:
            *taken = false;
        }
    });
}

void frmCompose::mnuMessageSend_Click() {
    Trapped(session_, u"Compose.cmdSend"_s, [this] {
        const ComposedMessage message = Composed();
        if (engine_.Validate(message))
            engine_.Send(message);
    });
}

ComposedMessage frmCompose::Composed() const {
    ComposedMessage message;
    message.ToName = txtTo->text();
    message.Subject = txtSubject->text();
    message.Text = txtMessage->Text();
    message.Signature = signature_;
    message.Recipients = recipients_.Addresses();
    if (!picAttachments->isHidden())
        message.Attachments = AttachmentPaths(host_.Attachments);
    return message;
}

void frmCompose::ShowIdleCaption() {
    setWindowTitle(u"Compose"_s);
}

void frmCompose::SetSending(bool sending) {
    for (QWidget *input : std::initializer_list<QWidget *>{mnuMessage, mnuEdit, mnuInsert, barUnsent, cmbTo,
                                                           txtTo, txtSubject, txtMessage, picAttachments})
        input->setEnabled(!sending);
    setAcceptDrops(!sending);
    prgSending->setValue(0);
    prgSending->setVisible(sending);
    if (!sending)
        ShowIdleCaption();
}

void frmCompose::closeEvent(QCloseEvent *event) {
    Form_Unload();
    event->accept();
    deleteLater();
}

// The program's end destroys the window without closing it.
frmCompose::~frmCompose() {
    Form_Unload();
}

void frmCompose::Form_Unload() {
    if (isUnloaded_)
        return;
    isUnloaded_ = true;
    engine_.Cancel();
    for (QDialog *dialog : findChildren<QDialog *>(Qt::FindDirectChildrenOnly))
        dialog->reject();
    tmrUnsent_.stop();
    KeepUnsent(true);
    session_.Prefs.ComposeGeometry = QString::fromLatin1(saveGeometry().toBase64());
    session_.AllSettings.Write({&Preferences::ComposeGeometry});
}

bool frmCompose::eventFilter(QObject *watched, QEvent *event) {
    return watched == cmbTo && event->type() == QEvent::Wheel;
}

void frmCompose::mnuMessageOpen_Click() {
    Trapped(session_, u"Compose.mnuMessageOpen"_s, [this] {
        const std::optional<Draft> draft = OpenDraft(session_);
        if (!draft) {
            session_.Boxes.MsgBox(u"No saved draft found."_s);
            return;
        }
        txtSubject->setText(draft->Subject);
        txtMessage->SetText(draft->Body);
        txtMessage->setFocus();
    });
}

void frmCompose::mnuMessageSave_Click() {
    Trapped(session_, u"Compose.mnuMessageSave"_s, [this] {
        SaveDraft(session_, {txtSubject->text(), txtMessage->Text()});
        lblStatus->setText(u"Draft saved"_s);
    });
}

void frmCompose::mnuMessageAttach_Click() {
    const QPointer<frmAttach> dialog = new frmAttach(session_, host_.Attachments, this);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) // the window went while the dialog was open, and the dialog with it
        return;
    if (isAccepted) {
        ShowAttachments(dialog->SizeText());
        barAttachments->hide(); // the operator has seen the files
        WillKeep();
    }
    delete dialog;
}

void frmCompose::ShowAttachments(const QString &sizeText) {
    picAttachments->setVisible(!AttachmentPaths(host_.Attachments).isEmpty());
    picAttachments->setToolTip(sizeText);
}

// Wanted: the attachment array stays, only the indicator goes, and nothing is attached while it is hidden.
// The next look at the attachments brings them back with one "OK".
void frmCompose::mnuMessageClearAll_Click() {
    txtSubject->clear();
    signature_ = LoadSignature(session_);
    txtMessage->SetText(SignedBody(signature_));
    picAttachments->hide();
}

void frmCompose::mnuEditUndo_Click() {
    if (history_.Undo())
        ShowUndoState();
}

void frmCompose::mnuEditRedo_Click() {
    if (history_.Redo())
        ShowUndoState();
}

void frmCompose::ShowUndoState() {
    history_.Suppress = true;
    txtMessage->ChangeText(history_.Shown());
    history_.Suppress = false;
    txtMessage->SetCaret(CaretAfterUndo(history_.Shown(), signature_));
}

void frmCompose::mnuEditCut_Click() {
    txtMessage->Cut();
}

void frmCompose::mnuEditCopy_Click() {
    txtMessage->Copy();
}

void frmCompose::mnuEditPaste_Click() {
    txtMessage->Paste();
}

void frmCompose::mnuEditSelectAll_Click() {
    txtMessage->SelectEverything();
}

void frmCompose::mnuInsSignature_Click() {
    txtMessage->InsertAtCaret(SignedBody(signature_));
}

} // namespace varlo
