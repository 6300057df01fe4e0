#include "smtp/SMTP.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "smtp/HeaderText.h"
#include "smtp/Link.h"
#include "smtp/MimeMessage.h"
#include "smtp/Verdict.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace OSSMTP {

namespace {

using varlo::Outcome;
using Kind = Outcome::Kind;

constexpr int kAddressRefused = 501; // the codes that a server would answer with
constexpr int kNoSuchMailbox = 553;
constexpr int kTurn = 10;                   // ms of work before the event loop turns
constexpr qint64 kLargestChunk = 64 * 1024; // larger ones are not sent before the recipient is taken

Outcome UnusableAddress(Kind kind, const QString &whose, const Mailbox &mailbox) {
    const Reply shown{0, mailbox.Given.toUtf8()}; // shown as replies are: control characters as blanks
    return {kind, kAddressRefused,
            u"The %1's address [%2] is not a mail address"_s.arg(whose, shown.Description()), false};
}

// Required, too weak, refused, not without encryption: no word about a recipient.
bool IsAboutSigningIn(int reply) {
    return reply == 530 || reply == 534 || reply == 535 || reply == 538;
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

    Waits &Limits() { return link_.Limits; }
    void SetPatience(int milliseconds);

private:
    void Begin();
    void BeginContent();
    void Encode();
    void Fail(const varlo::RuntimeError &error);

    void Attempt();
    void StartTransaction();
    bool NeedsUtf8() const { return sender_.NeedsUtf8 || recipient_.NeedsUtf8; }
    QByteArray MailParameters() const;
    bool MayChunk() const;
    void WriteMessage();
    void Leave();

    void Link_Failed(const Failure &failure, bool isCut);
    void TakeTransaction(const Reply &reply);
    void TellWhatIsAwaited();

    bool IsCut() const;
    void Conclude(const Verdict &verdict);
    void Report();

    SMTP &smtp_;
    const varlo::MailAccount account_;
    const Mailbox sender_;

    Link link_;
    bool leftOpen_ = false;      // the transaction before this one needs RSET
    int taken_ = 0;              // messages on this connection
    bool chunksUnknown_ = false; // to a server that says otherwise
    bool closesUnasked_ = false; // the server, after some messages
    QTimer patience_;
    QString told_; // that is waited for

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
    : smtp_(smtp), account_(account), sender_(ParseMailbox(account.Sender)), link_(account) {
    connect(&link_, &Link::Ready, this, &Private::StartTransaction);
    connect(&link_, &Link::Replied, this, &Private::TakeTransaction);
    connect(&link_, &Link::Failed, this, &Private::Link_Failed);
    connect(&link_, &Link::Settled, this, &Private::Report);
    connect(&patience_, &QTimer::timeout, this, &Private::TellWhatIsAwaited);
    SetPatience(5000);
}

SMTP::Private::~Private() {
    const bool idle = !attempting_ && link_.IsUsable();
    link_.Close(idle ? QByteArrayLiteral("QUIT\r\n") : QByteArray());
}

// ---- A mail on its way to the connection

void SMTP::Private::Submit(const varlo::Mail &mail) {
    mail_ = mail;
    repeated_ = false;
    told_.clear();
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
    if (link_.IsUsable())
        return StartTransaction();
    closesUnasked_ = closesUnasked_ || taken_ > 0;
    leftOpen_ = false;
    taken_ = 0;
    link_.Open();
}

void SMTP::Private::Link_Failed(const Failure &failure, bool isCut) {
    const bool cut = isCut && transaction_ && transaction_->DataBegun();
    Conclude(transaction_ ? JudgeTransaction(*transaction_, failure, cut) : JudgeConnecting(failure));
}

void SMTP::Private::SetPatience(int milliseconds) {
    patience_.start(std::max(1, milliseconds));
}

// With the next tick at the latest: nothing is timed for the sake of a quick server.
void SMTP::Private::TellWhatIsAwaited() {
    const QString what = link_.Awaited();
    if (attempting_ && link_.Silence() >= patience_.interval() && std::exchange(told_, what) != what)
        Q_EMIT smtp_.Waiting(what);
}

// ---- The transaction

void SMTP::Private::StartTransaction() {
    if (NeedsUtf8() && !link_.Offers("SMTPUTF8")) {
        return Conclude({{Kind::Refused, kNoSuchMailbox,
                          u"The server does not take addresses with other than ASCII characters"_s, false}});
    }
    const qsizetype chunk = MayChunk() ? headers_.size() + content_.Size() : 0;
    transaction_.emplace(Envelope{sender_.Address, recipient_.Address, MailParameters(), chunk},
                         link_.Offers("PIPELINING"), leftOpen_);
    QByteArray opening = transaction_->Start();
    if (chunk > 0) {
        opening += headers_;
        content_.AppendAsCounted(opening);
    }
    link_.AwaitWithin(chunk > 0 ? link_.Limits.Content : link_.Limits.Answer);
    link_.Write(opening);
}

// Lost after everything was written, a mail is in doubt, so this way is not taken where a connection is known
// to be unsteady: when the one before was left in an unclear state, and where the server closes connections
// after some messages, of which one is the likeliest number.
bool SMTP::Private::MayChunk() const {
    return link_.Offers("CHUNKING") && link_.Offers("PIPELINING") && !chunksUnknown_ && !leftOpen_ &&
           headers_.size() + content_.Size() <= kLargestChunk &&
           (taken_ == 0 || (taken_ > 1 && !closesUnasked_));
}

QByteArray SMTP::Private::MailParameters() const {
    QByteArray parameters;
    if (link_.Offers("SIZE")) // a message that is too large is refused before it is transferred
        parameters += " SIZE=" + QByteArray::number(headers_.size() + content_.Size());
    if (NeedsUtf8())
        parameters += " SMTPUTF8";
    return parameters;
}

void SMTP::Private::TakeTransaction(const Reply &reply) {
    using State = Transaction::State;
    const State before = transaction_->Now();
    link_.Write(transaction_->Take(reply));
    const State now = transaction_->Now();
    if (now == State::Content && before != State::Content)
        return WriteMessage();
    if (now == State::Commands || now == State::Content)
        return;
    const bool cut = IsCut();
    leftOpen_ = transaction_->LeftOpen();
    taken_ += now == State::Sent;
    if (cut || transaction_->SpoiltConnection())
        Leave();
    chunksUnknown_ = chunksUnknown_ || transaction_->IsChunkUnknown();
    if (transaction_->IsChunkUnknown() && now == State::Lost)
        return Attempt();
    Conclude(JudgeTransaction(*transaction_, {}, cut));
}

void SMTP::Private::Leave() {
    taken_ = 0;
    link_.Close();
}

// A small message goes out with its headers in one write; the content of a large one is never copied.
void SMTP::Private::WriteMessage() {
    constexpr qsizetype kSmall = 32 * 1024;
    link_.AwaitWithin(link_.Limits.Content);
    if (content_.Bytes().size() <= kSmall)
        return link_.Write(headers_ + content_.Bytes());
    link_.Write(headers_);
    link_.Write(content_.Bytes());
}

// The server's last word came while the message was still being written.
bool SMTP::Private::IsCut() const {
    return transaction_->DataBegun() && link_.IsWriting();
}

void SMTP::Private::Conclude(const Verdict &verdict) {
    if (verdict.MayRepeat && !std::exchange(repeated_, true))
        return Attempt();
    attempting_ = false;
    link_.Rest(); // what comes now is not asked for
    outcome_ = verdict.Fate;
    if (!account_.Username.isEmpty() && !outcome_->IsOfAccount && IsAboutSigningIn(outcome_->Number))
        outcome_ = Outcome{Kind::NotTried, outcome_->Number,
                           u"The mail server [%1] takes no mail from this account: %2 %3"_s.arg(
                               account_.Host, QString::number(outcome_->Number), outcome_->Description),
                           false, true};
}

void SMTP::Private::Report() {
    if (!outcome_)
        return;
    const Outcome outcome = *std::exchange(outcome_, std::nullopt);
    const QPointer<SMTP> alive(&smtp_);
    if (outcome.Result != Kind::Sent && !outcome.IsLocal && !outcome.IsOfAccount)
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
    const int limit = std::max(1, milliseconds);
    d->Limits() = {limit, limit, limit};
}

void SMTP::SetPatience(int milliseconds) {
    d->SetPatience(milliseconds);
}

} // namespace OSSMTP
