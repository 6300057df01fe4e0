#include "smtp/Transaction.h"

namespace OSSMTP {

namespace {

constexpr int kClosing = 421;
constexpr int kStartInput = 354;
constexpr int kBadSequence = 503; // the right word for BDAT after a refusal

bool IsTaken(const Reply &reply) {
    return reply.Code / 100 == 2;
}

// "Unknown", "not implemented", "bad sequence": no word about a message or its recipient.
bool IsCommandUnknown(const Reply &reply) {
    return reply.Code >= 500 && reply.Code <= 504;
}

} // namespace

Transaction::Transaction(Envelope envelope, bool pipelining, bool resetFirst)
    : envelope_(std::move(envelope)), pipelining_(pipelining),
      await_(resetFirst ? Await::Reset : Await::Mail), dataBegun_(envelope_.Chunk > 0) {
}

QByteArray Transaction::Command(Await step) const {
    switch (step) {
    case Await::Reset:
        return QByteArrayLiteral("RSET\r\n");
    case Await::Mail:
        return "MAIL FROM:<" + envelope_.Sender + '>' + envelope_.MailParameters + "\r\n";
    case Await::Rcpt:
        return "RCPT TO:<" + envelope_.Recipient + ">\r\n";
    case Await::Data:
        return QByteArrayLiteral("DATA\r\n");
    case Await::Chunk:
        return "BDAT " + QByteArray::number(envelope_.Chunk) + " LAST\r\n";
    case Await::Content:
    case Await::LoneDot:
        break;
    }
    return {};
}

QByteArray Transaction::Start() const {
    if (!pipelining_)
        return Command(await_);
    const QByteArray reset = await_ == Await::Reset ? Command(Await::Reset) : QByteArray();
    return reset + Command(Await::Mail) + Command(Await::Rcpt) +
           Command(envelope_.Chunk > 0 ? Await::Chunk : Await::Data);
}

QByteArray Transaction::Take(const Reply &reply) {
    if (reply.Code == kClosing) {
        spoilt_ = true;
        const bool refused = answer_.has_value(); // the refusal is the better answer, and needs no second try
        Keep(reply);
        return End(refused ? State::Refused : State::Lost);
    }
    switch (await_) {
    case Await::Reset:
        return TakeReset(reply);
    case Await::Mail:
    case Await::Rcpt:
        return TakeCommand(reply);
    case Await::Data:
        return TakeData(reply);
    case Await::Content:
        return TakeContent(reply);
    case Await::Chunk:
        return TakeChunk(reply);
    case Await::LoneDot:
        break; // the answer to an empty message for nobody tells nothing
    }
    return End(State::Refused);
}

// A server that cannot drop a transaction is left for a new connection.
QByteArray Transaction::TakeReset(const Reply &reply) {
    return IsTaken(reply) ? GoOn(Await::Mail) : End(State::Lost);
}

QByteArray Transaction::TakeCommand(const Reply &reply) {
    const bool mail = await_ == Await::Mail;
    if (!IsTaken(reply) && !reply.IsRefusal())
        return End(State::Confused);
    (mail ? mailTaken_ : recipientTaken_) = IsTaken(reply);
    if (reply.IsRefusal()) {
        Keep(reply);
        leftOpen_ = mailTaken_;
        if (!pipelining_)
            return End(State::Refused);
    }
    return GoOn(mail ? Await::Rcpt : envelope_.Chunk > 0 ? Await::Chunk : Await::Data);
}

QByteArray Transaction::TakeData(const Reply &reply) {
    if (reply.IsRefusal())
        return TakeDataRefusal(reply);
    if (reply.Code != kStartInput)
        return End(State::Confused);
    dataBegun_ = true;
    leftOpen_ = false;
    if (answer_)
        return EndUnwanted();
    await_ = Await::Content;
    state_ = State::Content;
    return {};
}

QByteArray Transaction::TakeDataRefusal(const Reply &reply) {
    Keep(reply);
    leftOpen_ = mailTaken_;
    return End(State::Refused);
}

// The server wants a message although it refused a command. For nobody it gets an empty one; a recipient that
// it took must not get that, so the connection is dropped instead.
QByteArray Transaction::EndUnwanted() {
    if (recipientTaken_) {
        spoilt_ = true;
        return End(State::Refused);
    }
    await_ = Await::LoneDot;
    return QByteArrayLiteral(".\r\n");
}

QByteArray Transaction::TakeChunk(const Reply &reply) {
    if (IsTaken(reply))
        return TakeTakenChunk();
    if (!reply.IsRefusal())
        return End(State::Confused);
    leftOpen_ = mailTaken_;
    const bool refused = answer_.has_value();
    chunkUnknown_ = IsCommandUnknown(reply) && !(refused && reply.Code == kBadSequence);
    spoilt_ = chunkUnknown_;
    Keep(reply);
    return End(chunkUnknown_ && !refused ? State::Lost : State::Refused);
}

// The last word counts: whoever has taken a recipient and the message will deliver it.
QByteArray Transaction::TakeTakenChunk() {
    spoilt_ = answer_.has_value();
    if (recipientTaken_)
        answer_.reset();
    return End(recipientTaken_ ? State::Sent : State::Refused);
}

QByteArray Transaction::TakeContent(const Reply &reply) {
    if (IsTaken(reply))
        return End(State::Sent);
    if (!reply.IsRefusal())
        return End(State::Confused);
    Keep(reply);
    return End(State::Refused);
}

QByteArray Transaction::GoOn(Await next) {
    await_ = next;
    return pipelining_ ? QByteArray() : Command(next);
}

QByteArray Transaction::End(State state) {
    state_ = state;
    return {};
}

// The first refusal is the cause; what follows it are consequences.
void Transaction::Keep(const Reply &reply) {
    if (!answer_)
        answer_ = reply;
}

} // namespace OSSMTP
