#include "core/SocketPoll.h"

#include <QDeadlineTimer>

#include <chrono>
#include <thread>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace varlo {

namespace {

using namespace std::chrono_literals;

// A processor that was put to sleep wakes up later than a server on the same machine answers, so a wait
// begins awake. For a server further away this is lost, but it is little beside the way there.
constexpr auto kAwake = 150us;

bool IsReady(qintptr socket, short events, int milliseconds) {
#ifdef Q_OS_WIN
    WSAPOLLFD entry{static_cast<SOCKET>(socket), events, 0};
    return WSAPoll(&entry, 1, milliseconds) > 0;
#else
    pollfd entry{static_cast<int>(socket), events, 0};
    return poll(&entry, 1, milliseconds) > 0;
#endif
}

} // namespace

bool PollSocket(qintptr socket, bool orWritable, int milliseconds) {
    const auto events = static_cast<short>(orWritable ? POLLIN | POLLOUT : POLLIN);
    const QDeadlineTimer asleep(milliseconds > 0 ? kAwake : 0us, Qt::PreciseTimer);
    while (!asleep.hasExpired()) {
        if (IsReady(socket, events, 0))
            return true;
        std::this_thread::yield(); // the server may need this very processor
    }
    return IsReady(socket, events, milliseconds);
}

} // namespace varlo
