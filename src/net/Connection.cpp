#include "net/Connection.h"

#include "core/Literals.h"
#include "core/SocketPoll.h"
#include "net/SystemSocket.h"

#include <QMetaObject>
#include <QPointer>
#include <QSslSocket>

#include <algorithm>
#include <utility>

namespace varlo::net {

namespace {

constexpr int kTurn = 30;              // ms that go by at most before the event loop turns
constexpr qint64 kPiece = 64 * 1024;   // bytes handed to the system at once
constexpr qint64 kArrival = 16 * 1024; // bytes taken from the system at once

} // namespace

Connection::Connection(QObject *parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Connection::CheckTime);
}

Connection::~Connection() {
    Close();
}

void Connection::Open(const Endpoint &endpoint) {
    Close();
    endpoint_ = endpoint;
    const QString host = HostName(endpoint.Host);
    if (endpoint.Port < 1 || endpoint.Port > 65535)
        return Fail({Trouble::NoSuchPort, u"The port %1 does not exist"_s.arg(endpoint.Port), false});
    if (host.isEmpty())
        return Fail(
            {Trouble::UnknownHost, u"\"%1\" is not the name of a server"_s.arg(endpoint.Host), false});
    MakeSocket();
    const QNetworkProxy proxy = ProxyFor(host);
    proxied_ = proxy.type() != QNetworkProxy::NoProxy;
    socket_->setProxy(proxy);
    if (auto *ssl = qobject_cast<QSslSocket *>(socket_.get()))
        ssl->setPeerVerifyName(host);
    socket_->connectToHost(host, static_cast<quint16>(endpoint.Port));
}

// What encrypts is loaded only for those who need it.
void Connection::MakeSocket() {
    if (endpoint_.Security == Encryption::None) {
        socket_ = std::make_unique<QTcpSocket>();
    } else {
        auto ssl = std::make_unique<QSslSocket>();
        connect(ssl.get(), &QSslSocket::encryptedBytesWritten, this, &Connection::DeliverSoon);
        connect(ssl.get(), &QSslSocket::encrypted, this, &Connection::NoteEncrypted);
        connect(ssl.get(), &QSslSocket::sslErrors, this,
                [this, ssl = ssl.get()](const QList<QSslError> &errors) {
                    if (endpoint_.Security == Encryption::WhenOffered || IsPinned())
                        ssl->ignoreSslErrors();
                    else
                        distrust_ = errors.first().errorString();
                });
        socket_ = std::move(ssl);
    }
    socket_->setReadBufferSize(kReadAhead); // a flood waits at the other end
    connect(socket_.get(), &QTcpSocket::connected, this, &Connection::NoteConnected);
    connect(socket_.get(), &QTcpSocket::readyRead, this, &Connection::DeliverSoon);
    connect(socket_.get(), &QTcpSocket::bytesWritten, this, &Connection::DeliverSoon);
    connect(socket_.get(), &QTcpSocket::errorOccurred, this, &Connection::NoteError);
}

void Connection::NoteConnected() {
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1); // a command never waits for company
    probe_.Watch(socket_->socketDescriptor());
    if (endpoint_.Security == Encryption::Tls)
        return Handshake();
    opened_ = true;
    DeliverSoon();
}

void Connection::StartTls() {
    if (!socket_ || IsClosed())
        return;
    char bytes[kArrival];
    do
        socket_->readAll();
    while (!proxied_ && ReceiveNow(socket_->socketDescriptor(), bytes, sizeof bytes) > 0);
    Handshake();
}

void Connection::Handshake() {
    auto *ssl = static_cast<QSslSocket *>(socket_.get());
    handshaking_ = true;
    ssl->setPeerVerifyMode(endpoint_.Security == Encryption::WhenOffered ? QSslSocket::VerifyNone
                                                                         : QSslSocket::VerifyPeer);
    ssl->startClientEncryption();
}

bool Connection::IsPinned() const {
    const QSslCertificate shown = static_cast<QSslSocket *>(socket_.get())->peerCertificate();
    return !endpoint_.Pin.isEmpty() && shown.digest(QCryptographicHash::Sha256) == endpoint_.Pin;
}

