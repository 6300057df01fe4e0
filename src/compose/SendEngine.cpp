#include "compose/SendEngine.h"

#include "compose/DuplicateCheck.h"
#include "compose/SendTexts.h"
#include "compose/SentCopy.h"
#include "compose/Signature.h"
#include "core/Literals.h"
#include "core/PreferenceKeys.h"
#include "core/Reporting.h"
#include "core/SendingAccount.h"
#include "core/WordWrap.h"
#include "smtp/SMTP.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>
#include <QTimer>

#include <algorithm>
#include <optional>

namespace varlo {

namespace {

constexpr int kTickMilliseconds = 3000;

} // namespace

// The engine's state and the send itself. It outlives the engine when that is destroyed in the middle of a
// send.
class SendEngine::Private {
public:
    Private(SendEngine *engine, Session &sharedSession, OSSMTP::SMTP &component,
            std::function<void(const QString &)> pending);

    bool Validate(const ComposedMessage &composed);
    bool Run();
    void Cancel();

    bool sending = false;
    ComposedMessage message;

private:
    bool Refuse(const QString &text);
    void Body();
    void GiveUp();
    void CheckAttachments();
    void Begin();
    void Prepare(const QString &text);
    void Loop();
    void Turn(const QString &address);
    bool IsNew(const QString &address);
    void Transmit(const QString &address);
    void SMTP_ErrorSMTP(int Number, const QString &Description);
    void ThrowDeferred();
    void Complete();
    void StopTimer();
    void End();
    void Tick();
    void Status(const QString &text);
    void Caption(const QString &text, int percent);
    qint64 Elapsed() const { return std::max<qint64>(0, start.secsTo(session.Now())); }

    // Runs a statement of the error event. An exception must not fly through the component, and a recipient
    // is to be counted although the log is full: the first error waits until the recipient's turn is over.
    template<typename Statement> void Deferred(Statement &&statement) {
        try {
            statement();
        } catch (const RuntimeError &error) {
            if (!deferred)
                deferred = error;
        }
    }

    QPointer<SendEngine> q;
    Session &session;
    QPointer<OSSMTP::SMTP> smtp;
    std::function<void(const QString &)> addPending;
    QPointer<QTimer> timer;

