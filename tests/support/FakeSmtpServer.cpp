#include "support/FakeSmtpServer.h"

#include "support/FakeCertificate.h"
#include "support/Printers.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTest>
#include <gtest/gtest.h>

#include <gsasl.h>
#include <optional>

namespace varlo::test {

void PrintTo(const SmtpMail &mail, std::ostream *out) {
    *out << "mail " << mail.Sender.constData() << " -> " << mail.Recipients.join(", ").constData()
         << " on connection " << mail.Connection << ": ";
    PrintTo(mail.Data, out);
}

// Hands out sockets that can be encrypted later.
class FakeSmtpListener : public QTcpServer {
protected:
    void incomingConnection(qintptr descriptor) override {
        auto *socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        addPendingConnection(socket);
    }
};

// The server's side of a sign-in: of passwords by the library, of tokens by comparison.
class FakeSignIn {
public:
    FakeSignIn(const QByteArray &mechanism, const SmtpScript &script)
        : token_(mechanism.contains("OAUTH") ? script.Token : QByteArray()), password_(script.Password) {
        gsasl_init(&library_);
        gsasl_callback_set(library_, &FakeSignIn::Validate);
        if (!token_.isEmpty() || gsasl_server_start(library_, mechanism.constData(), &session_) != GSASL_OK)
            return;
        gsasl_session_hook_set(session_, this);
        gsasl_property_set(session_, GSASL_PASSWORD, password_.constData());
    }
    ~FakeSignIn() {
        if (session_)
            gsasl_finish(session_);
        gsasl_done(library_);
    }
    FakeSignIn(const FakeSignIn &) = delete;
    FakeSignIn &operator=(const FakeSignIn &) = delete;

    // What the server says to a response of the client.
    QByteArray Take(const QByteArray &response) {
        if (std::exchange(taken_, false))
            return kSignedIn;
        if (!token_.isEmpty() || !session_)
            return TakeToken(response);
        char *bytes = nullptr;
        std::size_t size = 0;
        const int result = gsasl_step(session_, response.constData(),
                                      static_cast<std::size_t>(response.size()), &bytes, &size);
        const QByteArray challenge = QByteArray(bytes, static_cast<qsizetype>(size)).toBase64();
        gsasl_free(bytes);
        taken_ = result == GSASL_OK;
        if (result == GSASL_NEEDS_MORE || (taken_ && size > 0))
            return "334 " + challenge + "\r\n";
        return taken_ ? kSignedIn : kRefused;
    }

private:
    // For the mechanisms that show the password.
    static int Validate(Gsasl *, Gsasl_session *session, Gsasl_property property) {
        if (property != GSASL_VALIDATE_SIMPLE)
            return GSASL_NO_CALLBACK;
        const auto *self = static_cast<FakeSignIn *>(gsasl_session_hook_get(session));
        return self->password_ == gsasl_property_fast(session, GSASL_PASSWORD) ? GSASL_OK
                                                                               : GSASL_AUTHENTICATION_ERROR;
    }
    QByteArray TakeToken(const QByteArray &response) {
        if (response.contains("auth=Bearer " + token_ + "\1\1") && !token_.isEmpty())
            return kSignedIn;
        return std::exchange(told_, true) ? kRefused
                                          : "334 " + QByteArray(R"({"status":"401"})").toBase64() + "\r\n";
    }

    const QByteArray kSignedIn = "235 2.7.0 welcome\r\n";
    const QByteArray kRefused = "535 5.7.8 no such user, or not with that password\r\n";

    const QByteArray token_;
    const QByteArray password_;
    Gsasl *library_ = nullptr;
    Gsasl_session *session_ = nullptr;
    bool taken_ = false;
    bool told_ = false;
};

// One connection; a child of its socket.
class FakeSmtpSession : public QObject {
public:
    FakeSmtpSession(FakeSmtpServer &server, QSslSocket *socket, int number)
        : QObject(socket), server_(server), socket_(socket), number_(number) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QSslSocket::readyRead, this, &FakeSmtpSession::Read);
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        if (Script().EncryptsAtOnce)
            Encrypt();
        Answer(SmtpStep::Greeting, {}, "220 fake ESMTP\r\n");
    }

