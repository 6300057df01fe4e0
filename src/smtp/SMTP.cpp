#include "smtp/SMTP.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "smtp/Connection.h"
#include "smtp/Curl.h"
#include "smtp/HeaderText.h"
#include "smtp/MimeMessage.h"
#include "smtp/Transaction.h"

#include <QPointer>
#include <QScopeGuard>
#include <QSet>

namespace OSSMTP {

namespace {

constexpr int kAddressRefused = 501; // the codes that a server would answer with
constexpr int kNoSuchMailbox = 553;

// One message for one recipient, ready for the wire. It does not change while it is sent, whatever is set
// meanwhile.
struct Job {
    Server To;
    Mailbox Sender;
    Mailbox Recipient;
    QByteArray Headers;
    QByteArray Content; // shared by all recipients
};

Failure UnusableAddress(const QString &whose, const Mailbox &mailbox) {
    const Reply shown{0, mailbox.Given.toUtf8()}; // for its way with control characters
    return {kAddressRefused,
            u"The %1's address [%2] is not a mail address"_s.arg(whose, shown.Description())};
}

QByteArray MailParameters(const Job &job, const Connection &connection) {
    QByteArray parameters;
    if (connection.Offers("SIZE")) // a message that is too large is refused before it is transferred
        parameters += " SIZE=" + QByteArray::number(job.Headers.size() + job.Content.size());
    if (job.Sender.NeedsUtf8 || job.Recipient.NeedsUtf8)
        parameters += " SMTPUTF8";
    return parameters;
}

// What became of a transaction, told as one failure or none.
MaybeFailure Judge(const Transaction &transaction, const MaybeFailure &trouble, bool cut) {
    using State = Transaction::State;
    const bool aborted = trouble && trouble->What == Failure::Aborted;
    const auto &answer = transaction.Answer();
    const Failure::Kind lost =
        transaction.DataBegun() ? Failure::Reported : Failure::Lost; // never mail twice
    if (answer && !aborted)
        return Failure{answer->Code, answer->Description(),
                       transaction.Now() == State::Lost ? lost : Failure::Reported};
    if (trouble)
        return Failure{trouble->Number, trouble->Description,
                       trouble->What == Failure::Lost ? lost : trouble->What};
    if (transaction.Now() == State::Confused)
        return InvalidReplyFailure();
    if (transaction.Now() == State::Lost || cut) {
        const Failure failure = LostFailure();
        return Failure{failure.Number, failure.Description, lost};
    }
    return {};
}

} // namespace

class SMTP::Private {
public:
    Private() : connection_(waiter_) {}

    bool IsSending() const { return sending_; }
    MaybeFailure Send();
    void AddAttachment(const QString &path, const QString &key);
    void Abort();
    void Leave();

    Server Target;
    QString Sender;
    QString Recipient;
    QByteArray SubjectHeader = TextHeader("Subject", QString());
    QString Text;
    int Timeout = 60000;

private:
    MaybeFailure Deliver();
    MaybeFailure Attempt(const Job &job);
    MaybeFailure Prepare(const Job &job);
    MaybeFailure Run(Transaction &transaction, const Job &job);
    MaybeFailure WriteMessage(const Job &job);
    void ForgetAttachments();

