#include "smtp/Handshake.h"

#include "core/Literals.h"

#include <QHostAddress>

#include <algorithm>

namespace OSSMTP {

namespace {

using varlo::net::Encryption;

constexpr int kClosing = 421;

bool IsTaken(const Reply &reply) {
    return reply.Code / 100 == 2;
}

bool IsDomainCharacter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'-' ||
           c == u'.';
}

bool IsFullName(const QString &name) {
    return name.contains(u'.') && !name.startsWith(u'.') && !name.endsWith(u'.') && !name.contains(u".."_s) &&
           QHostAddress(name).isNull() && std::all_of(name.begin(), name.end(), IsDomainCharacter);
}

} // namespace

QByteArray OwnName(const QString &machine, const QString &domain, const QString &address) {
    for (const QString &name : {machine, machine + u'.' + domain})
        if (IsFullName(name))
            return name.toLatin1();
    QHostAddress own(address);
    bool isOld = false;
    const quint32 old = own.toIPv4Address(&isOld);
    if (isOld)
        return '[' + QHostAddress(old).toString().toLatin1() + ']';
    own.setScopeId({});
    return own.isNull() ? QByteArray("[127.0.0.1]") : "[IPv6:" + own.toString().toLatin1() + ']';
}

Handshake::Handshake(HandshakePlan plan)
    : plan_(std::move(plan)), encrypted_(plan_.Wanted == Encryption::Tls) {
}

bool Handshake::MustEncrypt() const {
    return plan_.Wanted == Encryption::StartTls && !encrypted_;
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
        return IsTaken(reply) ? Proceed() : Fail(reply);
    case Await::StartTls:
        return TakeStartTls(reply);
    case Await::SignIn:
        break;
    }
    return TakeSignIn(reply);
}

QByteArray Handshake::Resume() {
    encrypted_ = true;
    extensions_.clear();
    mechanisms_.clear();
    state_ = State::Talking;
    return Say(Await::Ehlo);
}

QByteArray Handshake::TakeEhlo(const Reply &reply) {
    if (!IsTaken(reply))
        return MustEncrypt() ? FailUnencrypted() : Say(Await::Helo);
    ReadExtensions(reply.Text);
    if (encrypted_ || plan_.Wanted == Encryption::None)
        return Proceed();
    if (Offers("STARTTLS"))
        return Say(Await::StartTls);
    return MustEncrypt() ? FailUnencrypted() : Proceed();
}

QByteArray Handshake::TakeStartTls(const Reply &reply) {
    constexpr int kGoAhead = 220;
    if (reply.Code == kGoAhead)
        return End(State::Encrypting);
    return MustEncrypt() ? FailUnencrypted() : Proceed();
}

// The first line is the server's name; of the others the first word counts, and the mechanisms behind AUTH,
// which servers for very old clients write with an equal sign.
void Handshake::ReadExtensions(const QByteArray &lines) {
    for (const QByteArray &line : lines.split('\n').mid(1)) {
        QByteArrayList words = line.simplified().toUpper().replace("AUTH=", "AUTH ").split(' ');
        if (const QByteArray name = words.takeFirst(); name == "AUTH")
            mechanisms_ += words;
        else
            extensions_ << name;
    }
}

// ---- Signing in

QByteArray Handshake::Proceed() {
    return plan_.SignIn ? BeginSignIn() : End(State::Ready);
}

QByteArray Handshake::BeginSignIn() {
    if (!encrypted_ && !plan_.ClearTextAllowed) {
        needsClearText_ = true;
        return FailSignIn(CannotConnect, u"The line to the mail server [%1] is not encrypted, so %2 was not "
                                         "sent over it."_s);
    }
    const QByteArray mechanism = varlo::net::StrongestMechanism(mechanisms_, *plan_.SignIn);
    if (mechanism.isEmpty())
        return FailSignIn(CannotConnect,
                          u"The mail server [%1] offers no way of signing in for which %2 can be used."_s);
    return Authenticate(mechanism);
}

QByteArray Handshake::Authenticate(const QByteArray &mechanism) {
    signIn_.emplace(mechanism, *plan_.SignIn);
    const std::optional<QByteArray> first = signIn_->InitialResponse();
    if (signIn_->HasFailed())
        return FailSignIn(CannotConnect, u"The mail server [%1] cannot be given %2: it holds characters that "
                                         "are not allowed."_s);
    await_ = Await::SignIn;
    if (!first)
        return "AUTH " + mechanism + "\r\n";
    return "AUTH " + mechanism + ' ' + (first->isEmpty() ? QByteArray("=") : first->toBase64()) + "\r\n";
}

QByteArray Handshake::TakeSignIn(const Reply &reply) {
    constexpr int kChallenge = 334;
    constexpr int kSignedIn = 235;
    constexpr int kNoSuchMechanism = 504;
    if (reply.Code == kChallenge)
        return TakeChallenge(reply);
    if (reply.Code == kSignedIn && signIn_->IsComplete())
        return End(State::Ready);
    if (reply.Code == kSignedIn)
        return FailSignIn(CannotConnect, u"The mail server [%1] did not prove that it knows %2."_s);
    if (!reply.IsRefusal())
        return Fail(reply);
    if (mechanisms_.removeAll(signIn_->Mechanism());
        reply.Code == kNoSuchMechanism && !StrongestMechanism(mechanisms_, *plan_.SignIn).isEmpty())
        return BeginSignIn();
    FailSignIn(reply.Code, u"The mail server [%1] refused the user name or %2: "_s);
    trouble_.Description += QString::number(reply.Code) + u' ' + reply.Description();
    return {};
}

QByteArray Handshake::TakeChallenge(const Reply &reply) {
    const auto challenge =
        QByteArray::fromBase64Encoding(reply.Text.trimmed(), QByteArray::AbortOnBase64DecodingErrors);
    const std::optional<QByteArray> response =
        challenge ? signIn_->Respond(challenge.decoded) : std::optional<QByteArray>();
    if (!response)
        return FailSignIn(CannotConnect, u"The mail server [%1] did not prove that it knows %2."_s);
    return response->toBase64() + "\r\n";
}

QByteArray Handshake::FailSignIn(int number, const QString &text) {
    const varlo::net::Credentials &who = *plan_.SignIn;
    const QString secret = who.IsToken ? u"the token"_s : u"the password"_s;
    trouble_ = AccountFailure(number, text.arg(who.Host, secret));
    return End(State::Failed);
}

QByteArray Handshake::Say(Await next) {
    await_ = next;
    if (next == Await::StartTls)
        return QByteArrayLiteral("STARTTLS\r\n");
    return (next == Await::Helo ? "HELO " : "EHLO ") + plan_.OwnName + "\r\n";
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
    trouble_ = AccountFailure(CannotConnect, u"The server does not encrypt"_s);
    return End(State::Failed);
}

} // namespace OSSMTP
