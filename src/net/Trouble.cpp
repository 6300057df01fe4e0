#include "net/Trouble.h"

#include "net/Connection.h"

#include <algorithm>
#include <iterator>

namespace varlo::net {

namespace {

struct Numbers {
    Trouble Cause;
    int Socket;
    MailError Mail;
};

constexpr Numbers kNumbers[] = {
    {Trouble::UnknownHost, 11001, NameNotResolved}, {Trouble::NoSuchPort, 10049, CannotConnect},
    {Trouble::Refused, 10061, CannotConnect},       {Trouble::AccessDenied, 10013, CannotConnect},
    {Trouble::NoResources, 10055, CannotConnect},   {Trouble::Unreachable, 10051, CannotConnect},
    {Trouble::NoAnswer, 10060, TimedOut},           {Trouble::TimedOut, 10060, TimedOut},
    {Trouble::Reset, 10054, ConnectionLost},        {Trouble::Closed, 10101, ConnectionLost},
    {Trouble::NotEncrypted, 10107, CannotConnect},  {Trouble::NotTrusted, 10107, CannotConnect},
    {Trouble::Other, 10107, CannotConnect}, // a system call failed
};

const Numbers &NumbersOf(Trouble trouble) {
    return *std::find_if(std::begin(kNumbers), std::end(kNumbers) - 1,
                         [trouble](const Numbers &numbers) { return numbers.Cause == trouble; });
}

} // namespace

MailError MailNumber(Trouble trouble) {
    return NumbersOf(trouble).Mail;
}

int SocketNumber(Trouble trouble) {
    return NumbersOf(trouble).Socket;
}

Trouble TroubleOf(QAbstractSocket::SocketError error) {
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
    case QAbstractSocket::ProxyConnectionRefusedError:
        return Trouble::Refused;
    case QAbstractSocket::RemoteHostClosedError:
    case QAbstractSocket::ProxyConnectionClosedError:
        return Trouble::Closed;
    case QAbstractSocket::HostNotFoundError:
    case QAbstractSocket::ProxyNotFoundError:
        return Trouble::UnknownHost;
    case QAbstractSocket::SocketAccessError:
        return Trouble::AccessDenied;
    case QAbstractSocket::SocketResourceError:
        return Trouble::NoResources;
    case QAbstractSocket::SocketTimeoutError:
    case QAbstractSocket::ProxyConnectionTimeoutError:
        return Trouble::NoAnswer;
    case QAbstractSocket::NetworkError:
        return Trouble::Unreachable;
    case QAbstractSocket::SslHandshakeFailedError:
        return Trouble::NotEncrypted;
    default:
        return Trouble::Other;
    }
}

} // namespace varlo::net
