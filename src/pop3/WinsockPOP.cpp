#include "pop3/WinsockPOP.h"

#include "core/Literals.h"
#include "core/SocketPoll.h"

#include <QDeadlineTimer>
#include <QMetaObject>
#include <QNetworkProxy>
#include <QPointer>

#include <utility>

namespace varlo {

namespace {

constexpr int kConnectionReset = 10054;
constexpr int kLongestSilence = 30; // ms that windows may go without events

// The numbers that operators know from other programs on their system.
int NumberOf(QAbstractSocket::SocketError error) {
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return 10061;
    case QAbstractSocket::HostNotFoundError:
        return 11001;
    case QAbstractSocket::SocketAccessError:
        return 10013;
    case QAbstractSocket::SocketResourceError:
        return 10055;
    case QAbstractSocket::SocketTimeoutError:
        return 10060;
    case QAbstractSocket::NetworkError:
        return 10051;
    default:
        return 10107; // a system call failed
    }
}

} // namespace

WinsockPOP::WinsockPOP(std::function<bool()> awaitsLine, QObject *parent)
    : QObject(parent), awaitsLine_(std::move(awaitsLine)) {
    socket_.setProxy(QNetworkProxy::NoProxy);
    socket_.setReadBufferSize(
        kReadAhead); // a server that floods while a box is open waits in its own buffers
    connect(&socket_, &QTcpSocket::connected, this, [this] { probe_.Watch(socket_.socketDescriptor()); });
    connect(&socket_, &QTcpSocket::readyRead, this, &WinsockPOP::DeliverSoon);
    connect(&socket_, &QTcpSocket::disconnected, this, &WinsockPOP::DeliverSoon);
    connect(&socket_, &QTcpSocket::errorOccurred, this, &WinsockPOP::NoteError);
}

void WinsockPOP::Connect(const QString &host, quint16 port) {
    socket_.connectToHost(host, port);
}

void WinsockPOP::SendData(const QByteArray &data) {
    if (socket_.state() != QAbstractSocket::ConnectedState)
        return;
    socket_.write(data); // what goes wrong later arrives as Error
    socket_.flush();     // the server works while the caller writes its log
}

void WinsockPOP::Close() {
    probe_.Forget();
    socket_.abort();
    held_.clear();
    failure_.reset();
}

bool WinsockPOP::IsClosed() const {
    return socket_.state() == QAbstractSocket::UnconnectedState;
}

void WinsockPOP::NoteError(QAbstractSocket::SocketError error) {
    const bool wasReset = probe_.WasReset();
    probe_.Forget();
    if (wasReset)
        failure_ = {kConnectionReset, u"Connection reset by peer"_s};
    else if (error != QAbstractSocket::RemoteHostClosedError)
        failure_ = {NumberOf(error), socket_.errorString()};
    DeliverSoon();
}

// Never from within a call of the socket: it may be this object's own Connect, and the socket must be free to
// be closed.
void WinsockPOP::DeliverSoon() {
    if (delivering_)
        return; // it looks again before it ends
    QMetaObject::invokeMethod(this, &WinsockPOP::Deliver, Qt::QueuedConnection);
}

void WinsockPOP::Deliver() {
    if (delivering_)
        return;
    delivering_ = true;
    const QPointer<WinsockPOP> alive(this); // a handler's event loop may close the window that owns this
    const QDeadlineTimer loopIsDue(kLongestSilence);
    while (alive && DeliverNext()) {
        if (alive && !loopIsDue.hasExpired())
            WaitAMoment();
    }
    if (alive)
        delivering_ = false;
}

// The handler has probably sent a command. A turn of the event loop costs more than the answer of a near
// server takes, and a check is made of thousands of such answers.
void WinsockPOP::WaitAMoment() {
    const bool nothingToHandOn = held_.isEmpty() && socket_.bytesAvailable() == 0;
    if (nothingToHandOn && socket_.state() == QAbstractSocket::ConnectedState &&
        PollSocket(socket_.socketDescriptor(), false, kShortWait))
        socket_.waitForReadyRead(0); // reads what is there; to wait here would report a time-out as an error
}

bool WinsockPOP::DeliverNext() {
    if (const QByteArray chunk = NextChunk(); !chunk.isEmpty()) {
        Q_EMIT DataArrival(chunk);
        return true;
    }
    if (const auto failure = std::exchange(failure_, std::nullopt)) {
        Q_EMIT Error(failure->Number, failure->Description);
        return true;
    }
    return false;
}

QByteArray WinsockPOP::NextChunk() {
    if (socket_.isOpen())
        held_ += socket_.readAll();
    if (!awaitsLine_() || held_.endsWith('\n') || IsClosed())
        return std::exchange(held_, {});
    if (held_.size() < kLongestLine)
        return {};
    QByteArray chunk = held_.first(kLongestLine);
    held_.remove(0, kLongestLine);
    return chunk;
}

} // namespace varlo
