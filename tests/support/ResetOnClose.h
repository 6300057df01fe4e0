// The way in which a crashed server leaves its connections.
#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace varlo::test {

// When `socket` is closed, the other side finds the connection reset.
inline void ResetOnClose(qintptr socket) {
    const linger now{1, 0};
#ifdef Q_OS_WIN
    ::setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&now),
                 sizeof now);
#else
    ::setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &now, sizeof now);
#endif
}

} // namespace varlo::test
