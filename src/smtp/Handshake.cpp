#include "smtp/Handshake.h"

#include <QSysInfo>

namespace OSSMTP {

namespace {

constexpr int kClosing = 421;

bool IsTaken(const Reply &reply) {
    return reply.Code / 100 == 2;
}

QByteArray OwnName() {
    const QByteArray name = QSysInfo::machineHostName().toUtf8();
    const auto fits = [](char c) { return c > ' ' && c < 0x7F; };
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), fits) ? name : QByteArray("localhost");
}

} // namespace

Handshake::Handshake(varlo::net::Encryption wanted)
    : wanted_(wanted), encrypted_(wanted == varlo::net::Encryption::Tls) {
}

bool Handshake::MustEncrypt() const {
    return wanted_ == varlo::net::Encryption::StartTls && !encrypted_;
}

QByteArray Handshake::Take(const Reply &reply) {
    if (reply.Code == kClosing)
        return Fail(reply);
    switch (await_) {
    case Await::Greeting:
        return IsTaken(reply) ? Say(Await::Ehlo) : Fail(reply);
    case Await::Ehlo:
        return TakeEhlo(reply);
    case Await::Helo:
        return IsTaken(reply) ? End(State::Ready) : Fail(reply);
    case Await::StartTls:
        break;
    }
    return TakeStartTls(reply);
}

QByteArray Handshake::Resume() {
    encrypted_ = true;
    extensions_.clear();
    state_ = State::Talking;
    return Say(Await::Ehlo);
}

QByteArray Handshake::TakeEhlo(const Reply &reply) {
    if (!IsTaken(reply))
        return MustEncrypt() ? FailUnencrypted() : Say(Await::Helo);
    ReadExtensions(reply.Text);
    if (encrypted_ || wanted_ == varlo::net::Encryption::None)
        return End(State::Ready);
    if (Offers("STARTTLS"))
        return Say(Await::StartTls);
    return MustEncrypt() ? FailUnencrypted() : End(State::Ready);
}

QByteArray Handshake::TakeStartTls(const Reply &reply) {
    constexpr int kGoAhead = 220;
    if (reply.Code == kGoAhead)
        return End(State::Encrypting);
    return MustEncrypt() ? FailUnencrypted() : End(State::Ready);
}

// The first line is the server's name; of the others the first word counts.
void Handshake::ReadExtensions(const QByteArray &lines) {
    for (const QByteArray &line : lines.split('\n').mid(1))
        extensions_ << line.simplified().split(' ').first().toUpper();
}

QByteArray Handshake::Say(Await next) {
    await_ = next;
    if (next == Await::StartTls)
        return QByteArrayLiteral("STARTTLS\r\n");
    return (next == Await::Helo ? "HELO " : "EHLO ") + OwnName() + "\r\n";
}

QByteArray Handshake::End(State state) {
    state_ = state;
    return {};
}

QByteArray Handshake::Fail(const Reply &reply) {
    trouble_ = reply.IsRefusal() ? Failure{reply.Code, reply.Description(), reply.Code == kClosing}
                                 : InvalidReplyFailure();
    return End(State::Failed);
}

QByteArray Handshake::FailUnencrypted() {
    trouble_ = {CannotConnect, u"The server does not encrypt"_s, false};
    return End(State::Failed);
}

} // namespace OSSMTP