void Connection::NoteCertificate() {
    const QSslCertificate shown = static_cast<QSslSocket *>(socket_.get())->peerCertificate();
    if (!shown.isNull())
        certificate_ = shown;
}

void Connection::NoteEncrypted() {
    handshaking_ = false;
    NoteCertificate();
    (endpoint_.Security == Encryption::Tls ? opened_ : encrypted_) = true;
    DeliverSoon();
}

void Connection::NoteError(QAbstractSocket::SocketError error) {
    if (error == QAbstractSocket::SocketTimeoutError && socket_->state() == QAbstractSocket::ConnectedState)
        return; // a look at the socket that found nothing
    if (handshaking_)
        NoteCertificate();
    Fail(FailureOf(error));
}

Failure Connection::FailureOf(QAbstractSocket::SocketError error) const {
    if (!distrust_.isEmpty())
        return {Trouble::NotTrusted, distrust_, false};
    if (handshaking_)
        return {Trouble::NotEncrypted, socket_->errorString(), false};
    if (probe_.WasReset())
        return {Trouble::Reset, u"Connection reset by peer"_s, false};
    return {TroubleOf(error), socket_->errorString(), false};
}

void Connection::Fail(const Failure &failure) {
    probe_.Forget();
    writable_.reset();
    if (!failure_)
        failure_ = failure;
    DeliverSoon();
}

void Connection::Write(const QByteArray &bytes) {
    if (IsClosed() || bytes.isEmpty())
        return;
    AwaitWithin(limit_);
    out_ << bytes;
    if (out_.size() == 1)
        PushOut(); // the other end works while the caller does
    DeliverSoon();
}

bool Connection::IsWriting() const {
    return !out_.isEmpty() || (socket_ && Backlog() > 0);
}

// What the socket has taken and not yet handed on; nothing where bytes go straight to the system.
qint64 Connection::Backlog() const {
    const auto *ssl = qobject_cast<QSslSocket *>(socket_.get());
    return socket_->bytesToWrite() + (ssl ? ssl->encryptedBytesToWrite() : 0);
}

bool Connection::IsDirect() const {
    if (proxied_ || handshaking_ || socket_->state() != QAbstractSocket::ConnectedState)
        return false;
    return endpoint_.Security == Encryption::None || !static_cast<QSslSocket *>(socket_.get())->isEncrypted();
}

bool Connection::PushOut() {
    if (out_.isEmpty() || unwritable_ || IsClosed())
        return false;
    const QByteArray piece = QByteArray::fromRawData(out_.first().constData() + sent_,
                                                     std::min(kPiece, out_.first().size() - sent_));
    if (!IsDirect())
        return PushThroughSocket(piece);
    const qint64 sent = SendNow(socket_->socketDescriptor(), piece.constData(), piece.size());
    unwritable_ = sent < 0;
    if (sent > 0)
        TakeOut(sent);
    return sent > 0;
}

bool Connection::PushThroughSocket(const QByteArray &bytes) {
    if (handshaking_ || Backlog() > 0)
        return false;
    const qint64 sent = socket_->write(bytes);
    socket_->flush();
    if (sent > 0)
        TakeOut(sent);
    return sent > 0;
}

void Connection::TakeOut(qint64 sent) {
    AwaitWithin(limit_);
    answerDue_ = true;
    sent_ += sent;
    if (sent_ < out_.first().size())
        return;
    out_.removeFirst();
    sent_ = 0;
}

void Connection::AwaitWithin(int milliseconds) {
    limit_ = milliseconds;
    answerDue_ = answerDue_ && limit_ > 0;
    if (failure_ && failure_->Cause == Trouble::TimedOut)
        failure_.reset();
    deadline_ =
        limit_ > 0 ? QDeadlineTimer(limit_, Qt::PreciseTimer) : QDeadlineTimer(QDeadlineTimer::Forever);
    if (limit_ > 0 && (!timer_.isActive() || timer_.interval() > limit_))
        timer_.start(limit_);
}

// The limit may have been moved since the timer was started.
void Connection::CheckTime() {
    if (deadline_.isForever())
        return;
    if (deadline_.hasExpired())
        Fail({Trouble::TimedOut, u"The server did not answer in time"_s, false});
    else
        timer_.start(static_cast<int>(deadline_.remainingTime()) + 1);
}

