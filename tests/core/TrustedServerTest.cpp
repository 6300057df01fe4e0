#include "core/TrustedServer.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo {

TEST(TrustedServerTest, CertificateComesBackForItsServerAlone) {
    const QByteArray sha256(32, '\xAB');
    const QString stored = TrustText(u" mail.example.org "_s, sha256);
    EXPECT_EQ(stored, QString(u"ab"_s).repeated(32) + u" mail.example.org"_s);
    EXPECT_EQ(TrustedCertificate(stored, u"Mail.Example.ORG "_s), sha256);
    EXPECT_EQ(TrustedCertificate(stored, u"mail.example.com"_s), QByteArray());
    EXPECT_EQ(TrustedCertificate(stored, QString()), QByteArray());
}

TEST(TrustedServerTest, AnythingElseTrustsNobody) {
    for (const QString &stored : {u""_s, u"mail"_s, u"abcd mail"_s,
                                  QString(u"ab"_s).repeated(31) + u" mail"_s, QString(u"ab"_s).repeated(32)})
        EXPECT_EQ(TrustedCertificate(stored, u"mail"_s), QByteArray()) << stored.toStdString();
}

TEST(TrustedServerTest, NoNameIsNoServer) {
    EXPECT_FALSE(IsSameServer(QString(), QString()));
    EXPECT_FALSE(IsSameServer(u" "_s, u" "_s));
    EXPECT_TRUE(IsSameServer(u"a.test"_s, u" A.test"_s));
}

} // namespace varlo
