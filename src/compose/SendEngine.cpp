#include "compose/SendEngine.h"

#include "compose/SendTexts.h"
#include "compose/SentCopy.h"
#include "compose/Signature.h"
#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/SendingAccount.h"
#include "core/Settings.h"
#include "core/WordWrap.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <optional>

namespace varlo {

namespace {

constexpr int kTickMilliseconds = 3000;

// Windows have their events after so many milliseconds, however many messages go out meanwhile. A turn of the
// event loop for each message would cost a near server's pace.
constexpr int kSlice = 10;

} // namespace

SendEngine::SendEngine(Session &session, MakeMailer makeMailer,
                       std::function<void(const PendingRequest &)> offer, QObject *parent)
    : QObject(parent), session_(session), makeMailer_(std::move(makeMailer)), offer_(std::move(offer)) {
    tmrTimeRemaining_.setObjectName(u"tmrTimeRemaining"_s);
    tmrTimeRemaining_.setInterval(kTickMilliseconds);
    yield_.setSingleShot(true);
    connect(&tmrTimeRemaining_, &QTimer::timeout, this, &SendEngine::Tick);
    connect(&yield_, &QTimer::timeout, this, [this] {
        sinceYield_.start();
        GoOn();
    });
}

// ---- Before the first message

bool SendEngine::Validate(const ComposedMessage &message) {
    const Preferences &prefs = session_.Prefs;
    if (message.Subject.isEmpty() || message.Text.isEmpty() || message.Text == SignedBody(message.Signature))
        return Refuse(u"You must enter a subject and a message before you can send an e-mail."_s);
    if (message.Recipients.isEmpty())
        return Refuse(u"You must select some recipients before you can send an e-mail."_s);
    if (prefs.SMTPServer.isEmpty() || prefs.SMTPFrom.isEmpty() || prefs.SMTPEmail.isEmpty())
        return Refuse(u"You must configure your SMTP server and e-mail sending details from preferences "
                      "before you can send a message."_s);
    // Otherwise each recipient would be refused, and be marked for removal, for no fault of his own.
    const QString trouble = TroubleWithAccount(session_);
    return trouble.isEmpty() || Refuse(trouble);
}

bool SendEngine::Refuse(const QString &text) {
    session_.Boxes.MsgBox(text, BoxButtons::Ok, BoxIcon::Exclamation);
    return false;
}

void SendEngine::Send(const ComposedMessage &message) {
    if (sending_)
        return;
    sending_ = true;
    const QPointer<SendEngine> self(this); // it may go under a box
    Trapped(session_, u"Compose.cmdSend"_s, [&] { Prepare(message); });
    if (!self)
        return;
    sending_ = SMTP_ != nullptr;
    if (sending_)
        Begin();
}

// What can fail is tried before the first message goes out: a send that cannot go on to its end should not
// begin.
void SendEngine::Prepare(const ComposedMessage &message) {
    MailMessage mail{message.Subject, {}, message.Attachments};
    mail.Attachments.removeAll(QString()); // an empty path stands for "none"
    mail.Attachments.removeDuplicates();   // a file that was chosen twice goes along once
    CheckAttachments(mail.Attachments);
    mail.Text = WordWrap(session_, message.Text, session_.Prefs.SMTPWrap);
    if (mail.Text.isEmpty() && !message.Text.isEmpty())
        return; // reported already; an empty message is not what was written
    if (session_.AllSettings.Read(&Preferences::LogEmails) == 1)
        WriteSentCopy(session_, message.ToName, message.Subject, message.Text);
    message_ = std::make_shared<const MailMessage>(std::move(mail));
    toName_ = message.ToName;
    run_ = SendRun(message.Recipients);
    SMTP_ = makeMailer_(SendingAccount(session_));
    connect(SMTP_.get(), &Mailer::Finished, this,
            [this](const Outcome &outcome) { Do(run_.Finished(outcome)); });
}

void SendEngine::CheckAttachments(const QStringList &paths) {
    for (const QString &path : paths) {
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

void SendEngine::Begin() {
    start_ = session_.Now();
    Q_EMIT SendingChanged(true);
    tmrTimeRemaining_.start();
    Caption(u"Sending: 0% Complete"_s, 0);
    GoOn();
}

// ---- One step after the other

// A recipient is to be counted although the log is full: the first error waits until the step is done.
void SendEngine::Do(const SendStep &step) {
    const QPointer<Mailer> mailer(SMTP_.get()); // goes with the send, whoever ends it
    std::optional<RuntimeError> error;
    const auto attempt = [&](bool isDue, auto &&tell) {
        try {
            if (mailer && isDue)
                tell();
        } catch (const RuntimeError &failure) {
            error = error ? error : failure;
        }
    };
    attempt(!step.Status.isEmpty(), [&] { Status(step.Status); });
    attempt(step.Pending.has_value(), [&] { offer_(*step.Pending); });
    if (!mailer)
        return;
    if (error)
        Fail(*error);
    else
        Act(step);
}

void SendEngine::Act(const SendStep &step) {
    switch (step.Then) {
    case SendStep::Next::Nothing:
        break;
    case SendStep::Next::GoOn:
        GoOn();
        break;
    case SendStep::Next::Breathe:
        IsYieldDue() ? yield_.start() : GoOn();
        break;
    case SendStep::Next::Yield:
        yield_.start();
        break;
    case SendStep::Next::Submit:
        SMTP_->Submit({message_, Mailbox(toName_, step.Text)});
        break;
    case SendStep::Next::Complete:
        Complete();
        break;
    case SendStep::Next::Fail:
        Fail(RuntimeError(step.Number, step.Text));
        break;
    }
}

bool SendEngine::IsYieldDue() const {
    return !sinceYield_.isValid() || sinceYield_.hasExpired(kSlice);
}

// ---- The end

void SendEngine::Complete() {
    tmrTimeRemaining_.stop();
    const QPointer<Mailer> mailer(SMTP_.get());
    try {
        Status(u"E-mail sending complete"_s);
    } catch (const RuntimeError &error) {
        return mailer ? Fail(error) : void();
    }
    if (!mailer)
        return;
    Caption(u"Send Complete"_s, 100);
    Stop();
    Q_EMIT Sent();
    const QPointer<SendEngine> self(this); // it may go under the box
    session_.Boxes.MsgBox(Summary(), BoxButtons::Ok, BoxIcon::Information);
    if (!self)
        return;
    End();
    Q_EMIT Completed();
}

void SendEngine::Fail(const RuntimeError &error) {
    Stop();
    const QPointer<SendEngine> self(this); // it may go under the box
    ShowError(session_, u"Compose.cmdSend"_s, error);
    if (!self)
        return;
    Q_EMIT StatusChanged(StoppedText(run_.Index(), run_.Count()));
    End();
}

void SendEngine::Cancel() {
    if (!SMTP_)
        return; // nothing is sent; what a box says may still be read
    Stop();
    End();
}

// No more events of this send: before a box, under which others go on.
void SendEngine::Stop() {
    tmrTimeRemaining_.stop();
    yield_.stop();
    sinceYield_.invalidate();
    SMTP_.reset();
    message_.reset();
}

void SendEngine::End() {
    sending_ = false;
    run_ = {};
    Q_EMIT SendingChanged(false);
}

// ---- What the window shows

void SendEngine::Status(const QString &text) {
    Session &session = session_; // a handler of the signal may destroy this object
    Q_EMIT StatusChanged(text);
    StatusMessage(session, text, false, true);
}

void SendEngine::Caption(const QString &text, int percent) {
    Q_EMIT CaptionChanged(text);
    Q_EMIT ProgressChanged(percent);
}

void SendEngine::Tick() {
    const qsizetype index = run_.Index();
    if (index > 0 && index < run_.Count())
        Caption(ProgressCaption(Elapsed(), index, run_.Count()), PercentComplete(index, run_.Count()));
}

QString SendEngine::Summary() const {
    return SummaryText(Elapsed(), run_.Count() - run_.Failed() - run_.Duplicates(), run_.Duplicates(),
                       run_.Failed());
}

qint64 SendEngine::Elapsed() const {
    return std::max<qint64>(0, start_.secsTo(session_.Now()));
}

} // namespace varlo
