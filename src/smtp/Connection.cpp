#include "smtp/Connection.h"

#include "core/Literals.h"
#include "smtp/ServerUrl.h"

namespace OSSMTP {

namespace {

constexpr qsizetype kSlice =
    64 * 1024;                    // bytes handed over at once; the pace of a slow line is seen in between
constexpr size_t kReceive = 4096; // bytes
constexpr long kNoLimit = 86400;  // s; libcurl's own limits are switched off by setting a day

Failure RefusalOf(const Reply &reply) {
    constexpr int kClosing = 421;
    return {reply.Code, reply.Description(), reply.Code == kClosing ? Failure::Lost : Failure::Reported};
}

bool IsTlsError(CURLcode code) {
    return code == CURLE_SSL_CONNECT_ERROR || code == CURLE_SSL_CIPHER ||
           code == CURLE_PEER_FAILED_VERIFICATION;
}

} // namespace

Connection::Connection(Waiter &waiter) : waiter_(waiter) {
}

Connection::~Connection() {
    Close();
}

// Encryption is taken where it is offered and asks for nothing in return, so a server whose TLS does not work
// is spoken to in the clear, as if it had offered none.
MaybeFailure Connection::Open(const Server &server) {
    MaybeFailure failure = TryOpen(server, Tls::WhenOffered);
    if (failure && result_ && IsTlsError(*result_))
        failure = TryOpen(server, Tls::Never);
    if (failure)
        Drop();
    return failure;
}

MaybeFailure Connection::TryOpen(const Server &server, Tls tls) {
    Drop();
    if (server.Port < 1 || server.Port > 65535)
        return Failure{CannotConnect, u"The port %1 does not exist"_s.arg(server.Port)};
    const Url url = ServerUrl(server.Host, server.Port);
    if (!url)
        return Failure{NameNotResolved, u"\"%1\" is not the name of a server"_s.arg(server.Host)};
    easy_.reset(Curl().easy_init());
    SetOptions(url.get(), tls);
    if (MaybeFailure failure = RunHandshake())
        return failure;
    curl_socket_t socket = CURL_SOCKET_BAD;
    Curl().easy_getinfo(easy_.get(), CURLINFO_ACTIVESOCKET, &socket);
    socket_ = static_cast<qintptr>(socket);
    server_ = server;
    return {};
}

void Connection::SetOptions(CURLU *url, Tls tls) {
    CURL *easy = easy_.get();
    Curl().easy_setopt(easy, CURLOPT_CURLU, url);
    Curl().easy_setopt(easy, CURLOPT_CONNECT_ONLY, 1L);
    Curl().easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    Curl().easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // an abort does not wait for a name server
    Curl().easy_setopt(easy, CURLOPT_ERRORBUFFER, error_);
    Curl().easy_setopt(easy, CURLOPT_HEADERFUNCTION, OnLine);
    Curl().easy_setopt(easy, CURLOPT_HEADERDATA, this);
    // One silent address of several must leave time for the next one; what follows the connect has the
    // waiter's limit.
    Curl().easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(waiter_.Limit()));
    Curl().easy_setopt(easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, kNoLimit);
    // There is no setting for encryption, so there is nobody to ask about a certificate: a mail server on the
    // local network usually has one that nobody signed. Encrypted without a check is better than in the
    // clear, which is what a refusal would come to.
    Curl().easy_setopt(easy, CURLOPT_USE_SSL,
                       tls == Tls::WhenOffered ? long(CURLUSESSL_TRY) : long(CURLUSESSL_NONE));
    Curl().easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 0L);
    Curl().easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 0L);
}

MaybeFailure Connection::RunHandshake() {
    driver_ = std::make_unique<CurlDriver>(easy_.get(), [this](CURLcode code) {
        result_ = code;
        waiter_.Wake();
    });
    waiter_.StartAnswer();
    driver_->Start();
    while (!result_) {
        const Waiter::Result end = waiter_.Wait();
        if (end != Waiter::Result::Woken)
            return end == Waiter::Result::Aborted ? AbortedFailure() : TimedOutFailure();
    }
    if (*result_ != CURLE_OK)
        return HandshakeFailure(*result_);
    parser_.Clear();
    return {};
}

// libcurl hands each line of each reply here while it makes the connection.
size_t Connection::OnLine(char *data, size_t size, size_t count, void *self) {
    auto *connection = static_cast<Connection *>(self);
    connection->TakeHandshakeLine(QByteArrayView(data, static_cast<qsizetype>(size * count)));
    return connection->parser_.IsBroken() ? 0 : size * count;
}

void Connection::TakeHandshakeLine(QByteArrayView line) {
    if (line.startsWith(
            "220")) { // the greeting, or the answer to STARTTLS: what was offered before counts no more
        extensions_.clear();
        ehloBegun_ = false;
    } else if (line.startsWith("250")) {
        if (std::exchange(ehloBegun_, true)) // the first line is the server's name
            extensions_ << line.sliced(std::min<qsizetype>(4, line.size()))
                               .toByteArray()
                               .simplified()
                               .split(' ')
                               .first()
                               .toUpper();
    }
    parser_.Add(line);
    while (auto reply = parser_.Next()) {
        lastReply_ = std::move(reply);
        waiter_.StartAnswer();
        Curl().easy_setopt(easy_.get(), CURLOPT_CONNECTTIMEOUT_MS, kNoLimit * 1000);
    }
}

