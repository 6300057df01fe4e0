// A connection whose events are written down in order.
#pragma once

#include "core/Literals.h"
#include "net/Connection.h"
#include "net/ScriptedServer.h"
#include "support/Printers.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <memory>

namespace varlo::net {

class ConnectionFixture : public testing::Test {
protected:
    ConnectionFixture() { Listen(); }

    void Listen() {
        connection = std::make_unique<Connection>();
        Connection *from = connection.get();
        QObject::connect(from, &Connection::Opened, [this] { Events << "opened"; });
        QObject::connect(from, &Connection::CertificateSeen, [this](const QSslCertificate &certificate) {
            Events << "certificate";
            Seen = certificate;
        });
        QObject::connect(from, &Connection::Encrypted, [this] { Events << "encrypted"; });
        QObject::connect(from, &Connection::Arrived, [this](const QByteArray &bytes) {
            Arrived += bytes;
            if (OnArrived)
                OnArrived();
        });
        QObject::connect(from, &Connection::Ended, [this](const Failure &failure) {
            Events << "ended";
            End = failure;
        });
    }
    void Open(Encryption security = Encryption::None, const QString &host = u"127.0.0.1"_s,
              const QByteArray &pin = {}) {
        connection->Open({host, server.serverPort(), security, pin});
    }
    bool UntilEnded() {
        return test::WaitUntil([this] { return Events.contains("ended"); });
    }
    bool Until(const QByteArray &event) {
        return test::WaitUntil([&] { return Events.contains(event); });
    }
    bool UntilArrived(const QByteArray &bytes) {
        return test::WaitUntil([&] { return Arrived == bytes; });
    }

    test::ScriptedServer server;
    std::unique_ptr<Connection> connection;
    QByteArrayList Events;
    QByteArray Arrived;
    QSslCertificate Seen;
    Failure End;
    std::function<void()> OnArrived;
};

} // namespace varlo::net
