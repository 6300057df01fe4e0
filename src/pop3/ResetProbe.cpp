#include "pop3/ResetProbe.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace varlo {

#ifdef Q_OS_UNIX

void ResetProbe::Watch(qintptr descriptor) {
    Forget();
    handle_ = ::fcntl(static_cast<int>(descriptor), F_DUPFD_CLOEXEC, 0);
}

bool ResetProbe::WasReset() const {
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    // After the server's close there still is a peer to send to; after a reset there is none.
    return handle_ >= 0 && ::getpeername(handle_, reinterpret_cast<sockaddr *>(&peer), &size) != 0;
}

void ResetProbe::Forget() {
    if (handle_ >= 0)
        ::close(handle_);
    handle_ = -1;
}

#else

void ResetProbe::Watch(qintptr) {
}

bool ResetProbe::WasReset() const {
    return false;
}

void ResetProbe::Forget() {
}

#endif

} // namespace varlo
