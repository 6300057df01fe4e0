#include "net/SystemSocket.h"

#include <algorithm>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <cerrno>
#include <sys/socket.h>
#endif

namespace varlo::net {

#ifdef Q_OS_WIN

qint64 SendNow(qintptr socket, const char *bytes, qint64 size) {
    const int sent = ::send(static_cast<SOCKET>(socket), bytes, static_cast<int>(size), 0);
    if (sent >= 0)
        return sent;
    return ::WSAGetLastError() == WSAEWOULDBLOCK ? 0 : -1;
}

qint64 ReceiveNow(qintptr socket, char *bytes, qint64 size) {
    return std::max(0, ::recv(static_cast<SOCKET>(socket), bytes, static_cast<int>(size), 0));
}

#else

qint64 SendNow(qintptr socket, const char *bytes, qint64 size) {
    const ssize_t sent = ::send(static_cast<int>(socket), bytes, static_cast<size_t>(size), MSG_NOSIGNAL);
    if (sent >= 0)
        return sent;
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR ? 0 : -1;
}

qint64 ReceiveNow(qintptr socket, char *bytes, qint64 size) {
    return std::max<ssize_t>(
        0, ::recv(static_cast<int>(socket), bytes, static_cast<size_t>(size), MSG_DONTWAIT));
}

#endif

} // namespace varlo::net
