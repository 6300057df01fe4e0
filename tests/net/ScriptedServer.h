// A server on loopback in the test's own thread that greets, answers and leaves as it is told.
#pragma once

#include "support/FakeCertificate.h"
#include "support/ResetOnClose.h"

#include <QByteArrayList>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <gtest/gtest.h>

#include <functional>

namespace varlo::test {

class ScriptedServer : public QTcpServer {
public:
    ScriptedServer() {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        QObject::connect(this, &QTcpServer::newConnection, this, [this] { nextPendingConnection(); });
    }

    QByteArray Greeting;                                // sent at once
    std::function<void(const QByteArray &)> OnReceived; // what the client says, as it comes
    QByteArray Received;                                // all of it
    const char *Certificate = kFakeCertificate;
    const char *Key = kFakeKey;
    bool EncryptsAtOnce = false;
    QSslSocket *Last = nullptr; // the connection made last
    int Ended = 0;              // connections that clients have closed

    void Say(const QByteArray &bytes) {
        Last->write(bytes);
        Last->flush();
    }
    void Encrypt() {
        Last->setLocalCertificate(QSslCertificate(QByteArray(Certificate)));
        Last->setPrivateKey(QSslKey(QByteArray(Key), QSsl::Ec));
        Last->startServerEncryption();
    }
    // Breaks the connection as a crashed server would.
    void Reset() {
        ResetOnClose(Last->socketDescriptor());
        Last->abort();
    }

protected:
    void incomingConnection(qintptr descriptor) override {
        Last = new QSslSocket(this);
        Last->setSocketDescriptor(descriptor);
        QObject::connect(Last, &QSslSocket::disconnected, this, [this] { ++Ended; });
        QObject::connect(Last, &QSslSocket::readyRead, this, [this, socket = Last] {
            const QByteArray bytes = socket->readAll();
            Received += bytes;
            if (OnReceived)
                OnReceived(bytes);
        });
        addPendingConnection(Last);
        if (EncryptsAtOnce)
            Encrypt();
        if (!Greeting.isEmpty())
            Say(Greeting);
    }
};

} // namespace varlo::test
