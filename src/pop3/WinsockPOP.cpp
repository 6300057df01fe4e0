#include "pop3/WinsockPOP.h"

#include <QPointer>

#include <utility>

namespace varlo {

WinsockPOP::WinsockPOP(std::function<bool()> awaitsLine, QObject *parent)
    : QObject(parent), awaitsLine_(std::move(awaitsLine)) {
    connect(&connection_, &net::Connection::Arrived, this, &WinsockPOP::Connection_Arrived);
    connect(&connection_, &net::Connection::Ended, this, &WinsockPOP::Connection_Ended);
    connect(&connection_, &net::Connection::Encrypted, this, &WinsockPOP::Encrypted);
    connect(&connection_, &net::Connection::CertificateSeen, this,
            [this](const QSslCertificate &shown) { certificate_ = net::Describe(shown); });
}

void WinsockPOP::Connect(const net::Endpoint &endpoint) {
    connection_.Open(endpoint);
}

void WinsockPOP::StartTls() {
    held_.clear();
    connection_.StartTls();
}

void WinsockPOP::Close() {
    connection_.Close();
    held_.clear();
}

void WinsockPOP::Connection_Arrived(const QByteArray &bytes) {
    held_ += bytes;
    const QPointer<WinsockPOP> alive(this); // a handler may close the window that owns this
    for (QByteArray chunk = NextChunk(); !chunk.isEmpty(); chunk = alive ? NextChunk() : QByteArray())
        Q_EMIT DataArrival(chunk);
}

void WinsockPOP::Connection_Ended(const net::Failure &failure) {
    const QPointer<WinsockPOP> alive(this);
    if (const QByteArray rest = std::exchange(held_, {}); !rest.isEmpty())
        Q_EMIT DataArrival(rest);
    if (!alive || failure.Cause == net::Trouble::Closed)
        return;
    const int number = net::SocketNumber(failure.Cause);
    if (failure.Cause == net::Trouble::NotTrusted)
        Q_EMIT Distrusted(certificate_, number, failure.Text);
    else
        Q_EMIT Error(number, failure.Text);
}

QByteArray WinsockPOP::NextChunk() {
    if (!awaitsLine_() || held_.endsWith('\n'))
        return std::exchange(held_, {});
    if (held_.size() < kLongestLine)
        return {};
    QByteArray chunk = held_.first(kLongestLine);
    held_.remove(0, kLongestLine);
    return chunk;
}

} // namespace varlo