Failure Connection::HandshakeFailure(CURLcode code) const {
    const QString text =
        error_[0] ? QString::fromUtf8(error_) : QString::fromUtf8(Curl().easy_strerror(code));
    const bool endless = text.startsWith(QLatin1String("Too large response")); // a line that has no end
    if (parser_.IsBroken() || endless)
        return InvalidReplyFailure();
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return {NameNotResolved, text};
    case CURLE_OPERATION_TIMEDOUT:
        return TimedOutFailure();
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
        return LostFailure();
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_REMOTE_ACCESS_DENIED:
        return lastReply_ && lastReply_->IsRefusal() ? RefusalOf(*lastReply_) : InvalidReplyFailure();
    default:
        return {CannotConnect, text};
    }
}

bool Connection::ReceiveNow(CURLcode &code, size_t &size) {
    char bytes[kReceive];
    code = Curl().easy_recv(easy_.get(), bytes, sizeof bytes, &size);
    if (code != CURLE_OK || size == 0)
        return false;
    parser_.Add(QByteArrayView(bytes, static_cast<qsizetype>(size)));
    return true;
}

bool Connection::IsUsableFor(const Server &server) {
    if (socket_ == -1 || cut_ || server != server_ || !parser_.IsEmpty())
        return false;
    CURLcode code;
    size_t size = 0;
    ReceiveNow(code, size);
    return code == CURLE_AGAIN;
}

MaybeFailure Connection::WaitForSocket(bool orWritable) {
    switch (waiter_.WaitForSocket(socket_, orWritable)) {
    case Waiter::Result::Woken:
        return {};
    case Waiter::Result::TimedOut:
        return TimedOutFailure();
    case Waiter::Result::Aborted:
        break;
    }
    return AbortedFailure();
}

MaybeFailure Connection::Write(QByteArrayView bytes, Early early) {
    waiter_.StartAnswer();
    while (!bytes.isEmpty()) {
        size_t sent = 0;
        const auto slice = static_cast<size_t>(std::min(bytes.size(), kSlice));
        const CURLcode code = Curl().easy_send(easy_.get(), bytes.data(), slice, &sent);
        if (code != CURLE_OK && code != CURLE_AGAIN)
            return TakeWriteError();
        if (sent == 0) {
            if (MaybeFailure failure = WaitToWrite(early); failure || cut_)
                return failure;
            continue;
        }
        bytes = bytes.sliced(static_cast<qsizetype>(sent));
        waiter_.StartAnswer();
        if (!waiter_.Breathe())
            return AbortedFailure();
    }
    return {};
}

// A server that has stopped reading may be waiting for its answers to be read, so both directions are
// watched.
MaybeFailure Connection::WaitToWrite(Early early) {
    if (MaybeFailure failure = WaitForSocket(true))
        return failure;
    CURLcode code;
    size_t size = 0;
    if (!ReceiveNow(code, size))
        return code == CURLE_AGAIN ? MaybeFailure() : TakeWriteError();
    if (early == Early::Ends && (ready_ = parser_.Next()))
        cut_ = true;
    return {};
}

// Servers say why ("421 too many errors") before they close; that is worth more than the broken pipe.
MaybeFailure Connection::TakeWriteError() {
    CURLcode code;
    size_t size = 0;
    while (ReceiveNow(code, size) && !parser_.IsBroken() && !(ready_ = parser_.Next())) {
    }
    cut_ = true;
    return ready_ ? MaybeFailure() : LostFailure();
}

MaybeFailure Connection::Read(Reply &reply) {
    waiter_.StartAnswer();
    while (!ready_ && !(ready_ = parser_.Next())) {
        if (parser_.IsBroken())
            return InvalidReplyFailure();
        if (MaybeFailure failure = Receive())
            return failure;
    }
    reply = std::move(*ready_);
    ready_.reset();
    return {};
}

MaybeFailure Connection::Receive() {
    CURLcode code;
    size_t size = 0;
    if (ReceiveNow(code, size))
        return {};
    return code == CURLE_AGAIN ? WaitForSocket(false) : LostFailure();
}

void Connection::Close() {
    if (IsUsableFor(server_)) {
        static constexpr QByteArrayView kQuit("QUIT\r\n");
        size_t sent = 0;
        Curl().easy_send(easy_.get(), kQuit.data(), kQuit.size(),
                         &sent); // no matter how it ends, it is the end
    }
    Drop();
}

void Connection::Drop() {
    driver_.reset();
    easy_.reset();
    socket_ = -1;
    parser_.Clear();
    ready_.reset();
    cut_ = false;
    result_.reset();
    lastReply_.reset();
    extensions_.clear();
    ehloBegun_ = false;
    error_[0] = 0;
}

} // namespace OSSMTP
