#include "net/Certificate.h"

namespace varlo::net {

namespace {

QString NameOf(const QStringList &commonNames, const QStringList &organisations) {
    const QStringList &names = commonNames.isEmpty() ? organisations : commonNames;
    return names.join(QLatin1String(", "));
}

} // namespace

Certificate Describe(const QSslCertificate &certificate) {
    using Info = QSslCertificate::SubjectInfo;
    return {NameOf(certificate.subjectInfo(Info::CommonName), certificate.subjectInfo(Info::Organization)),
            NameOf(certificate.issuerInfo(Info::CommonName), certificate.issuerInfo(Info::Organization)),
            certificate.effectiveDate(), certificate.expiryDate(),
            certificate.digest(QCryptographicHash::Sha256)};
}

QString FingerprintText(const QByteArray &sha256) {
    return QString::fromLatin1(sha256.toHex(':').toUpper());
}

} // namespace varlo::net
