#include "core/TrustedServer.h"

#include "core/Literals.h"

namespace varlo {

bool IsSameServer(const QString &one, const QString &other) {
    return !one.trimmed().isEmpty() && one.trimmed().compare(other.trimmed(), Qt::CaseInsensitive) == 0;
}

QString TrustText(const QString &server, const QByteArray &sha256) {
    return QString::fromLatin1(sha256.toHex()) + u' ' + server.trimmed();
}

QByteArray TrustedCertificate(const QString &stored, const QString &server) {
    constexpr qsizetype kBytes = 32;
    const QByteArray sha256 = QByteArray::fromHex(stored.section(u' ', 0, 0).toLatin1());
    return sha256.size() == kBytes && IsSameServer(stored.section(u' ', 1), server) ? sha256 : QByteArray();
}

} // namespace varlo
