// Drives one curl transfer from the event loop: sockets by notifiers, time by a timer, nothing ever blocks.
#pragma once

#include "smtp/Curl.h"

#include <QObject>
#include <QTimer>
#include <curl/curl.h>

#include <functional>
#include <map>
#include <memory>

class QSocketNotifier;

namespace OSSMTP {

class CurlDriver : public QObject {
    Q_OBJECT

public:
    // `finished` is called once, when the transfer of `easy` has ended (for a connection without a transfer:
    // when it stands). `easy` must outlive the driver.
    CurlDriver(CURL *easy, std::function<void(CURLcode)> finished);
    ~CurlDriver() override;

    // Begins; the rest happens in the event loop.
    void Start();

private:
    struct Watch {
        std::unique_ptr<QSocketNotifier> Read;
        std::unique_ptr<QSocketNotifier> Write;
    };

    static int OnSocket(CURL *easy, curl_socket_t socket, int what, void *self, void *watch);
    static int OnTimer(CURLM *multi, long milliseconds, void *self);
    void WatchSocket(curl_socket_t socket, int what);
    void Forget(curl_socket_t socket);
    void Act(curl_socket_t socket, int events);

    CURLM *multi_;
    CURL *easy_;
    std::function<void(CURLcode)> finished_;
    QTimer timer_;
    std::map<curl_socket_t, Watch> watched_;
};

} // namespace OSSMTP
