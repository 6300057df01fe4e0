// One mail transaction as a pure step: a reply of the server in, the bytes to write next out.
//
// With a chunk everything goes out at once, in one round trip: MAIL, RCPT and BDAT (RFC 3030) with the message
// behind it, whatever becomes of the recipient. So the server may have the message from the first moment on.
#pragma once

#include "smtp/ReplyParser.h"

#include <QByteArray>

#include <optional>

namespace OSSMTP {

// The two addresses as they go over the wire, without angle brackets.
struct Envelope {
    QByteArray Sender;
    QByteArray Recipient;
    QByteArray MailParameters; // such as " SIZE=1200"; empty or with a leading blank
    // Bytes of the message, which the caller writes right behind what Start returns; needs PIPELINING and
    // CHUNKING. 0: the message is written when the server has asked for it.
    qsizetype Chunk = 0;
};

//   awaited   reply    with PIPELINING                        without
//   RSET      2xx      go on                                  write MAIL
//             other    Lost (nothing useful can follow)       Lost
//   MAIL      2xx      go on                                  write RCPT
//             4xx 5xx  keep as refusal, go on                 Refused
//   RCPT      2xx      go on                                  write DATA
//             4xx 5xx  keep as refusal, go on                 Refused, RSET first next time
//   DATA      354      Content; with a refusal a lone dot     Content
//             4xx 5xx  Refused, RSET first next time          Refused, RSET first next time
//   content   2xx      Sent                                   Sent
//             4xx 5xx  Refused                                Refused
//   lone dot  any      Refused                                -
//   BDAT      2xx      Sent; Refused when nobody was taken    -
//             4xx 5xx  Refused, RSET first next time          -
//             500-504  the same after a refusal, else Lost    -
//   any       421      Lost; Refused when a refusal is kept   Lost
//   any       others   Confused                               Confused
class Transaction {
public:
    enum class State {
        Commands, // more replies are awaited
        Content,  // the caller writes the message with its closing dot, then goes on with replies
        Sent,
        Refused,  // Answer() says by what
        Lost,     // the server closes the connection; Answer() may hold its 421
        Confused, // a reply that does not belong here
    };

    // `resetFirst`: the transaction before was left open.
    Transaction(Envelope envelope, bool pipelining, bool resetFirst);

    // The bytes that open the transaction.
    QByteArray Start() const;
    // Takes one reply and returns the bytes to write next, often none.
    QByteArray Take(const Reply &reply);

    State Now() const { return state_; }
    // The server has said 354, or need not: it may have the message as soon as all of that is written, and
    // only its own word tells that it has not.
    bool DataBegun() const { return dataBegun_; }
    // The server does not know BDAT, though it said so, and took what was written behind it for commands.
    bool IsChunkUnknown() const { return chunkUnknown_; }
    // The next transaction on this connection must open with RSET.
    bool LeftOpen() const { return leftOpen_; }
    // The connection must not be used again.
    bool SpoiltConnection() const { return spoilt_ || state_ == State::Lost || state_ == State::Confused; }
    // The refusal, or the 421.
    const std::optional<Reply> &Answer() const { return answer_; }

private:
    enum class Await { Reset, Mail, Rcpt, Data, Content, LoneDot, Chunk };

    QByteArray Command(Await step) const;
    QByteArray TakeReset(const Reply &reply);
    QByteArray TakeCommand(const Reply &reply);
    QByteArray TakeData(const Reply &reply);
    QByteArray TakeChunk(const Reply &reply);
    QByteArray TakeTakenChunk();
    QByteArray TakeContent(const Reply &reply);
    QByteArray TakeDataRefusal(const Reply &reply);
    QByteArray EndUnwanted();
    QByteArray GoOn(Await next);
    QByteArray End(State state);
    void Keep(const Reply &reply);

    Envelope envelope_;
    bool pipelining_;
    Await await_;
    State state_ = State::Commands;
    std::optional<Reply> answer_;
    bool mailTaken_ = false;
    bool recipientTaken_ = false;
    bool dataBegun_ = false;
    bool chunkUnknown_ = false;
    bool leftOpen_ = false;
    bool spoilt_ = false;
};

} // namespace OSSMTP
