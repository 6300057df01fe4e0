// What an operator has to see of a certificate to say whether it is the server's.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QSslCertificate>
#include <QString>

#include <functional>

namespace varlo::net {

struct Certificate {
    QString Subject; // the name that it is made for, or its organisation when it has none
    QString Issuer;  // who signed it
    QDateTime ValidFrom;
    QDateTime ValidUntil;
    QByteArray Sha256; // of the whole certificate, 32 bytes: what MailAccount::Trusted and Endpoint::Pin take

    bool operator==(const Certificate &) const = default;
};

// A server that could not be trusted.
struct DistrustedServer {
    QString Name; // by which it was asked for
    Certificate Shown;
    QString Why;          // a sentence
    bool IsOther = false; // than the certificate that was trusted for this server before
};

// Asks the operator whether the certificate is the server's all the same.
using AskTrust = std::function<bool(const DistrustedServer &)>;

Certificate Describe(const QSslCertificate &certificate);

// A SHA-256 as operators compare it: "4F:0A:..." in capitals.
QString FingerprintText(const QByteArray &sha256);

} // namespace varlo::net
