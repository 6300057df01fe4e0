#include "net/Certificate.h"

#include "core/Literals.h"
#include "support/FakeCertificate.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo::net {

TEST(CertificateTest, TellsWhatAnOperatorCompares) {
    const QSslCertificate shown(QByteArray(test::kLocalCertificate));
    const Certificate certificate = Describe(shown);
    EXPECT_EQ(certificate.Subject, u"localhost"_s);
    EXPECT_EQ(certificate.Issuer, u"localhost"_s);
    EXPECT_EQ(certificate.ValidFrom, QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(certificate.ValidUntil, QDateTime(QDate(2120, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(certificate.Sha256, QCryptographicHash::hash(shown.toDer(), QCryptographicHash::Sha256));
}

TEST(CertificateTest, FingerprintIsPairsInCapitals) {
    EXPECT_EQ(FingerprintText(QByteArray::fromHex("0a4fff")), u"0A:4F:FF"_s);
}

} // namespace varlo::net
