#include "smtp/CurlDriver.h"

#include <QSocketNotifier>

#include <limits>

namespace OSSMTP {

CurlDriver::CurlDriver(CURL *easy, std::function<void(CURLcode)> finished)
    : multi_(Curl().multi_init()), easy_(easy), finished_(std::move(finished)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { Act(CURL_SOCKET_TIMEOUT, 0); });
    Curl().multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, OnSocket);
    Curl().multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    Curl().multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, OnTimer);
    Curl().multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

CurlDriver::~CurlDriver() {
    finished_ = nullptr;
    Curl().multi_remove_handle(multi_, easy_); // closes its connection too
    Curl().multi_cleanup(multi_);
}

void CurlDriver::Start() {
    Curl().multi_add_handle(multi_, easy_);
}

int CurlDriver::OnSocket(CURL *, curl_socket_t socket, int what, void *self, void *) {
    auto *driver = static_cast<CurlDriver *>(self);
    what == CURL_POLL_REMOVE ? driver->Forget(socket) : driver->WatchSocket(socket, what);
    return 0;
}

int CurlDriver::OnTimer(CURLM *, long milliseconds, void *self) {
    QTimer &timer = static_cast<CurlDriver *>(self)->timer_;
    if (milliseconds < 0)
        timer.stop();
    else
        timer.start(int(std::min<long>(milliseconds, std::numeric_limits<int>::max())));
    return 0;
}

void CurlDriver::WatchSocket(curl_socket_t socket, int what) {
    Watch &watch = watched_[socket];
    if (!watch.Read) {
        const auto descriptor = static_cast<qintptr>(socket);
        watch.Read = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        watch.Write = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
        connect(watch.Read.get(), &QSocketNotifier::activated, this,
                [this, socket] { Act(socket, CURL_CSELECT_IN); });
        connect(watch.Write.get(), &QSocketNotifier::activated, this,
                [this, socket] { Act(socket, CURL_CSELECT_OUT); });
    }
    watch.Read->setEnabled(what & CURL_POLL_IN);
    watch.Write->setEnabled(what & CURL_POLL_OUT);
}

// The notifier may be the one whose signal is being delivered, so it is only switched off now and deleted
// later.
void CurlDriver::Forget(curl_socket_t socket) {
    const auto found = watched_.find(socket);
    if (found == watched_.end())
        return;
    for (auto *half : {&found->second.Read, &found->second.Write}) {
        (*half)->setEnabled(false);
        half->release()->deleteLater();
    }
    watched_.erase(found);
}

void CurlDriver::Act(curl_socket_t socket, int events) {
    int running = 0;
    Curl().multi_socket_action(multi_, socket, events, &running);
    int left = 0;
    while (const CURLMsg *message = Curl().multi_info_read(multi_, &left))
        if (message->msg == CURLMSG_DONE && finished_)
            std::exchange(finished_, nullptr)(message->data.result);
}

} // namespace OSSMTP
