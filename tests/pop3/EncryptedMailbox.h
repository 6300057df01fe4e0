// An empty mailbox behind STLS or TLS, with a certificate that nobody has signed.
#pragma once

#include "net/ScriptedServer.h"

#include <QHash>

namespace varlo::test {

class EncryptedMailbox : public ScriptedServer {
public:
    EncryptedMailbox() {
        Greeting = "+OK ready\r\n";
        Certificate = kLocalCertificate;
        Key = kLocalKey;
        OnReceived = [this](const QByteArray &bytes) {
            for (const QByteArray &line : bytes.split('\n'))
                if (!line.isEmpty())
                    Answer(line.trimmed());
        };
    }

    QHash<QByteArray, QByteArray> Script; // the answer to a command, where it is not "+OK"
    QByteArrayList InTheClear;
    QByteArrayList Encrypted;

private:
    void Answer(const QByteArray &command) {
        (Last->isEncrypted() ? Encrypted : InTheClear) << command;
        const QByteArray usual = command == "STAT" ? "+OK 0 0\r\n" : "+OK\r\n";
        const QByteArray answer = Script.value(command, usual);
        Say(answer);
        if (command == "STLS" && answer.startsWith('+'))
            Encrypt();
    }
};

inline QByteArray LocalFingerprint() {
    return QSslCertificate(QByteArray(kLocalCertificate)).digest(QCryptographicHash::Sha256);
}

} // namespace varlo::test
