// Whoever sends mail, seen from those who have mail to send: one mail in, what became of it out.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace varlo {

enum class MailSecurity {
    Automatic, // encrypted when the server offers it, by whatever certificate
    StartTls,  // STARTTLS with a trusted certificate, or nothing is sent
    Tls,       // encrypted from the first byte, with a trusted certificate
};

enum class MailSignIn { Password, Token };

// The server that takes the mail, and who sends it. Without a user name nobody signs in.
struct MailAccount {
    QString Host; // name or address
    int Port = 25;
    QString Sender; // a mailbox: "Name" <address>, or a bare address
    MailSecurity Security = MailSecurity::Automatic;
    QString Username = {};
    QString Secret = {}; // the password, or the token
    MailSignIn SignIn = MailSignIn::Password;
    // SHA-256, 32 bytes, of a certificate that is trusted for this server whoever signed it; empty for none.
    QByteArray Trusted = {};
    // The operator has said that the secret may go to this server over a line that is not encrypted.
    bool ClearTextAllowed = false;

    bool operator==(const MailAccount &) const = default;
};

// What all recipients of a message share.
struct MailMessage {
    QString Subject;
    QString Text;            // lines end with CR LF
    QStringList Attachments; // full paths, each once

    bool operator==(const MailMessage &) const = default;
};

// One message for one recipient. Mails that share one message object are encoded once.
struct Mail {
    std::shared_ptr<const MailMessage> Message;
    QString Recipient; // a mailbox
};

struct Outcome {
    enum class Kind {
        Sent,     // the server took it
        Refused,  // the server's permanent word: a 5xx reply, or an address that is none
        Later,    // another try may succeed: a 4xx reply, a time-out or a broken line before the content
        InDoubt,  // the line broke, or no answer came, when the server may have had the whole message
        NotTried, // nothing was said to a server about this recipient: no connection, or a fault of our own
    };

    Kind Result = Kind::Sent;
    // The reply code, or the number of the component's error (12002 time-out, 12029 no connection ...).
    int Number = 0;
    QString Description;
    // The fault is this machine's (an attachment that cannot be read): Number and Description are those of a
    // RuntimeError, and the next recipient would fare no better.
    bool IsLocal = false;
    // The fault is the account's (the sign-in was refused, the encryption that is a must is missing): the
    // Description is sentences for the operator, and the next recipient would fare no better.
    bool IsOfAccount = false;

    bool operator==(const Outcome &) const = default;
};

// One connection's worth of sending: made for an account, used for one mail after the other, destroyed when no
// more is to be sent. Everything happens on the thread the object lives in, between events: nothing waits and
// no event loop is nested. It may be destroyed at any time, in a handler of Finished too: a mail that is under
// way is dropped, and Finished does not come.
class Mailer : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Begins to send. One mail at a time: the next one only after Finished (in its handler at the earliest).
    virtual void Submit(const Mail &mail) = 0;

Q_SIGNALS:
    // The mail that was submitted last has met its fate. Never emitted from within Submit.
    void Finished(const varlo::Outcome &outcome);
    // An answer is outstanding for a while already; `what` is a line for the operator. Never for a quick server.
    void Waiting(const QString &what);
};

using MakeMailer = std::function<std::unique_ptr<Mailer>(const MailAccount &)>;

} // namespace varlo