void Connection::Close(const QByteArray &farewell) {
    if (!farewell.isEmpty() && !IsClosed() && !IsWriting()) {
        out_ << farewell;
        PushOut();
    }
    probe_.Forget();
    writable_.reset();
    socket_.reset();
    handshaking_ = opened_ = encrypted_ = readable_ = answerDue_ = unwritable_ = false;
    certificate_.reset();
    failure_.reset();
    distrust_.clear();
    out_.clear();
    sent_ = 0;
    deadline_ = QDeadlineTimer(QDeadlineTimer::Forever);
}

bool Connection::IsClosed() const {
    return !socket_ || socket_->state() == QAbstractSocket::UnconnectedState;
}

bool Connection::IsQuiet() const {
    if (IsClosed() || opened_ || encrypted_ || failure_ || readable_ || socket_->bytesAvailable() > 0)
        return false;
    return proxied_ || !PollSocket(socket_->socketDescriptor(), false, 0);
}

void Connection::DeliverSoon() {
    if (delivering_ || std::exchange(queued_, true))
        return; // it looks again before it ends
    QMetaObject::invokeMethod(this, &Connection::Deliver, Qt::QueuedConnection);
}

void Connection::Deliver() {
    queued_ = false;
    if (delivering_)
        return;
    delivering_ = true;
    const QPointer<Connection> alive(this);
    const QDeadlineTimer loopIsDue(kTurn, Qt::PreciseTimer);
    bool more = true;
    while (more && !loopIsDue.hasExpired()) {
        more = Step();
        if (!alive)
            return;
    }
    delivering_ = false;
    if (more)
        DeliverSoon();
}

bool Connection::Step() {
    return DeliverNext() || PushOut() || WaitAMoment();
}

// Nothing is touched after an event is out: its handler may have destroyed this.
bool Connection::DeliverNext() {
    if (std::exchange(opened_, false)) {
        Q_EMIT Opened();
    } else if (const auto certificate = std::exchange(certificate_, std::nullopt)) {
        Q_EMIT CertificateSeen(*certificate);
    } else if (std::exchange(encrypted_, false)) {
        Q_EMIT Encrypted();
    } else if (const QByteArray bytes = Receive(); !bytes.isEmpty()) {
        answerDue_ = true;
        Q_EMIT Arrived(bytes);
    } else if (failure_) {
        Failure failure = *failure_;
        failure.IsCut = IsWriting();
        Close();
        Q_EMIT Ended(failure);
    } else {
        return false;
    }
    return true;
}

QByteArray Connection::Receive() {
    if (!socket_ || handshaking_ || !socket_->isOpen())
        return {};
    if (socket_->bytesAvailable() > 0)
        return socket_->read(kReadAhead);
    if (!std::exchange(readable_, false) || IsClosed())
        return {};
    if (IsDirect()) {
        char bytes[kArrival];
        if (const qint64 size = ReceiveNow(socket_->socketDescriptor(), bytes, sizeof bytes); size > 0)
            return QByteArray(bytes, size);
    }
    socket_->waitForReadyRead(0); // takes in what is there, the end of the connection too
    return socket_->read(kReadAhead);
}

// A turn of the event loop costs more than the answer of a near server takes, and a send or a check is made
// of thousands of such answers. One that has stopped reading may be waiting to be read from, so while there
// is something to write both directions are watched.
bool Connection::WaitAMoment() {
    const bool writing = !out_.isEmpty() && !unwritable_;
    if (proxied_ || handshaking_ || IsClosed() || socket_->state() != QAbstractSocket::ConnectedState)
        return false;
    if (std::exchange(answerDue_, false) && PollSocket(socket_->socketDescriptor(), writing, kShortWait)) {
        readable_ = !writing || PollSocket(socket_->socketDescriptor(), false, 0);
        return true;
    }
    if (writing && IsDirect())
        AwaitWritable();
    return false;
}

void Connection::AwaitWritable() {
    if (!writable_) {
        writable_ = std::make_unique<QSocketNotifier>(socket_->socketDescriptor(), QSocketNotifier::Write);
        connect(writable_.get(), &QSocketNotifier::activated, this, [this] {
            writable_->setEnabled(false);
            DeliverSoon();
        });
    }
    writable_->setEnabled(true);
}

} // namespace varlo::net
