// The way from the greeting to the first mail as a pure step: a reply of the server in, the bytes to write
// next out.
#pragma once

#include "net/Endpoint.h"
#include "net/SignIn.h"
#include "smtp/Failure.h"
#include "smtp/ReplyParser.h"

#include <QByteArrayList>

namespace OSSMTP {

struct HandshakePlan {
    varlo::net::Encryption Wanted = varlo::net::Encryption::None;
    std::optional<varlo::net::Credentials> SignIn = {}; // none: nobody signs in
    bool ClearTextAllowed = false;                      // to sign in on a line that is not encrypted
    QByteArray OwnName = "localhost";                   // for EHLO
};

// What a client calls itself: the full name of this machine, else `address` as a literal ("[192.0.2.1]").
QByteArray OwnName(const QString &machine, const QString &domain, const QString &address);

//   awaited   reply    leads to
//   greeting  2xx      EHLO
//   EHLO      2xx      STARTTLS when it is offered and wanted, else AUTH when somebody signs in, else Ready
//             other    HELO, where encryption is not a must
//   HELO      2xx      AUTH (which is not offered: Failed) or Ready, without extensions
//   STARTTLS  220      Encrypting
//             other    as after EHLO, where encryption is not a must
//   AUTH      334      the answer to the challenge
//             235      Ready
//             504      AUTH with the next mechanism
//   any       others   Failed
//
// Nobody signs in on a line that is not encrypted unless that is allowed.
class Handshake {
public:
    enum class State {
        Talking,    // more replies are awaited
        Encrypting, // the caller encrypts the connection, then calls Resume
        Ready,
        Failed, // Trouble() says by what
    };

    explicit Handshake(HandshakePlan plan = {});

    // Takes one reply and returns the bytes to write next, often none.
    QByteArray Take(const Reply &reply);
    // The connection is encrypted now: what was offered before counts no more.
    QByteArray Resume();

    State Now() const { return state_; }
    const Failure &Trouble() const { return trouble_; }
    // Whether EHLO told of this extension ("PIPELINING").
    bool Offers(const QByteArray &extension) const { return extensions_.contains(extension); }
    // What was written last is, or holds, what only the server may see.
    bool WroteSecret() const { return await_ == Await::SignIn; }
    bool IsEncrypted() const { return encrypted_; }
    // With this mechanism somebody has signed in or tried to.
    QByteArray Mechanism() const { return signIn_ ? signIn_->Mechanism() : QByteArray(); }
    // Failed, because signing in in the clear is not allowed.
    bool NeedsClearText() const { return needsClearText_; }

private:
    enum class Await { Greeting, Ehlo, Helo, StartTls, SignIn };

    QByteArray TakeEhlo(const Reply &reply);
    QByteArray TakeStartTls(const Reply &reply);
    QByteArray TakeSignIn(const Reply &reply);
    QByteArray Proceed();
    QByteArray BeginSignIn();
    QByteArray Authenticate(const QByteArray &mechanism);
    QByteArray TakeChallenge(const Reply &reply);
    void ReadExtensions(const QByteArray &lines);
    bool MustEncrypt() const;
    QByteArray Say(Await next);
    QByteArray End(State state);
    QByteArray Fail(const Reply &reply);
    QByteArray FailUnencrypted();
    QByteArray FailSignIn(int number, const QString &text);

    HandshakePlan plan_;
    Await await_ = Await::Greeting;
    State state_ = State::Talking;
    bool encrypted_ = false;
    QByteArrayList extensions_;
    QByteArrayList mechanisms_;
    std::optional<varlo::net::SignIn> signIn_;
    bool needsClearText_ = false;
    Failure trouble_;
};

} // namespace OSSMTP
