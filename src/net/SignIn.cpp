#include "net/SignIn.h"

#include <algorithm>
#include <array>
#include <gsasl.h>
#include <utility>

namespace varlo::net {

namespace {

constexpr std::array kForPasswords{"SCRAM-SHA-256", "CRAM-MD5", "PLAIN", "LOGIN"}; // strongest first
constexpr std::array kForTokens{"OAUTHBEARER", "XOAUTH2"};

const QByteArray kBearer = "OAUTHBEARER";
const QByteArray kBearerBefore = "XOAUTH2";

bool IsForTokens(const QByteArray &mechanism) {
    return mechanism == kBearer || mechanism == kBearerBefore;
}

bool IsServerFirst(const QByteArray &mechanism) {
    return mechanism == "LOGIN" || mechanism == "CRAM-MD5";
}

// A name within the header of OAUTHBEARER: commas and equal signs would end it.
QByteArray SaslName(const QString &name) {
    return name.toUtf8().replace('=', "=3D").replace(',', "=2C");
}

// OAUTHBEARER is RFC 7628, 3.1. XOAUTH2, its forerunner, is no standard; the providers that offer it publish
// the same form: user=NAME^Aauth=Bearer TOKEN^A^A, where ^A is the byte 1.
QByteArray TokenResponse(const QByteArray &mechanism, const Credentials &credentials) {
    const QByteArray bearer = "\1auth=Bearer " + credentials.Secret.toUtf8() + "\1\1";
    if (mechanism == kBearerBefore)
        return "user=" + credentials.Username.toUtf8() + bearer;
    return "n,a=" + SaslName(credentials.Username) + ",\1host=" + credentials.Host.toUtf8() +
           "\1port=" + QByteArray::number(credentials.Port) + bearer;
}

// The library's own tables, made when first needed and never given back: they hold no secret.
Gsasl *Library() {
    static Gsasl *const library = [] {
        Gsasl *made = nullptr;
        return gsasl_init(&made) == GSASL_OK ? made : nullptr;
    }();
    return library;
}

struct Finish {
    void operator()(Gsasl_session *session) const { gsasl_finish(session); }
};

using Session = std::unique_ptr<Gsasl_session, Finish>;

Session Begin(const QByteArray &mechanism, const Credentials &credentials) {
    Gsasl_session *session = nullptr;
    if (!Library() || gsasl_client_start(Library(), mechanism.constData(), &session) != GSASL_OK)
        return {};
    Session begun(session);
    const bool given =
        gsasl_property_set(session, GSASL_AUTHID, credentials.Username.toUtf8().constData()) == GSASL_OK &&
        gsasl_property_set(session, GSASL_PASSWORD, credentials.Secret.toUtf8().constData()) == GSASL_OK;
    return given ? std::move(begun) : Session();
}

} // namespace

QByteArray StrongestMechanism(const QByteArrayList &offered, const Credentials &credentials) {
    const auto first = [&](const auto &known) {
        const auto found = std::find_if(known.begin(), known.end(),
                                        [&](const char *mechanism) { return offered.contains(mechanism); });
        return found == known.end() ? QByteArray() : QByteArray(*found);
    };
    return credentials.IsToken ? first(kForTokens) : first(kForPasswords);
}

QByteArray WithoutSecret(QByteArray text, const Credentials &credentials) {
    const QByteArray secret = credentials.Secret.toUtf8();
    return secret.isEmpty() ? text : text.replace(secret, "***").replace(secret.toBase64(), "***");
}

class SignIn::Private {
public:
    QByteArray Mechanism;
    Credentials Of;
    Session Steps; // none for tokens
    bool Failed = false;
    bool Complete = false;

    std::optional<QByteArray> Step(const QByteArray &challenge);
    std::optional<QByteArray> RespondForToken();
};

// Once all is said, PLAIN would say it again to whoever asks.
std::optional<QByteArray> SignIn::Private::Step(const QByteArray &challenge) {
    if (std::exchange(Complete, false)) {
        Failed = true;
        return {};
    }
    char *bytes = nullptr;
    std::size_t size = 0;
    const int result = Steps ? gsasl_step(Steps.get(), challenge.constData(),
                                          static_cast<std::size_t>(challenge.size()), &bytes, &size)
                             : GSASL_NO_CLIENT_CODE;
    Complete = result == GSASL_OK;
    Failed = !Complete && result != GSASL_NEEDS_MORE;
    QByteArray response(bytes, static_cast<qsizetype>(size));
    gsasl_free(bytes);
    return Failed ? std::nullopt : std::optional(std::move(response));
}

// A challenge tells why the token was refused; the answer to it makes the server say so in its own protocol.
std::optional<QByteArray> SignIn::Private::RespondForToken() {
    if (!std::exchange(Complete, false)) {
        Failed = true;
        return {};
    }
    return Mechanism == kBearer ? QByteArray(1, '\1') : QByteArray("");
}

SignIn::SignIn(const QByteArray &mechanism, const Credentials &credentials)
    : d(std::make_unique<Private>(Private{mechanism, credentials, {}})) {
    if (IsForTokens(mechanism))
        return;
    d->Steps = Begin(mechanism, credentials);
    d->Failed = !d->Steps;
}

SignIn::~SignIn() = default;
SignIn::SignIn(SignIn &&) noexcept = default;
SignIn &SignIn::operator=(SignIn &&) noexcept = default;

const QByteArray &SignIn::Mechanism() const {
    return d->Mechanism;
}

std::optional<QByteArray> SignIn::InitialResponse() {
    if (d->Failed || IsServerFirst(d->Mechanism))
        return {};
    if (!IsForTokens(d->Mechanism))
        return d->Step({});
    d->Complete = true;
    return TokenResponse(d->Mechanism, d->Of);
}

std::optional<QByteArray> SignIn::Respond(const QByteArray &challenge) {
    if (d->Failed)
        return {};
    return IsForTokens(d->Mechanism) ? d->RespondForToken() : d->Step(challenge);
}

bool SignIn::HasFailed() const {
    return d->Failed;
}

bool SignIn::IsComplete() const {
    return d->Complete;
}

} // namespace varlo::net
