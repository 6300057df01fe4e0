#include "lists/PendingProcessing.h"

#include "core/Literals.h"
#include "core/PendingRequest.h"
#include "core/Preferences.h"
#include "core/Reporting.h"
#include "core/SendingAccount.h"
#include "core/ValueText.h"
#include "core/WordWrap.h"
#include "lists/AddressRules.h"
#include "lists/ListManagement.h"
#include "lists/ListStore.h"
#include "lists/SelectionPause.h"

namespace varlo {

// What one run knows.
struct PendingProcessing::Pass {
    Pass(ListStore &lists, QStringList entries)
        : Entries(std::move(entries)), Chronological(lists, kChronological),
          Alphabetical(lists, kAlphabetical) {}

    // Requests that arrive while a notification is sent stay for the next run.
    const QStringList Entries;
    qsizetype Index = 0;
    bool IsNotifying = false; // the entry at Index is applied, its notification is on its way
    qint16 Added = 0;
    qint16 Removed = 0;
    const SelectionPause Chronological;
    const SelectionPause Alphabetical;
    std::unique_ptr<Mailer> SMTP; // only while notifications are on; its account stays for the whole run
};

PendingProcessing::PendingProcessing(Session &session, ListStore &lists, MakeMailer makeMailer,
                                     QObject *parent)
    : QObject(parent), session_(session), lists_(lists), makeMailer_(std::move(makeMailer)) {
    yield_.setSingleShot(true);
    connect(&yield_, &QTimer::timeout, this, [this] { Proceed([this] { SendNotification(); }); });
}

PendingProcessing::~PendingProcessing() = default;

// ---- The run as a whole

void PendingProcessing::Run() {
    if (IsRunning() || lists_.Open.IsLoading() || !HasOpenList() || !HasSoundAccount())
        return;
    pass_ = std::make_unique<Pass>(lists_, lists_.lstEmailList(kPending).Entries());
    Q_EMIT RunningChanged(true);
    Proceed([this] { Begin(); });
}

// Without a list the requests would be applied to nothing and be gone.
bool PendingProcessing::HasOpenList() {
    return HasList(session_, lists_.Open.Name());
}

// Otherwise everybody would be added or removed without his mail.
bool PendingProcessing::HasSoundAccount() {
    const QString trouble = session_.Prefs.Notify == 1 ? TroubleWithAccount(session_) : QString();
    if (!trouble.isEmpty())
        session_.Boxes.MsgBox(trouble, BoxButtons::Ok, BoxIcon::Exclamation);
    return trouble.isEmpty();
}

// Every event of a run comes through here. Under the box that reports a failure, the run may be aborted.
void PendingProcessing::Proceed(const std::function<void()> &step) {
    if (!Trapped(session_, u"Main.cmdCapturesAdd"_s, step))
        End();
}

void PendingProcessing::Begin() {
    StatusMessage(session_, u"Processing pending list"_s);
    if (session_.Prefs.Notify == 1) {
        pass_->SMTP = makeMailer_(SendingAccount(session_));
        connect(pass_->SMTP.get(), &Mailer::Finished, this, &PendingProcessing::SMTP_Finished);
    }
    ProcessEntries();
}

// Applies one request after the other, until one has to wait for its notification.
void PendingProcessing::ProcessEntries() {
    while (pass_->Index < pass_->Entries.size()) {
        if (session_.AppExiting)
            return End();
        StatusMessage(session_, Progress() + u')');
        if (Apply(PendingRequest::FromEntry(Entry())) && pass_->SMTP)
            return AnnounceNotification();
        LogEntry();
    }
    Complete();
}

void PendingProcessing::LogEntry() {
    const QString entry = Entry();
    pass_->IsNotifying = false;
    ++pass_->Index;
    WriteLog(session_, u"PendingLog.txt"_s, entry);
}

void PendingProcessing::Complete() {
    StatusMessage(session_, u"Pending list processing complete ("_s +
                                ActivityText(pass_->Added, pass_->Removed) + u')');
    lists_.Pending.RemoveFirst(pass_->Entries.size());
    End();
}

void PendingProcessing::Abort() {
    if (IsRunning() && pass_->IsNotifying)
        Trapped(session_, u"Main.cmdCapturesAdd"_s, [this] { LogEntry(); });
    End();
}

void PendingProcessing::End() {
    if (!IsRunning())
        return;
    yield_.stop();
    pass_.reset();
    Q_EMIT RunningChanged(false);
}

// ---- One request

// Whether the request changed anything.
bool PendingProcessing::Apply(const PendingRequest &request) {
    return (request.Kind == RequestKind::Subscribe && Subscribe(request.Address)) ||
           (request.Kind == RequestKind::Unsubscribe && Unsubscribe(request.Address));
}

bool PendingProcessing::Subscribe(const QString &address) {
    if (!IsNewAddress(session_, address, lists_.lstEmailList(kChronological)))
        return false;
    lists_.Open.Add(address);
    pass_->Added = To16Bit(pass_->Added + 1);
    return true;
}

bool PendingProcessing::Unsubscribe(const QString &address) {
    if (!lists_.Open.Remove(address))
        return false;
    pass_->Removed = To16Bit(pass_->Removed + 1);
    return true;
}

// ---- Its notification

void PendingProcessing::AnnounceNotification() {
    StatusMessage(session_, Progress() + u" - sending notification)"_s);
    pass_->IsNotifying = true;
    yield_.start();
}

void PendingProcessing::SendNotification() {
    if (session_.AppExiting)
        return Abort();
    const Preferences &prefs = session_.Prefs;
    const PendingRequest request = PendingRequest::FromEntry(Entry());
    const bool isNew = request.Kind == RequestKind::Subscribe;
    const QString text =
        WordWrap(session_, FromOneLine(isNew ? prefs.SubBody : prefs.UnsubBody), prefs.SMTPWrap);
    if (!IsRunning()) // ended under the box that told of a width that cannot be
        return;
    const MailMessage message{isNew ? prefs.SubSubject : prefs.UnsubSubject, text, {}};
    pass_->SMTP->Submit({std::make_shared<const MailMessage>(message), request.Address});
}

void PendingProcessing::SMTP_Finished(const Outcome &outcome) {
    Proceed([this, met = outcome] {
        if (met.IsLocal || met.IsOfAccount) // the next one would fare no better
            throw RuntimeError(met.Number, met.Description);
        if (met.Result != Outcome::Kind::Sent)
            SMTP_ErrorSMTP(met.Number, met.Description);
        if (!IsRunning()) // ended under a box that the error brought up
            return;
        LogEntry();
        ProcessEntries();
    });
}

void PendingProcessing::SMTP_ErrorSMTP(int Number, const QString &Description) {
    Trapped(session_, u"Main.SMTP_ErrorSMTP"_s, [&] {
        StatusMessage(session_, u"SMTP error "_s + QString::number(Number) + u" - "_s + Description);
    });
}

// ---- Texts

const QString &PendingProcessing::Entry() const {
    return pass_->Entries.at(pass_->Index);
}

QString PendingProcessing::Progress() const {
    return u"Processing pending list ("_s + QString::number(pass_->Index + 1) + u'/' +
           QString::number(pass_->Entries.size());
}

} // namespace varlo
