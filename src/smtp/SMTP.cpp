#include "smtp/SMTP.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "net/Connection.h"
#include "smtp/Handshake.h"
#include "smtp/HeaderText.h"
#include "smtp/MimeMessage.h"
#include "smtp/Verdict.h"

#include <QDeadlineTimer>
#include <QPointer>

#include <utility>

namespace OSSMTP {

namespace {

using varlo::Outcome;
using varlo::net::Encryption;
using Kind = Outcome::Kind;

constexpr int kAddressRefused = 501; // the codes that a server would answer with
constexpr int kNoSuchMailbox = 553;
constexpr int kTurn = 10; // ms of work before the event loop turns

Outcome UnusableAddress(Kind kind, const QString &whose, const Mailbox &mailbox) {
    const Reply shown{0, mailbox.Given.toUtf8()}; // shown as replies are: control characters as blanks
    return {kind, kAddressRefused,
            u"The %1's address [%2] is not a mail address"_s.arg(whose, shown.Description()), false};
}

std::vector<Attachment> Describe(const QStringList &paths) {
    std::vector<Attachment> attachments;
    for (const QString &path : paths)
        attachments.push_back(DescribeFile(path));
    return attachments;
}

} // namespace

// No function but Report and what calls it last emits anything: a handler may submit the next mail or destroy
// the component.
class SMTP::Private : public QObject {
public:
    Private(SMTP &smtp, const varlo::MailAccount &account);
    ~Private() override;

    void Submit(const varlo::Mail &mail);

    int Timeout = 60000;

private:
    void Begin();
    void BeginContent();
    void Encode();
    void Fail(const varlo::RuntimeError &error);

    void Attempt();
    bool IsUsable() const;
    void Open(Encryption security);
    void StartTransaction();
    bool NeedsUtf8() const { return sender_.NeedsUtf8 || recipient_.NeedsUtf8; }
    QByteArray MailParameters() const;
    void WriteMessage();

    void Connection_Arrived(const QByteArray &bytes);
    void Connection_Encrypted();
    void Connection_Ended(const varlo::net::Failure &failure);
    void Take(const Reply &reply);
    void TakeHandshake(const Reply &reply);
    void TakeTransaction(const Reply &reply);
    void TakeNoReply();

    bool IsCut() const;
    void Conclude(const Verdict &verdict);
    void Report();

    SMTP &smtp_;
    const varlo::MailAccount account_;
    const Mailbox sender_;

    varlo::net::Connection connection_;
    Encryption security_ = Encryption::None; // of the connection
    ReplyParser parser_;
    Handshake handshake_;
    bool leftOpen_ = false; // the transaction before this one needs RSET

    std::shared_ptr<const varlo::MailMessage> message_; // that content_ is made of
    MessageContent content_;
    QByteArray subject_;
    MessageHeaders makeHeaders_;

