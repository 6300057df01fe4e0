#include "net/ResetProbe.h"

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace varlo::net {

#ifdef Q_OS_WIN

void ResetProbe::Watch(qintptr descriptor) {
    Forget();
    WSAPROTOCOL_INFOW info;
    if (::WSADuplicateSocketW(static_cast<SOCKET>(descriptor), ::GetCurrentProcessId(), &info) == 0)
        handle_ =
            static_cast<qintptr>(::WSASocketW(FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO,
                                              &info, 0, WSA_FLAG_NO_HANDLE_INHERIT));
    u_long on = 1; // to be asked, never to be waited for
    if (handle_ != -1)
        ::ioctlsocket(static_cast<SOCKET>(handle_), static_cast<long>(FIONBIO), &on);
}

bool ResetProbe::WasReset() const {
    if (handle_ == -1)
        return false;
    const auto socket = static_cast<SOCKET>(handle_);
    char byte = 0;
    if (::recv(socket, &byte, 1, MSG_PEEK) == SOCKET_ERROR) {
        const int code = ::WSAGetLastError();
        return code == WSAECONNRESET || code == WSAECONNABORTED || code == WSAENETRESET;
    }
    // Wine tells of a reset only once, and QTcpSocket has heard it; but a peer it has no more.
    sockaddr_storage peer{};
    int size = sizeof peer;
    return ::getpeername(socket, reinterpret_cast<sockaddr *>(&peer), &size) == SOCKET_ERROR;
}

void ResetProbe::Forget() {
    if (handle_ != -1)
        ::closesocket(static_cast<SOCKET>(handle_));
    handle_ = -1;
}

#else

void ResetProbe::Watch(qintptr descriptor) {
    Forget();
    handle_ = ::fcntl(static_cast<int>(descriptor), F_DUPFD_CLOEXEC, 0);
}

bool ResetProbe::WasReset() const {
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    // After the server's close there still is a peer to send to; after a reset there is none.
    return handle_ != -1 &&
           ::getpeername(static_cast<int>(handle_), reinterpret_cast<sockaddr *>(&peer), &size) != 0;
}

void ResetProbe::Forget() {
    if (handle_ != -1)
        ::close(static_cast<int>(handle_));
    handle_ = -1;
}

#endif

} // namespace varlo::net
