// Tries a server as it is set up (connect, encrypt, sign in), sends and fetches nothing, and tells step by step.
#pragma once

#include "net/Certificate.h"

#include <QObject>
#include <QString>

#include <optional>

namespace varlo::net {

struct TestResult {
    QString Trouble; // sentences for the operator; empty: all worked
    // The trouble is this certificate. Put into the account as trusted, its Sha256 makes the next test pass.
    std::optional<Certificate> Distrusted = {};
    // The trouble is that the secret would cross a line that is not encrypted, which was not allowed.
    bool NeedsClearText = false;
};

// One test of one server: Start it once; it may be destroyed at any time, in a handler too. No signal comes
// from within Start, and none holds a secret.
class ServerTest : public QObject {
    Q_OBJECT

public:
    enum class Side { Client, Server };

    using QObject::QObject;

    virtual void Start() = 0;

Q_SIGNALS:
    void Step(const QString &what); // "Connected to [mail.example.org], port 587."
    // One line of the dialogue, without its end; what is secret is shown as "***".
    void Line(varlo::net::ServerTest::Side side, const QString &text);
    void Finished(const varlo::net::TestResult &result); // once, the last of the signals
};

} // namespace varlo::net