    // of the mail that is under way
    varlo::Mail mail_;
    Mailbox recipient_;
    QByteArray headers_;
    std::optional<Transaction> transaction_;
    bool attempting_ = false;
    bool repeated_ = false;
    std::optional<Outcome> outcome_; // to be reported
};

SMTP::Private::Private(SMTP &smtp, const varlo::MailAccount &account)
    : smtp_(smtp), account_(account), sender_(ParseMailbox(account.Sender)) {
    connect(&connection_, &varlo::net::Connection::Arrived, this, &Private::Connection_Arrived);
    connect(&connection_, &varlo::net::Connection::Encrypted, this, &Private::Connection_Encrypted);
    connect(&connection_, &varlo::net::Connection::Ended, this, &Private::Connection_Ended);
}

SMTP::Private::~Private() {
    const bool idle = !attempting_ && IsUsable();
    connection_.Close(idle ? QByteArrayLiteral("QUIT\r\n") : QByteArray());
}

// ---- A mail on its way to the connection

void SMTP::Private::Submit(const varlo::Mail &mail) {
    mail_ = mail;
    repeated_ = false;
    Begin();
    if (outcome_)
        QMetaObject::invokeMethod(
            this, [this] { Report(); }, Qt::QueuedConnection);
}

void SMTP::Private::Begin() {
    recipient_ = ParseMailbox(mail_.Recipient);
    if (sender_.Address.isEmpty()) {
        outcome_ = UnusableAddress(Kind::NotTried, u"sender"_s, sender_);
    } else if (recipient_.Address.isEmpty()) {
        outcome_ = UnusableAddress(Kind::Refused, u"recipient"_s, recipient_);
    } else {
        try {
            BeginContent();
            Encode();
        } catch (const varlo::RuntimeError &error) {
            Fail(error);
        }
    }
}

void SMTP::Private::BeginContent() {
    if (message_ != mail_.Message) {
        message_ = mail_.Message;
        subject_ = TextHeader("Subject", message_->Subject);
    }
    content_.Begin(message_->Text, Describe(message_->Attachments));
}

void SMTP::Private::Fail(const varlo::RuntimeError &error) {
    outcome_ = Outcome{Kind::NotTried, error.Number(), error.Description(), true};
}

// Large files are read in several turns of the event loop.
void SMTP::Private::Encode() {
    const QDeadlineTimer loopIsDue(kTurn, Qt::PreciseTimer);
    while (!content_.Step()) {
        if (!loopIsDue.hasExpired())
            continue;
        QMetaObject::invokeMethod(
            this,
            [this] {
                try {
                    Encode();
                } catch (const varlo::RuntimeError &error) {
                    Fail(error);
                }
                Report();
            },
            Qt::QueuedConnection);
        return;
    }
    headers_ = makeHeaders_.Render(sender_, recipient_, subject_);
    Attempt();
}

// ---- The connection

void SMTP::Private::Attempt() {
    attempting_ = true;
    transaction_.reset();
    IsUsable() ? StartTransaction() : Open(Encryption::WhenOffered);
}

bool SMTP::Private::IsUsable() const {
    return handshake_.Now() == Handshake::State::Ready && parser_.IsEmpty() && connection_.IsQuiet();
}

// There is no setting for encryption, so there is nobody to ask about a certificate: a mail server on the
// local network usually has one that nobody signed. Encrypted without a check is better than in the clear,
// which is what a refusal would come to.
void SMTP::Private::Open(Encryption security) {
    security_ = security;
    parser_.Clear();
    handshake_ = Handshake(security);
    leftOpen_ = false;
    connection_.Open({account_.Host, account_.Port, security, {}});
    connection_.AwaitWithin(Timeout);
}

void SMTP::Private::Connection_Encrypted() {
    connection_.Write(handshake_.Resume());
}

void SMTP::Private::Connection_Ended(const varlo::net::Failure &failure) {
    if (!attempting_)
        return;
    // Encryption that was only offered asks for nothing in return, so a server whose TLS does not work is
    // spoken to in the clear, as if it had offered none.
    if (failure.Cause == varlo::net::Trouble::NotEncrypted && security_ == Encryption::WhenOffered)
        return Open(Encryption::None);
    const bool cut = transaction_ && transaction_->DataBegun() && failure.IsCut;
    Conclude(transaction_ ? JudgeTransaction(*transaction_, FailureOf(failure), cut)
                          : JudgeConnecting(FailureOf(failure)));
    Report();
}

void SMTP::Private::Connection_Arrived(const QByteArray &bytes) {
    if (!attempting_)
        return connection_.Close(); // nobody asked
    parser_.Add(bytes);             // what is left there makes the connection unusable for the next mail
    while (attempting_ && !parser_.IsBroken()) {
        const auto reply = parser_.Next();
        if (!reply)
            break;
        connection_.AwaitWithin(Timeout);
        Take(*reply);
    }
    if (attempting_ && parser_.IsBroken())
        TakeNoReply();
    Report();
}

void SMTP::Private::Take(const Reply &reply) {
    transaction_ ? TakeTransaction(reply) : TakeHandshake(reply);
}

void SMTP::Private::TakeHandshake(const Reply &reply) {
    connection_.Write(handshake_.Take(reply));
    switch (handshake_.Now()) {
    case Handshake::State::Talking:
        break;
    case Handshake::State::Encrypting:
        parser_.Clear(); // nothing that was said in the clear counts from here on
        return connection_.StartTls();
    case Handshake::State::Ready:
        return StartTransaction();
    case Handshake::State::Failed:
        connection_.Close();
        return Conclude(JudgeConnecting(handshake_.Trouble()));
    }
}

void SMTP::Private::TakeNoReply() {
    const Verdict verdict = transaction_ ? JudgeTransaction(*transaction_, InvalidReplyFailure(), IsCut())
                                         : JudgeConnecting(InvalidReplyFailure());
    connection_.Close();
    Conclude(verdict);
}

// ---- The transaction

void SMTP::Private::StartTransaction() {
    if (NeedsUtf8() && !handshake_.Offers("SMTPUTF8")) {
        attempting_ = false;
        outcome_ = Outcome{Kind::Refused, kNoSuchMailbox,
                           u"The server does not take addresses with other than ASCII characters"_s, false};
        return;
    }
    transaction_.emplace(Envelope{sender_.Address, recipient_.Address, MailParameters()},
                         handshake_.Offers("PIPELINING"), leftOpen_);
    connection_.AwaitWithin(Timeout);
    connection_.Write(transaction_->Start());
}

QByteArray SMTP::Private::MailParameters() const {
    QByteArray parameters;
    if (handshake_.Offers("SIZE")) // a message that is too large is refused before it is transferred
        parameters += " SIZE=" + QByteArray::number(headers_.size() + content_.Size());
    if (NeedsUtf8())
        parameters += " SMTPUTF8";
    return parameters;
}

void SMTP::Private::TakeTransaction(const Reply &reply) {
    using State = Transaction::State;
    const State before = transaction_->Now();
    connection_.Write(transaction_->Take(reply));
    const State now = transaction_->Now();
    if (now == State::Content && before != State::Content)
        return WriteMessage();
    if (now == State::Commands || now == State::Content)
        return;
    const bool cut = IsCut();
    leftOpen_ = transaction_->LeftOpen();
    if (cut || transaction_->SpoiltConnection())
        connection_.Close();
    Conclude(JudgeTransaction(*transaction_, {}, cut));
}

// A small message goes out with its headers in one write; the content of a large one is never copied.
void SMTP::Private::WriteMessage() {
    constexpr qsizetype kSmall = 32 * 1024;
    if (content_.Bytes().size() <= kSmall)
        return connection_.Write(headers_ + content_.Bytes());
    connection_.Write(headers_);
    connection_.Write(content_.Bytes());
}

// The server's last word came while the message was still being written.
bool SMTP::Private::IsCut() const {
    return transaction_->DataBegun() && connection_.IsWriting();
}

void SMTP::Private::Conclude(const Verdict &verdict) {
    if (verdict.MayRepeat && !std::exchange(repeated_, true))
        return Attempt();
    attempting_ = false;
    outcome_ = verdict.Fate;
}

void SMTP::Private::Report() {
    if (!outcome_)
        return;
    const Outcome outcome = *std::exchange(outcome_, std::nullopt);
    connection_.AwaitWithin(0);
    const QPointer<SMTP> alive(&smtp_);
    if (outcome.Result != Kind::Sent && !outcome.IsLocal)
        Q_EMIT alive->ErrorSMTP(outcome.Number, outcome.Description);
    if (alive)
        Q_EMIT alive->Finished(outcome);
}

SMTP::SMTP(const varlo::MailAccount &account, QObject *parent)
    : varlo::Mailer(parent), d(std::make_unique<Private>(*this, account)) {
}

SMTP::~SMTP() = default;

void SMTP::Submit(const varlo::Mail &mail) {
    d->Submit(mail);
}

void SMTP::SetTimeout(int milliseconds) {
    d->Timeout = std::max(1, milliseconds);
}

} // namespace OSSMTP
