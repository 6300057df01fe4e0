// The SMTP component: one message, one recipient, one send at a time, over one connection that is kept.
#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace OSSMTP {

// Error numbers of the component. A refusal by the server is reported with its three-digit reply code
// instead.
enum Error : int {
    TimedOut = 12002,
    NameNotResolved = 12007,
    CannotConnect = 12029,
    ConnectionLost = 12030,
    InvalidReply = 12152,
};

// Eight operations and one event. Send waits in an event loop of its own, so that windows stay alive;
// everything runs on the thread that the object lives in. What was set stays set for the next Send, except
// the attachments: the collection is empty again after each Send, and the encoded form of an unchanged
// message is kept and used again.
//
// Promises: one connection is kept for many messages, and a new one is made when the server closed it or
// another server is set. A message is tried a second time only when the connection broke before the server
// asked for its text, so nobody gets it twice. The object may be destroyed at any time, by a handler that
// runs while Send waits too: that Send then drops its connection and returns false without an event.
class SMTP : public QObject {
    Q_OBJECT

public:
    explicit SMTP(QObject *parent = nullptr);
    ~SMTP() override; // says QUIT to a server that is still connected, without waiting for the answer

    void SetServer(const QString &host);
    void SetPort(int port);
    // A mailbox: "Name" <address>, or a bare address. The address is also the envelope's.
    void SetSender(const QString &mailbox);
    void SetSubject(const QString &subject);
    void SetMessageText(const QString &text); // lines end with CR LF
    // Adds the file at `path` under `key`, once per Send. Throws varlo::RuntimeError: 53 or 70 when the file
    // cannot be read, 457 when the key is there already.
    void AddAttachment(const QString &path, const QString &key);
    void SetRecipient(const QString &mailbox);
    // Sends the message. True when the server took it; otherwise ErrorSMTP was emitted once (or Abort was
    // called). What is set while it waits counts for the next message. Called while a Send runs, it does
    // nothing and returns false without an event. Throws varlo::RuntimeError (53, 70, 57) when an attachment
    // can no longer be read, or (53) when no mail can be sent at all because libcurl is missing: no fault of
    // the recipient's.
    bool Send();

    // How long one answer of the server may take; 60,000 ms unless set.
    void SetTimeout(int milliseconds);
    // Makes a running Send return false at once, without an event, and drops the connection. Safe at any
    // time; the next Send connects anew and has no attachments but those added after the call.
    void Abort();

Q_SIGNALS:
    void ErrorSMTP(int Number, const QString &Description);

private:
    class Private;
    std::shared_ptr<Private> d; // a Send that still runs when the object is destroyed holds on to it
};

} // namespace OSSMTP
