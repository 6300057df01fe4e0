// A server whose certificate the operator trusts whoever signed it, as one line of the settings.
#pragma once

#include <QByteArray>
#include <QString>

namespace varlo {

// Whether two texts name the same server: letter case and blanks around them do not count. An empty text names
// none.
bool IsSameServer(const QString &one, const QString &other);

// `sha256` is that of the certificate, in 32 bytes: "HEX SERVER".
QString TrustText(const QString &server, const QByteArray &sha256);

// The SHA-256 in `stored` when it was trusted for `server`; empty when not, or when the text is no such line.
QByteArray TrustedCertificate(const QString &stored, const QString &server);

} // namespace varlo
