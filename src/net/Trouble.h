// What can end a connection, and the numbers by which operators know it.
#pragma once

#include <QString>

namespace varlo::net {

enum class Trouble {
    UnknownHost,
    NoSuchPort,
    Refused,
    AccessDenied,
    NoResources,
    Unreachable,
    NoAnswer, // to the attempt to connect
    TimedOut, // the caller's own limit
    Reset,
    Closed,       // by the other end, in order
    NotEncrypted, // the handshake failed
    NotTrusted,   // the certificate did
    Other,
};

struct Failure {
    Trouble Cause = Trouble::Other;
    QString Text; // for a person
    // Some of what was written had not been handed to the system, so the other end cannot have it.
    bool IsCut = false;

    bool operator==(const Failure &) const = default;
};

// The numbers of those who send mail. InvalidReply is no trouble of the connection, but of what came over it.
enum MailError : int {
    TimedOut = 12002,
    NameNotResolved = 12007,
    CannotConnect = 12029,
    ConnectionLost = 12030,
    InvalidReply = 12152,
};

// The number of a trouble for those who send mail, and for those who fetch it: there it is the number of the
// system's sockets (10061 refused, 11001 unknown host, 10054 reset, ...).
MailError MailNumber(Trouble trouble);
int SocketNumber(Trouble trouble);

} // namespace varlo::net
