// The mailbox session as a pure state machine: one reply of the server in, a list of effects out.
#pragma once

#include "pop3/MessageBuffer.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace varlo {

// What one check needs to know, read from the preferences when it starts.
struct Pop3Account {
    QString Server;
    QString UserName;
    QString Password;
    int DeleteUnrelated = 0;  // only 1 means that messages which are no requests are deleted, too
    bool StartsTls = false;   // after the greeting, before anything is said about the user
    bool IsEncrypted = false; // whenever: a password that the server repeats is not shown then
};

// One thing to be done, in the order of the list.
struct Pop3Effect {
    enum class Kind {
        Close,     // close the connection
        Connect,   // connect to the server `Text`
        Send,      // send the command `Text` and CR LF
        Log,       // write `Text` to the console and the status log
        LogStatus, // the same and the status bar
        ReplyBox,  // show `Text`: the server refused
        ErrorBox,  // show `Text`: the connection failed
        Examine,   // read the message `Text`, then call MessageExamined
        Capture,   // move the kept requests to the Pending list
        Raise,     // the event ends with the run-time error `Number`
        Encrypt,   // encrypt the connection, then call Encrypted
    };

    Kind What;
    QString Text;
    int Number = 0;

    bool operator==(const Pop3Effect &) const = default;
};

using Pop3Effects = std::vector<Pop3Effect>;

// What an interrupted check leaves behind (the number of the current message, the text received so far) is
// there for the next one; after a Raise the owner takes a new session. Knows no socket, no file and no window,
// and never throws.
class Pop3Session {
public:
    // A reply of one line is shorter than this, in bytes; a server that never ends one would go on for ever.
    static constexpr qsizetype kTooLongReply = 4096;

    enum class State {
        Greeting,
        StlsSent,
        Encrypting,
        UserSent,
        PassSent,
        StatSent,
        Retrieving,
        MessageDone,
        QuitSent
    };

    // Begins a check. The message count, the current message and the text received so far are not reset.
    Pop3Effects Start(const Pop3Account &account);

    // One chunk of what the server sent; outside a message, one whole reply. One that is too long, and a
    // message past MessageBuffer::kLongest, end the check with a box and leave nothing to the next one.
    Pop3Effects DataArrival(const QByteArray &chunk);

    // The connection of the last Encrypt is encrypted. Nothing that came before counts.
    Pop3Effects Encrypted();

    // The message of the last Examine was read: a request, or something else.
    Pop3Effects MessageExamined(bool isRequest);

    // The connection failed. The state stays as it is.
    Pop3Effects SocketError(int number, const QString &description) const;

    // True while the reply awaited is one line, so that a part of it must not be handled yet.
    bool AwaitsLine() const { return state_ != State::Retrieving; }

    State CurrentState() const { return state_; }
    const MessageBuffer &Buffer() const { return buffer_; }

private:
    void Act(const QByteArray &chunk, Pop3Effects &effects);
    void Greeted(Pop3Effects &effects);
    void SayUser(Pop3Effects &effects);
    void UserAccepted(Pop3Effects &effects);
    void PassAccepted(Pop3Effects &effects);
    void StatAnswered(const QByteArray &chunk, Pop3Effects &effects);
    void TextArrived(const QByteArray &chunk, Pop3Effects &effects);
    void Deleted(Pop3Effects &effects);
    void QuitAccepted(Pop3Effects &effects);
    void Quit(Pop3Effects &effects);
    void GiveUp(const QString &why, Pop3Effects &effects);
    QString Progress() const;
    QString Shown(QString reply) const;

    State state_ = State::Greeting;
    Pop3Account account_;
    qint16 count_ = 0;
    qint16 current_ = 0; // counts from 1
    MessageBuffer buffer_;
};

} // namespace varlo