    bool cancelled = false;
    bool started = false;      // recipients have their turns
    bool transmitting = false; // an error event belongs to the recipient at `index`
    bool counted = false;      // that recipient is a failure already
    bool complete = false;
    qsizetype index = 0;
    qsizetype failed = 0;
    DuplicateCheck duplicates;
    QDateTime start;
    std::optional<RuntimeError> deferred;
};

SendEngine::Private::Private(SendEngine *engine, Session &sharedSession, OSSMTP::SMTP &component,
                             std::function<void(const QString &)> pending)
    : q(engine), session(sharedSession), smtp(&component), addPending(std::move(pending)),
      timer(new QTimer(engine)) {
    timer->setObjectName(u"tmrTimeRemaining"_s);
    timer->setInterval(kTickMilliseconds);
    connect(timer, &QTimer::timeout, engine, [this] { Tick(); });
    connect(smtp, &OSSMTP::SMTP::ErrorSMTP, engine,
            [this](int number, const QString &description) { SMTP_ErrorSMTP(number, description); });
}

bool SendEngine::Private::Refuse(const QString &text) {
    session.Boxes.MsgBox(text, BoxButtons::Ok, BoxIcon::Exclamation);
    return false;
}

bool SendEngine::Private::Validate(const ComposedMessage &composed) {
    const Preferences &prefs = session.Prefs;
    if (composed.Subject.isEmpty() || composed.Text.isEmpty() ||
        composed.Text == SignedBody(composed.Signature))
        return Refuse(u"You must enter a subject and a message before you can send an e-mail."_s);
    if (composed.Recipients.isEmpty())
        return Refuse(u"You must select some recipients before you can send an e-mail."_s);
    if (prefs.SMTPServer.isEmpty() || prefs.SMTPFrom.isEmpty() || prefs.SMTPEmail.isEmpty())
        return Refuse(u"You must configure your SMTP server and e-mail sending details from preferences "
                      "before you can send a message."_s);
    return true;
}

// ---- The run as a whole

bool SendEngine::Private::Run() {
    sending = true;
    const auto end = qScopeGuard([this] { End(); });
    cancelled = started = transmitting = complete = false;
    index = failed = 0;
    deferred.reset();
    const bool passed = Trapped(session, u"Compose.cmdSend"_s, [this] {
        const auto stop = qScopeGuard([this] { StopTimer(); }); // before the box that reports
        Body();
    });
    if (!passed && started)
        GiveUp();
    return complete;
}

void SendEngine::Private::GiveUp() {
    if (smtp)
        smtp->Abort(); // no attachment of this message may wait in it for the next
    if (q)
        Q_EMIT q->StatusChanged(StoppedText(index, message.Recipients.size()));
}

// What can fail is tried before the first message goes out: a send that cannot go on to its end should not
// begin.
void SendEngine::Private::Body() {
    CheckAttachments();
    const QString text = WordWrap(session, message.Text, session.Prefs.SMTPWrap);
    if (text.isEmpty() && !message.Text.isEmpty())
        return; // reported already; an empty message is not what was written
    if (ReadNumber(session.INI, Keys::LogEmails) == 1)
        WriteSentCopy(session, message.ToName, message.Subject, message.Text);
    Prepare(text);
    Begin();
    Loop();
    if (!cancelled)
        Complete();
}

void SendEngine::Private::CheckAttachments() {
    for (const QString &path : std::as_const(message.Attachments)) {
        const QFileInfo info(path);
        QFile file(path);
        const bool special = info.exists() && !info.isFile(); // opening a pipe could wait for ever
        if (!special && file.open(QIODevice::ReadOnly))
            continue;
        const RuntimeError error = special ? RuntimeError(PermissionDenied) : FileError(file);
        Status(u"Attachment ["_s + path + u"] cannot be read"_s);
        throw error;
    }
}

void SendEngine::Private::Begin() {
    started = true;
    start = session.Now();
    duplicates.Reserve(message.Recipients.size());
    if (q)
        Q_EMIT q->SendingChanged(true);
    if (timer)
        timer->start();
    Caption(u"Sending: 0% Complete"_s, 0);
}

void SendEngine::Private::Complete() {
    StopTimer();
    Status(u"E-mail sending complete"_s);
    Caption(u"Send Complete"_s, 100);
    complete = true;
    session.Boxes.MsgBox(SummaryText(Elapsed(), message.Recipients.size() - failed - duplicates.Count(),
                                     duplicates.Count(), failed),
                         BoxButtons::Ok, BoxIcon::Information);
}

void SendEngine::Private::StopTimer() {
    if (timer)
        timer->stop();
}

void SendEngine::Private::End() {
    sending = false;
    message = {};
    duplicates = {};
    if (started && q)
        Q_EMIT q->SendingChanged(false);
}

void SendEngine::Private::Cancel() {
    cancelled = true;
    if (sending && smtp)
        smtp->Abort();
}

// ---- The loop

void SendEngine::Private::Prepare(const QString &text) {
    const MailAccount account = SendingAccount(session);
    smtp->SetServer(account.Host);
    smtp->SetPort(account.Port);
    smtp->SetSender(account.Sender);
    smtp->SetSubject(message.Subject);
    smtp->SetMessageText(text);
}

void SendEngine::Private::Loop() {
    while (index < message.Recipients.size() && !cancelled) {
        Turn(message.Recipients.at(index));
        ++index;
        ThrowDeferred();
    }
}

// Events run once in every turn, a duplicate's included: a list may hold nothing else for a long time.
void SendEngine::Private::Turn(const QString &address) {
    const bool isNew = IsNew(address);
    if (isNew)
        Status(u"Sending message "_s + QString::number(index + 1) + u'/' +
               QString::number(message.Recipients.size()));
    QCoreApplication::processEvents();
    if (isNew && !cancelled)
        Transmit(address);
}

bool SendEngine::Private::IsNew(const QString &address) {
    if (duplicates.IsNew(address))
        return true;
    Status(DuplicateCheck::StatusText(address));
    return false;
}

void SendEngine::Private::Transmit(const QString &address) {
    for (const QString &path : std::as_const(message.Attachments))
        smtp->AddAttachment(path, path);
    smtp->SetRecipient(Mailbox(message.ToName, address));
    counted = false;
    transmitting = true;
    const auto over = qScopeGuard([this] { transmitting = false; });
    smtp->Send(); // a failure of the recipient's came as an event
}

void SendEngine::Private::SMTP_ErrorSMTP(int Number, const QString &Description) {
    if (!transmitting)
        return;
    Deferred([&] { Status(SmtpErrorText(Number, Description)); });
    // Wanted: a time-out says nothing about the address, so it is logged and never counts as a failure.
    if (Number == OSSMTP::TimedOut || cancelled || counted)
        return;
    counted = true;
    ++failed;
    Deferred([&] { addPending(u'-' + message.Recipients.at(index)); });
}

void SendEngine::Private::ThrowDeferred() {
    if (deferred)
        throw RuntimeError(*deferred);
}

// ---- What the window shows

void SendEngine::Private::Status(const QString &text) {
    if (q)
        Q_EMIT q->StatusChanged(text);
    StatusMessage(session, text, false, true);
}

void SendEngine::Private::Caption(const QString &text, int percent) {
    if (q)
        Q_EMIT q->CaptionChanged(text);
    if (q)
        Q_EMIT q->ProgressChanged(percent);
}

void SendEngine::Private::Tick() {
    const qsizetype count = message.Recipients.size();
    if (index > 0 && index < count)
        Caption(ProgressCaption(Elapsed(), index, count), PercentComplete(index, count));
}

// ---- The engine

SendEngine::SendEngine(Session &session, OSSMTP::SMTP &smtp,
                       std::function<void(const QString &entry)> addPending, QObject *parent)
    : QObject(parent), d(std::make_shared<Private>(this, session, smtp, std::move(addPending))) {
}

SendEngine::~SendEngine() {
    Cancel();
}

bool SendEngine::Validate(const ComposedMessage &message) {
    return d->Validate(message);
}

bool SendEngine::Send(const ComposedMessage &message) {
    if (d->sending)
        return false;
    const std::shared_ptr<Private> run = d;
    run->message = message;
    run->message.Attachments.removeAll(QString()); // an empty path stands for "none"
    run->message.Attachments.removeDuplicates();   // the component keeps a file under its path, so only once
    return run->Run();
}

void SendEngine::Cancel() {
    d->Cancel();
}

bool SendEngine::IsSending() const {
    return d->sending;
}

} // namespace varlo
