// The way from the greeting to the first mail as a pure step: a reply of the server in, the bytes to write
// next out.
#pragma once

#include "net/Endpoint.h"
#include "smtp/Failure.h"
#include "smtp/ReplyParser.h"

#include <QByteArrayList>

namespace OSSMTP {

//   awaited   reply    leads to
//   greeting  2xx      EHLO
//   EHLO      2xx      STARTTLS when it is offered and wanted, else Ready
//             other    HELO, where encryption is not a must
//   HELO      2xx      Ready, without extensions
//   STARTTLS  220      Encrypting
//             other    Ready, where encryption is not a must
//   any       others   Failed
class Handshake {
public:
    enum class State {
        Talking,    // more replies are awaited
        Encrypting, // the caller encrypts the connection, then calls Resume
        Ready,
        Failed, // Trouble() says by what
    };

    explicit Handshake(varlo::net::Encryption wanted = varlo::net::Encryption::None);

    // Takes one reply and returns the bytes to write next, often none.
    QByteArray Take(const Reply &reply);
    // The connection is encrypted now: what was offered before counts no more.
    QByteArray Resume();

    State Now() const { return state_; }
    const Failure &Trouble() const { return trouble_; }
    // Whether EHLO told of this extension ("PIPELINING").
    bool Offers(const QByteArray &extension) const { return extensions_.contains(extension); }

private:
    enum class Await { Greeting, Ehlo, Helo, StartTls };

    QByteArray TakeEhlo(const Reply &reply);
    QByteArray TakeStartTls(const Reply &reply);
    void ReadExtensions(const QByteArray &lines);
    bool MustEncrypt() const;
    QByteArray Say(Await next);
    QByteArray End(State state);
    QByteArray Fail(const Reply &reply);
    QByteArray FailUnencrypted();

    varlo::net::Encryption wanted_;
    Await await_ = Await::Greeting;
    State state_ = State::Talking;
    bool encrypted_ = false;
    QByteArrayList extensions_;
    Failure trouble_;
};

} // namespace OSSMTP
