// What the compose window keeps of a message that was not sent, and how such a message comes back.

#include "compose/AttachmentList.h"
#include "compose/ComposeHost.h"
#include "compose/MessageEdit.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "core/NoticeBar.h"
#include "core/Reporting.h"
#include "core/StatusLabel.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>

namespace varlo {

UnsentMessage frmCompose::Written() const {
    UnsentMessage message;
    message.Subject = txtSubject->text();
    message.ToName = txtTo->text();
    message.Text = txtMessage->Text();
    const int row = cmbTo->currentIndex();
    message.Source = RecipientSourceAt(row, listNames_.size());
    if (message.Source == RecipientSource::OneList)
        message.Lists = QStringList{listNames_.at(row)};
    else if (message.Source == RecipientSource::SelectLists)
        message.Lists = pickedLists_;
    if (!picAttachments->isHidden())
        message.Attachments = AttachmentPaths(host_.Attachments);
    return message;
}

std::optional<UnsentMessage> frmCompose::OwnMessage() const {
    if (isSent_)
        return std::nullopt;
    UnsentMessage message = Written();
    return HasOwnWords(message, signature_) ? std::optional(std::move(message)) : std::nullopt;
}

void frmCompose::WillKeep() {
    if (!tmrUnsent_.isActive())
        tmrUnsent_.start();
}

// While the operator writes, a disk that takes nothing is told of on the status line, and once; a box is for the
// last moment. At the end of the program nobody is there to answer it.
void frmCompose::KeepUnsent(bool isLast) {
    try {
        unsent_.Keep(OwnMessage());
        isKeepingInVain_ = false;
    } catch (const RuntimeError &error) {
        if (isLast && !session_.AppExiting)
            return ShowError(session_, u"Compose.KeepUnsent"_s, error);
        if (!isKeepingInVain_ || isLast)
            LogError(session_, u"Compose.KeepUnsent"_s, error);
        isKeepingInVain_ = true;
        lblStatus->setText(u"The message cannot be kept until it is sent: "_s + error.Description());
    }
}

void frmCompose::OfferUnsent() {
    const UnsentMessage *offered = unsent_.Offered();
    if (!offered)
        barUnsent->hide();
    else if (offered->Subject.isEmpty())
        barUnsent->Say(u"A message without a subject was not sent."_s);
    else
        barUnsent->Say(u"The message ["_s + offered->Subject + u"] was not sent."_s);
}

void frmCompose::cmdUnsentRestore_Click() {
    Trapped(session_, u"Compose.cmdUnsentRestore"_s, [this] {
        if (!unsent_.Offered())
            return;
        const UnsentMessage message = unsent_.TakeUp(OwnMessage());
        OfferUnsent();
        Restore(message);
    });
}

void frmCompose::cmdUnsentDiscard_Click() {
    Trapped(session_, u"Compose.cmdUnsentDiscard"_s, [this] {
        if (!unsent_.Offered())
            return;
        unsent_.Discard();
        OfferUnsent();
        lblStatus->setText(u"Unsent message discarded"_s);
    });
}

void frmCompose::Restore(const UnsentMessage &message) {
    txtSubject->setText(message.Subject);
    txtTo->setText(message.ToName);
    txtMessage->SetText(message.Text);
    txtMessage->setFocus();
    host_.Attachments = AttachmentArray(message.Attachments);
    ShowAttachmentsOfBefore();
    const QPointer<frmCompose> self(this); // reading recipients runs events
    const QString lack = RestoreRecipients(message);
    if (self)
        lblStatus->setText(lack.isEmpty() ? u"Unsent message restored"_s : lack);
}

// Chooses what the message was written for, and never anybody else: where that is gone, nobody is chosen. What is
// amiss, for the operator.
QString frmCompose::RestoreRecipients(const UnsentMessage &message) {
    const qsizetype count = listNames_.size();
    QStringList found = message.Lists;
    found.removeIf([this](const QString &name) { return !listNames_.contains(name); });
    qsizetype row = -1;
    if (message.Source == RecipientSource::OneList && !found.isEmpty())
        row = listNames_.indexOf(found.first());
    else if (message.Source == RecipientSource::AllLists)
        row = count + 1;
    else if (message.Source == RecipientSource::SelectLists)
        row = count + 2;
    cmbTo->setCurrentIndex(static_cast<int>(row));
    ChooseRecipients(static_cast<int>(row), [this, found] { return UsePickedLists(found); });
    if (message.Source == RecipientSource::CurrentSelection)
        return u"Choose the recipients again: selected addresses are not kept"_s;
    for (const QString &name : message.Lists)
        if (!found.contains(name))
            return u"List ["_s + name + u"] no longer exists: check the recipients"_s;
    return {};
}

// The attachments outlive the window; a file that went meanwhile is told of, and the message is not sent with it.
void frmCompose::ShowAttachmentsOfBefore() {
    const QStringList paths = AttachmentPaths(host_.Attachments);
    ShowAttachments(QString());
    barAttachments->hide();
    try {
        picAttachments->setToolTip(AttachmentSummary(paths));
    } catch (const RuntimeError &error) {
        LogError(session_, u"Compose.Load"_s, error);
        barAttachments->Say(UnreadableText(paths));
    }
}

// What Clear All has hidden stays out: the operator would not see that it goes along again.
void frmCompose::AttachDropped(const QList<QUrl> &urls) {
    const QStringList files = DroppedFiles(urls);
    if (files.isEmpty())
        return lblStatus->setText(u"A folder cannot be attached"_s);
    const QStringList before =
        picAttachments->isHidden() ? QStringList() : AttachmentPaths(host_.Attachments);
    host_.Attachments = AttachmentArray(before + files);
    ShowAttachmentsOfBefore();
    WillKeep();
    lblStatus->setText(files.size() == 1 ? u"Attached ["_s + QFileInfo(files.first()).fileName() + u']'
                                         : u"Attached "_s + QString::number(files.size()) + u" files"_s);
}

} // namespace varlo