    Waiter waiter_; // before what waits through it
    Connection connection_;
    bool leftOpen_ = false; // the transaction before this one needs RSET
    MessageContent content_;
    MessageHeaders headers_;
    std::vector<Attachment> attachments_;
    QSet<QString> keys_;
    bool sending_ = false;
};

MaybeFailure SMTP::Private::Send() {
    sending_ = true;
    const auto done = qScopeGuard([this] {
        sending_ = false;
        ForgetAttachments();
    });
    waiter_.Begin(Timeout);
    return Deliver();
}

MaybeFailure SMTP::Private::Deliver() {
    Job job{Target, ParseMailbox(Sender), ParseMailbox(Recipient), QByteArray(), QByteArray()};
    if (job.Sender.Address.isEmpty())
        return UnusableAddress(u"sender"_s, job.Sender);
    if (job.Recipient.Address.isEmpty())
        return UnusableAddress(u"recipient"_s, job.Recipient);
    job.Headers = headers_.Render(job.Sender, job.Recipient, SubjectHeader);
    const QString text = Text; // copies, because files are read with events running in between
    const std::vector<Attachment> attachments = attachments_;
    job.Content = content_.Encode(text, attachments, [this] { return waiter_.Breathe(); });
    if (job.Content.isNull())
        return AbortedFailure();
    MaybeFailure failure = Attempt(job);
    if (failure && failure->What == Failure::Lost)
        failure = Attempt(job);
    return failure;
}

MaybeFailure SMTP::Private::Attempt(const Job &job) {
    if (MaybeFailure failure = Prepare(job))
        return failure;
    Transaction transaction({job.Sender.Address, job.Recipient.Address, MailParameters(job, connection_)},
                            connection_.Offers("PIPELINING"), leftOpen_);
    const MaybeFailure trouble = Run(transaction, job);
    const bool cut = connection_.IsCut();
    leftOpen_ = transaction.LeftOpen();
    if (trouble || cut || transaction.SpoiltConnection())
        connection_.Drop();
    return Judge(transaction, trouble, cut);
}

// A connection that can take this message.
MaybeFailure SMTP::Private::Prepare(const Job &job) {
    if (!connection_.IsUsableFor(job.To)) {
        connection_.Close();
        leftOpen_ = false;
        if (MaybeFailure failure = connection_.Open(job.To))
            return failure;
    }
    if ((job.Sender.NeedsUtf8 || job.Recipient.NeedsUtf8) && !connection_.Offers("SMTPUTF8"))
        return Failure{kNoSuchMailbox,
                       u"The server does not take addresses with other than ASCII characters"_s};
    return {};
}

MaybeFailure SMTP::Private::Run(Transaction &transaction, const Job &job) {
    using State = Transaction::State;
    QByteArray out = transaction.Start();
    bool written = false;
    while (true) {
        if (MaybeFailure failure = connection_.Write(out))
            return failure;
        if (transaction.Now() == State::Content && !std::exchange(written, true))
            if (MaybeFailure failure = WriteMessage(job))
                return failure;
        Reply reply;
        if (MaybeFailure failure = connection_.Read(reply))
            return failure;
        out = transaction.Take(reply);
        if (transaction.Now() != State::Commands && transaction.Now() != State::Content)
            return {};
    }
}

// A small message goes out with its headers in one write; the content of a large one is never copied.
MaybeFailure SMTP::Private::WriteMessage(const Job &job) {
    constexpr qsizetype kSmall = 32 * 1024;
    using Early = Connection::Early;
    if (job.Content.size() <= kSmall)
        return connection_.Write(job.Headers + job.Content, Early::Ends);
    MaybeFailure failure = connection_.Write(job.Headers, Early::Ends);
    if (failure || connection_.IsCut())
        return failure;
    return connection_.Write(job.Content, Early::Ends);
}

void SMTP::Private::AddAttachment(const QString &path, const QString &key) {
    if (keys_.contains(key))
        throw varlo::RuntimeError(varlo::KeyAlreadyPresent);
    const Attachment attachment = DescribeFile(path);
    if (!content_.Holds(attachment))
        CheckReadable(path);
    keys_.insert(key);
    attachments_.push_back(attachment);
}

// The Send that runs drops the connection itself, once its event loop has ended, and empties the collection.
void SMTP::Private::Abort() {
    if (sending_) {
        waiter_.Abort();
        return;
    }
    connection_.Drop();
    ForgetAttachments();
}

void SMTP::Private::ForgetAttachments() {
    attachments_.clear();
    keys_.clear();
}

void SMTP::Private::Leave() {
    sending_ ? waiter_.Abort() : connection_.Close();
}

SMTP::SMTP(QObject *parent) : QObject(parent), d(std::make_shared<Private>()) {
}

SMTP::~SMTP() {
    d->Leave();
}

void SMTP::SetServer(const QString &host) {
    d->Target.Host = host;
}

void SMTP::SetPort(int port) {
    d->Target.Port = port;
}

void SMTP::SetSender(const QString &mailbox) {
    d->Sender = mailbox;
}

void SMTP::SetSubject(const QString &subject) {
    d->SubjectHeader = TextHeader("Subject", subject);
}

void SMTP::SetMessageText(const QString &text) {
    d->Text = text;
}

void SMTP::AddAttachment(const QString &path, const QString &key) {
    d->AddAttachment(path, key);
}

void SMTP::SetRecipient(const QString &mailbox) {
    d->Recipient = mailbox;
}

bool SMTP::Send() {
    if (d->IsSending())
        return false;
    if (!Curl().Problem.isEmpty())
        throw varlo::RuntimeError(varlo::FileNotFound, Curl().Problem);
    const QPointer<SMTP> self(this);
    const std::shared_ptr<Private> keep = d; // an event handled meanwhile may destroy this object
    const MaybeFailure failure = keep->Send();
    if (self && failure && failure->What != Failure::Aborted)
        Q_EMIT ErrorSMTP(failure->Number, failure->Description);
    return !failure;
}

void SMTP::SetTimeout(int milliseconds) {
    d->Timeout = std::max(1, milliseconds);
}

void SMTP::Abort() {
    d->Abort();
}

} // namespace OSSMTP