private:
    void Read();
    void TakeLine(const QByteArray &line);
    bool TakePiece();
    bool TakeChunk();
    void Encrypt();
    void TakeStartTls(const QByteArray &line);
    void TakeAuth(const QByteArray &line);
    void TakeResponse(const QByteArray &line);
    void TakeBdat(const QByteArray &line);
    void TakeMail(const QByteArray &line);
    void TakeRcpt(const QByteArray &line);
    void TakeData(const QByteArray &line);
    void TakeMessage(const QByteArray &data);
    QByteArrayList Extensions() const;
    QByteArray EhloReply() const;
    // Does what the script says, or answers. True when the usual answer went out.
    bool Answer(SmtpStep step, const QByteArray &line, const QByteArray &usual);
    std::optional<SmtpFault> FaultAt(SmtpStep step, const QByteArray &line);
    void Do(const SmtpFault &fault, bool hold);
    void Say(const QByteArray &bytes, bool hold = false);
    void Stop();
    void Note(const QByteArray &line);
    SmtpScript Script() const {
        const QMutexLocker lock(&server_.mutex_);
        return server_.script_;
    }

    FakeSmtpServer &server_;
    QSslSocket *socket_;
    int number_;
    QByteArray input_;
    qsizetype searched_ = 0; // no end of a message lies before
    QByteArray held_;
    SmtpMail mail_;
    bool mailOpen_ = false;
    bool inMessage_ = false;
    bool messageBegun_ = false;
    qsizetype chunk_ = -1; // bytes of the chunk that is awaited
    bool reading_ = false;
    bool chunked_ = false;
    bool chunkRefused_ = false;
    std::unique_ptr<FakeSignIn> signIn_;
    bool deaf_ = false;
    int taken_ = 0;
};

void FakeSmtpSession::Read() {
    if (!deaf_) {
        const QByteArray bytes = socket_->readAll();
        const QMutexLocker lock(&server_.mutex_);
        server_.heard_ += socket_->isEncrypted() ? QByteArray() : bytes;
        input_ += bytes;
    }
    if (std::exchange(reading_, true))
        return; // an encrypted socket tells of more while an answer is written
    while (!deaf_ && !input_.isEmpty() && TakePiece()) {
    }
    reading_ = false;
}

// A line, a message or a chunk; false when it is not whole.
bool FakeSmtpSession::TakePiece() {
    if (inMessage_ && !std::exchange(messageBegun_, true) && !Answer(SmtpStep::MessageBegin, {}, {}))
        return true;
    if (chunk_ >= 0)
        return TakeChunk();
    const bool empty = inMessage_ && input_.startsWith(".\r\n");
    const QByteArray mark = inMessage_ && !empty ? "\r\n.\r\n" : "\r\n";
    const qsizetype end = input_.indexOf(mark, searched_);
    searched_ = end < 0 ? std::max<qsizetype>(0, input_.size() - mark.size()) : 0;
    if (end < 0)
        return false;
    const QByteArray unit = empty ? QByteArray() : input_.left(end + 2);
    input_.remove(0, empty ? 3 : end + (inMessage_ ? 5 : 2));
    inMessage_ ? TakeMessage(unit) : TakeLine(unit.chopped(2));
    if (!input_.isEmpty() && !Extensions().contains("PIPELINING")) {
        const QMutexLocker lock(&server_.mutex_);
        server_.overrun_ = true;
    }
    return true;
}

bool FakeSmtpSession::TakeChunk() {
    if (input_.size() < chunk_)
        return false;
    const QByteArray chunk = input_.left(chunk_);
    input_.remove(0, std::exchange(chunk_, -1));
    TakeMessage(chunk);
    return true;
}

void FakeSmtpSession::TakeLine(const QByteArray &line) {
    Note("C: " + line);
    if (signIn_)
        return TakeResponse(line);
    const QByteArray verb = line.left(4).toUpper();
    if (verb == "EHLO" || verb == "HELO") {
        Answer(SmtpStep::Ehlo, line, verb == "EHLO" ? EhloReply() : QByteArray("250 fake.example\r\n"));
    } else if (verb == "STAR") {
        TakeStartTls(line);
    } else if (verb == "MAIL") {
        TakeMail(line);
    } else if (verb == "RCPT") {
        TakeRcpt(line);
    } else if (verb == "DATA") {
        TakeData(line);
    } else if (verb == "AUTH") {
        TakeAuth(line);
    } else if (verb == "BDAT" && !Script().ChunksUnknown) {
        TakeBdat(line);
    } else if (verb == "RSET") {
        if (Answer(SmtpStep::Rset, line, "250 reset\r\n"))
            mailOpen_ = false;
    } else if (verb == "QUIT") {
        if (Answer(SmtpStep::Quit, line, "221 bye\r\n"))
            Stop();
    } else {
        Say("500 unknown command\r\n");
    }
}

QByteArrayList FakeSmtpSession::Extensions() const {
    const SmtpScript script = Script();
    if (socket_->isEncrypted())
        return script.EncryptedExtensions;
    return script.Encrypts ? script.Extensions + QByteArrayList{"STARTTLS"} : script.Extensions;
}

