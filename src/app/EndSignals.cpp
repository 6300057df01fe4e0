#include "app/EndSignals.h"

#ifdef Q_OS_UNIX

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace varlo {

namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGHUP, SIGINT};

// A handler may do next to nothing: it writes one byte, and the event loop sees the pipe become readable.
std::array<int, 2> thePipe{-1, -1};
std::array<struct sigaction, 3> theOldActions{};

void Write(int) {
    const int before = errno;
    const char byte = 0;
    [[maybe_unused]] const auto ignored = ::write(thePipe[1], &byte, 1); // full: the loop will wake up anyway
    errno = before;
}

void Drain() {
    std::array<char, 16> bytes{};
    while (::read(thePipe[0], bytes.data(), bytes.size()) > 0) {
    }
}

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent) {
    if (::pipe(thePipe.data()) != 0)
        return; // no descriptors left: the signals end the program as they always did
    for (int end : thePipe) {
        ::fcntl(end, F_SETFL, O_NONBLOCK);
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    auto *notifier = new QSocketNotifier(thePipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        Drain();
        Q_EMIT Received();
    });
    for (size_t i = 0; i < kSignals.size(); ++i) {
        struct sigaction action {};
        action.sa_handler = Write;
        action.sa_flags = SA_RESTART;
        ::sigaction(kSignals[i], nullptr, &theOldActions[i]);
        if (theOldActions[i].sa_handler != SIG_IGN)
            ::sigaction(kSignals[i], &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    if (thePipe[0] < 0)
        return;
    for (size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &theOldActions[i], nullptr);
    for (int &end : thePipe) {
        ::close(end);
        end = -1;
    }
}

} // namespace varlo

#else

namespace varlo {

EndSignals::EndSignals(QObject *parent) : QObject(parent) {
}

EndSignals::~EndSignals() = default;

} // namespace varlo

#endif
