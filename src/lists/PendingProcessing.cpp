#include "lists/PendingProcessing.h"

#include "core/Literals.h"
#include "core/PendingRequest.h"
#include "core/PreferenceKeys.h"
#include "core/Reporting.h"
#include "core/WordWrap.h"
#include "lists/AddressRules.h"
#include "lists/ListManagement.h"
#include "lists/ListStore.h"
#include "lists/SelectionPause.h"
#include "smtp/SMTP.h"

#include <QCoreApplication>
#include <QScopeGuard>

namespace varlo {

PendingProcessing::PendingProcessing(Session &session, ListStore &lists, QObject *parent)
    : QObject(parent), session_(session), lists_(lists) {
}

PendingProcessing::~PendingProcessing() = default;

void PendingProcessing::Abort() {
    if (SMTP_)
        SMTP_->Abort();
}

void PendingProcessing::ConnectMailer() {
    SMTP_.reset();
    if (session_.Prefs.Notify != 1)
        return;
    SMTP_ = std::make_unique<OSSMTP::SMTP>();
    connect(SMTP_.get(), &OSSMTP::SMTP::ErrorSMTP, this, &PendingProcessing::OnMailError);
    SMTP_->SetServer(session_.Prefs.SMTPServer);
    SMTP_->SetPort(session_.Prefs.SMTPPort);
    SMTP_->SetSender(u'"' + session_.Prefs.SMTPFrom + u"\" <"_s + session_.Prefs.SMTPEmail + u'>');
}

void PendingProcessing::Run() {
    if (running_ || lists_.Open.IsLoading() || !HasOpenList())
        return;
    running_ = true;
    Q_EMIT RunningChanged(true);
    const auto ended = qScopeGuard([this] {
        SMTP_.reset();
        running_ = false;
        Q_EMIT RunningChanged(false);
    });
    const SelectionPause chronological(lists_, kChronological);
    const SelectionPause alphabetical(lists_, kAlphabetical);
    Trapped(session_, u"Main.cmdCapturesAdd"_s, [this] { ProcessAll(); });
}

// Without a list the requests would be applied to nothing and be gone.
bool PendingProcessing::HasOpenList() {
    return HasList(session_, lists_.Open.Name());
}

void PendingProcessing::ProcessAll() {
    StatusMessage(session_, u"Processing pending list"_s);
    added_ = removed_ = 0;
    ConnectMailer();
    // While a notification is sent the window is alive and more requests may arrive: they stay for the next
    // run.
    const QStringList entries = lists_.lstEmailList(kPending).Entries();
    const QString total = u'/' + QString::number(entries.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (session_.AppExiting)
            return;
        const QString progress = u"Processing pending list ("_s + QString::number(i + 1) + total;
        StatusMessage(session_, progress + u')');
        ProcessEntry(entries[i], progress);
        WriteLog(session_, u"PendingLog.txt"_s, entries[i]);
    }
    StatusMessage(session_, u"Pending list processing complete ("_s + ActivityText(added_, removed_) + u')');
    lists_.Pending.RemoveFirst(entries.size());
}

void PendingProcessing::ProcessEntry(const QString &entry, const QString &progress) {
    const Preferences &prefs = session_.Prefs;
    const PendingRequest request = PendingRequest::FromEntry(entry);
    if (request.Kind == RequestKind::Subscribe && Subscribe(request.Address))
        Notify(request.Address, {prefs.SubSubject, prefs.SubBody}, progress);
    else if (request.Kind == RequestKind::Unsubscribe && Unsubscribe(request.Address))
        Notify(request.Address, {prefs.UnsubSubject, prefs.UnsubBody}, progress);
}

bool PendingProcessing::Subscribe(const QString &address) {
    if (!IsNewAddress(session_, address, lists_.lstEmailList(kChronological)))
        return false;
    lists_.Open.Add(address);
    added_ = To16Bit(added_ + 1);
    return true;
}

bool PendingProcessing::Unsubscribe(const QString &address) {
    if (!lists_.Open.Remove(address))
        return false;
    removed_ = To16Bit(removed_ + 1);
    return true;
}

void PendingProcessing::Notify(const QString &address, const Notification &mail, const QString &progress) {
    if (!SMTP_)
        return;
    StatusMessage(session_, progress + u" - sending notification)"_s);
    QCoreApplication::processEvents();
    if (session_.AppExiting)
        return;
    SMTP_->SetRecipient(address);
    SMTP_->SetSubject(mail.Subject);
    SMTP_->SetMessageText(WordWrap(session_, FromOneLine(mail.Body), session_.Prefs.SMTPWrap));
    SMTP_->Send();
}

void PendingProcessing::OnMailError(int number, const QString &description) {
    Trapped(session_, u"Main.SMTP_ErrorSMTP"_s, [&] {
        StatusMessage(session_, u"SMTP error "_s + QString::number(number) + u" - "_s + description);
    });
}

} // namespace varlo