QByteArray FakeSmtpSession::EhloReply() const {
    QByteArray reply = "250-fake.example\r\n";
    for (const QByteArray &extension : Extensions())
        reply += "250-" + extension + "\r\n";
    return reply + "250 HELP\r\n";
}

void FakeSmtpSession::TakeStartTls(const QByteArray &line) {
    const bool encrypts = Script().Encrypts;
    const QByteArray reply = encrypts ? Script().StartTlsReply : QByteArray("454 not now\r\n");
    if (!Answer(SmtpStep::StartTls, line, reply) || !encrypts)
        return;
    Encrypt();
}

void FakeSmtpSession::Encrypt() {
    const SmtpScript script = Script();
    socket_->setLocalCertificate(QSslCertificate(script.Certificate ? script.Certificate : kFakeCertificate));
    socket_->setPrivateKey(QSslKey(script.Key ? script.Key : kFakeKey, QSsl::Ec));
    socket_->startServerEncryption();
}

void FakeSmtpSession::TakeAuth(const QByteArray &line) {
    const QByteArrayList words = line.split(' ');
    if (!Answer(SmtpStep::Auth, line, {}))
        return;
    signIn_ = std::make_unique<FakeSignIn>(words.value(1), Script());
    const QByteArray first = words.value(2) == "=" ? QByteArray() : QByteArray::fromBase64(words.value(2));
    const QByteArray reply = signIn_->Take(first);
    if (!reply.startsWith("334"))
        signIn_.reset();
    Say(reply);
}

void FakeSmtpSession::TakeResponse(const QByteArray &line) {
    auto signIn = std::move(signIn_);
    if (!Answer(SmtpStep::Auth, line, {}))
        return;
    const QByteArray reply = signIn->Take(QByteArray::fromBase64(line));
    if (reply.startsWith("334"))
        signIn_ = std::move(signIn);
    Say(reply);
}

void FakeSmtpSession::TakeBdat(const QByteArray &line) {
    inMessage_ = true;
    messageBegun_ = true;
    chunked_ = true;
    chunk_ = line.split(' ').value(1).toLongLong();
    chunkRefused_ = !Answer(SmtpStep::MessageBegin, line, {});
}

void FakeSmtpSession::TakeMail(const QByteArray &line) {
    if (mailOpen_)
        return Say("503 nested MAIL command\r\n");
    if (!Answer(SmtpStep::Mail, line, "250 sender ok\r\n"))
        return;
    mailOpen_ = true;
    mail_ = {line.mid(line.indexOf('<') + 1, line.lastIndexOf('>') - line.indexOf('<') - 1), {}, {}, number_};
}

void FakeSmtpSession::TakeRcpt(const QByteArray &line) {
    if (!mailOpen_)
        return Say("503 need MAIL command\r\n", true);
    if (Answer(SmtpStep::Rcpt, line, "250 recipient ok\r\n"))
        mail_.Recipients << line.mid(line.indexOf('<') + 1, line.lastIndexOf('>') - line.indexOf('<') - 1);
}

void FakeSmtpSession::TakeData(const QByteArray &line) {
    if ((!mailOpen_ || mail_.Recipients.isEmpty()) && !Script().DataForNobody)
        return Say("503 no valid recipients\r\n");
    if (!Answer(SmtpStep::Data, line, "354 go on\r\n"))
        return;
    inMessage_ = true;
    messageBegun_ = false;
}

void FakeSmtpSession::TakeMessage(const QByteArray &data) {
    Note("C: (message)");
    const bool wasOpen = std::exchange(mailOpen_, false);
    const bool isChunk = std::exchange(chunked_, false);
    inMessage_ = false;
    if (std::exchange(chunkRefused_, false)) {
        mailOpen_ = wasOpen;
        return;
    }
    mail_.Data = isChunk ? data : QByteArray("\r\n" + data).replace("\r\n..", "\r\n.").mid(2);
    if (!wasOpen || mail_.Recipients.isEmpty()) {
        mailOpen_ = wasOpen && isChunk; // until RSET
        return Say(isChunk ? Script().ChunkForNobody : QByteArray("554 no valid recipients\r\n"));
    }
    if (!Answer(SmtpStep::Message, {}, {}))
        return;
    {
        // Before the answer, so that a client that has it finds the mail here.
        const QMutexLocker lock(&server_.mutex_);
        server_.mails_ << mail_;
    }
    Say("250 queued\r\n");
    if (++taken_ == Script().CloseEvery)
        Stop();
}

std::optional<SmtpFault> FakeSmtpSession::FaultAt(SmtpStep step, const QByteArray &line) {
    const QMutexLocker lock(&server_.mutex_);
    for (SmtpFault &fault : server_.script_.Faults) {
        if (fault.At != step || fault.Times == 0 || !line.contains(fault.Holding) || fault.Skip-- > 0)
            continue;
        fault.Times -= fault.Times > 0;
        return fault;
    }
    return {};
}

