// Signing in to a server: challenges in, responses out. Knows neither protocol nor socket.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <memory>
#include <optional>

namespace varlo::net {

struct Credentials {
    QString Username;
    QString Secret = {};
    bool IsToken = false; // the secret is an access token, not a password
    QString Host = {};    // of the server, as some token mechanisms name it
    int Port = 0;

    bool operator==(const Credentials &) const = default;
};

// The strongest of the mechanisms `offered` (in capitals) that these credentials can use; empty when there is
// none. For a password that is SCRAM-SHA-256, CRAM-MD5, PLAIN, LOGIN, for a token OAUTHBEARER, XOAUTH2.
QByteArray StrongestMechanism(const QByteArrayList &offered, const Credentials &credentials);

// `text` with each place where the secret stands, plain or in base64, replaced by "***".
QByteArray WithoutSecret(QByteArray text, const Credentials &credentials);

// One attempt with one mechanism. The bytes of challenges and responses are those within the base64.
class SignIn {
public:
    SignIn(const QByteArray &mechanism, const Credentials &credentials);
    ~SignIn();
    SignIn(SignIn &&) noexcept;
    SignIn &operator=(SignIn &&) noexcept;

    const QByteArray &Mechanism() const;
    // What goes along with the name of the mechanism; nothing where the server has to speak first, and where
    // the credentials cannot be used (HasFailed).
    std::optional<QByteArray> InitialResponse();
    // The answer to a challenge; nothing when it makes no sense, or proves that the server is an impostor.
    std::optional<QByteArray> Respond(const QByteArray &challenge);
    bool HasFailed() const;
    // The server may say now that it is content. Before, one that had to prove that it knows the password has
    // not done so.
    bool IsComplete() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace varlo::net
