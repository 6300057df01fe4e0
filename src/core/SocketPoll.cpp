#include "core/SocketPoll.h"

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace varlo {

bool PollSocket(qintptr socket, bool orWritable, int milliseconds) {
    const auto events = static_cast<short>(orWritable ? POLLIN | POLLOUT : POLLIN);
#ifdef Q_OS_WIN
    WSAPOLLFD entry{static_cast<SOCKET>(socket), events, 0};
    return WSAPoll(&entry, 1, milliseconds) > 0;
#else
    pollfd entry{static_cast<int>(socket), events, 0};
    return poll(&entry, 1, milliseconds) > 0;
#endif
}

} // namespace varlo
