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

// One connection; a child of its socket.
class FakeSmtpSession : public QObject {
public:
    FakeSmtpSession(FakeSmtpServer &server, QSslSocket *socket, int number)
        : QObject(socket), server_(server), socket_(socket), number_(number) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QSslSocket::readyRead, this, &FakeSmtpSession::Read);
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        Answer(SmtpStep::Greeting, {}, "220 fake ESMTP\r\n");
    }

private:
    void Read();
    void TakeLine(const QByteArray &line);
    void TakeStartTls(const QByteArray &line);
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
    bool deaf_ = false;
    int taken_ = 0;
};

void FakeSmtpSession::Read() {
    if (!deaf_)
        input_ += socket_->readAll();
    while (!deaf_ && !input_.isEmpty()) {
        if (inMessage_ && !std::exchange(messageBegun_, true) && !Answer(SmtpStep::MessageBegin, {}, {}))
            continue;
        const bool empty = inMessage_ && input_.startsWith(".\r\n");
        const QByteArray mark = inMessage_ && !empty ? "\r\n.\r\n" : "\r\n";
        const qsizetype end = input_.indexOf(mark, searched_);
        searched_ = end < 0 ? std::max<qsizetype>(0, input_.size() - mark.size()) : 0;
        if (end < 0)
            return;
        const QByteArray unit = empty ? QByteArray() : input_.left(end + 2);
        input_.remove(0, empty ? 3 : end + (inMessage_ ? 5 : 2));
        inMessage_ ? TakeMessage(unit) : TakeLine(unit.chopped(2));
        if (!input_.isEmpty() && !Extensions().contains("PIPELINING")) {
            const QMutexLocker lock(&server_.mutex_);
            server_.overrun_ = true;
        }
    }
}

void FakeSmtpSession::TakeLine(const QByteArray &line) {
    Note("C: " + line);
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
    socket_->setLocalCertificate(QSslCertificate(kFakeCertificate));
    socket_->setPrivateKey(QSslKey(kFakeKey, QSsl::Ec));
    socket_->startServerEncryption();
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
    inMessage_ = mailOpen_ = false;
    mail_.Data = QByteArray("\r\n" + data).replace("\r\n..", "\r\n.").mid(2);
    if (mail_.Recipients.isEmpty())
        return Say("554 no valid recipients\r\n");
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
