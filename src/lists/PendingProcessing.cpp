#include "lists/PendingProcessing.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Reporting.h"
#include "core/SendingAccount.h"
#include "core/ValueText.h"
#include "core/WordWrap.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"
#include "lists/SelectionPause.h"

#include <numeric>

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
    if (IsRunning() || lists_.IsLoading() || !HasOpenList() || !HasSoundAccount())
        return;
    pass_ = std::make_unique<Pass>(lists_, lists_.lstEmailList(kPending).Entries());
    Q_EMIT RunningChanged(true);
    Proceed([this] { Begin(); });
}

// Without a list the requests would be applied to nothing and be gone.
bool PendingProcessing::HasOpenList() {
    if (!lists_.CurrentListName.isEmpty())
        return true;
    session_.Boxes.MsgBox(u"Please create or choose a mailing list first."_s, BoxButtons::Ok,
                          BoxIcon::Exclamation);
    return false;
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
        if (Apply(Entry()) && pass_->SMTP)
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
    StatusMessage(session_, u"Pending list processing complete ("_s + Summary() + u')');
    QList<int> processed(pass_->Entries.size());
    std::iota(processed.begin(), processed.end(), 0);
    lists_.lstEmailList(kPending).RemoveRows(processed);
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
    lists_.UpdateControls();
}

// ---- One request

// Whether the request changed anything.
bool PendingProcessing::Apply(const QString &entry) {
    const QString address = entry.mid(1);
    return (entry.startsWith(u'+') && Subscribe(address)) || (entry.startsWith(u'-') && Unsubscribe(address));
}

bool PendingProcessing::Subscribe(const QString &address) {
    if (!IsNewAddress(session_, address, lists_.lstEmailList(kChronological)))
        return false;
    // Both boxes or none: a full alphabetical box must not leave the two with different entries.
    if (lists_.lstEmailList(kAlphabetical).Count() >= EntryListModel::kMostEntries)
        throw RuntimeError(Overflow);
    lists_.lstEmailList(kChronological).Add(address);
    lists_.lstEmailList(kAlphabetical).Add(address);
    pass_->Added = To16Bit(pass_->Added + 1);
    lists_.MarkUnsaved();
    return true;
}

bool PendingProcessing::Unsubscribe(const QString &address) {
    const auto removeFirst = [&](int box) {
        const int row = lists_.lstEmailList(box).FindFirst(address);
        if (row >= 0)
            lists_.lstEmailList(box).Remove(row);
        return row >= 0;
    };
    const bool found = removeFirst(kChronological);
    if (found) {
        pass_->Removed = To16Bit(pass_->Removed + 1);
        lists_.MarkUnsaved();
    }
    removeFirst(kAlphabetical); // whether or not it was found above: the two may differ
    return found;
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
    const bool isNew = Entry().startsWith(u'+');
    const QString text =
        WordWrap(session_, FromOneLine(isNew ? prefs.SubBody : prefs.UnsubBody), prefs.SMTPWrap);
    if (!IsRunning()) // ended under the box that told of a width that cannot be
        return;
    const MailMessage message{isNew ? prefs.SubSubject : prefs.UnsubSubject, text, {}};
    pass_->SMTP->Submit({std::make_shared<const MailMessage>(message), Entry().mid(1)});
}

void PendingProcessing::SMTP_Finished(const Outcome &outcome) {
    Proceed([this, met = outcome] {
        if (met.IsLocal)
            throw RuntimeError(met.Number, met.Description);
        if (met.What != Outcome::Kind::Sent)
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

QString PendingProcessing::Summary() const {
    QStringList parts;
    if (pass_->Added > 0)
        parts << u'+' + QString::number(pass_->Added);
    if (pass_->Removed > 0)
        parts << u'-' + QString::number(pass_->Removed);
    return parts.isEmpty() ? u"no activity"_s : parts.join(u", "_s);
}

} // namespace varlo