bool FakeSmtpSession::Answer(SmtpStep step, const QByteArray &line, const QByteArray &usual) {
    const std::optional<SmtpFault> fault = FaultAt(step, line);
    const bool hold = Script().HoldUntilData && (step == SmtpStep::Mail || step == SmtpStep::Rcpt);
    if (!fault) {
        if (!usual.isEmpty())
            Say(usual, hold);
        return true;
    }
    Do(*fault, hold);
    return false;
}

void FakeSmtpSession::Do(const SmtpFault &fault, bool hold) {
    if (fault.What != SmtpFault::Close && fault.What != SmtpFault::Silence)
        Say(fault.Bytes, hold && fault.What == SmtpFault::Reply);
    if (fault.What == SmtpFault::Silence || fault.What == SmtpFault::ReplyThenSilence) {
        deaf_ = true;
        socket_->setReadBufferSize(1); // what the client writes piles up on its side
    }
    if (fault.What == SmtpFault::Close || fault.What == SmtpFault::ReplyThenClose)
        Stop();
}

void FakeSmtpSession::Say(const QByteArray &bytes, bool hold) {
    for (const QByteArray &line : bytes.left(1000).split('\n'))
        if (!line.isEmpty())
            Note("S: " + line.trimmed());
    held_ += bytes;
    if (hold && Script().HoldUntilData)
        return;
    const QByteArray out = std::exchange(held_, QByteArray());
    const qsizetype piece = Script().TornReplies ? 1 : std::max<qsizetype>(out.size(), 1);
    for (qsizetype i = 0; i < out.size(); i += piece) {
        socket_->write(out.mid(i, piece));
        socket_->flush();
    }
}

void FakeSmtpSession::Stop() {
    deaf_ = true;
    Note("S: (closed)");
    socket_->disconnectFromHost();
}

void FakeSmtpSession::Note(const QByteArray &line) {
    const QMutexLocker lock(&server_.mutex_);
    server_.dialogue_ << line;
}

// The port of a setting is a 16-bit signed number; the ports that the system hands out are above that.
static bool ListenOnAPortOfTheSettings(QTcpServer &listener) {
    const int first = QRandomGenerator::global()->bounded(10000, 30000);
    for (int port = first; port <= 32767; ++port)
        if (listener.listen(QHostAddress::LocalHost, static_cast<quint16>(port)))
            return true;
    return false;
}

FakeSmtpServer::FakeSmtpServer(SmtpScript script) : script_(std::move(script)) {
    thread_.start();
    listener_ = new FakeSmtpListener;
    listener_->moveToThread(&thread_);
    QMetaObject::invokeMethod(
        listener_,
        [this] {
            EXPECT_TRUE(ListenOnAPortOfTheSettings(*listener_));
            port_ = listener_->serverPort();
            QObject::connect(listener_, &QTcpServer::newConnection, listener_, [this] { Accept(); });
        },
        Qt::BlockingQueuedConnection);
}

FakeSmtpServer::~FakeSmtpServer() {
    QMetaObject::invokeMethod(
        listener_, [this] { delete listener_; }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void FakeSmtpServer::Accept() {
    while (auto *socket = static_cast<QSslSocket *>(listener_->nextPendingConnection())) {
        int number = 0;
        {
            const QMutexLocker lock(&mutex_);
            number = ++connections_;
        }
        new FakeSmtpSession(*this, socket, number);
    }
}

void FakeSmtpServer::Follow(SmtpScript script) {
    const QMutexLocker lock(&mutex_);
    script_ = std::move(script);
}

QList<SmtpMail> FakeSmtpServer::Mails() const {
    const QMutexLocker lock(&mutex_);
    return mails_;
}

int FakeSmtpServer::Connections() const {
    const QMutexLocker lock(&mutex_);
    return connections_;
}

QByteArray FakeSmtpServer::HeardInTheClear() const {
    const QMutexLocker lock(&mutex_);
    return heard_;
}

QByteArrayList FakeSmtpServer::Dialogue() const {
    const QMutexLocker lock(&mutex_);
    return dialogue_;
}

bool FakeSmtpServer::WasOverrun() const {
    const QMutexLocker lock(&mutex_);
    return overrun_;
}

bool FakeSmtpServer::WaitFor(const QByteArray &start) const {
    return QTest::qWaitFor([&] {
        const QByteArrayList lines = Dialogue();
        return std::any_of(lines.begin(), lines.end(),
                           [&](const QByteArray &line) { return line.startsWith(start); });
    });
}

} // namespace varlo::test
