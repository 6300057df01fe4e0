// Encryption, and whom it trusts.
#include "net/ConnectionFixture.h"

#include <QSslConfiguration>

namespace varlo::net {

namespace {

const QString kLocalhost = u"localhost"_s;

class EncryptionTest : public ConnectionFixture {
protected:
    EncryptionTest() {
        server.Certificate = test::kLocalCertificate;
        server.Key = test::kLocalKey;
    }
    ~EncryptionTest() override { QSslConfiguration::setDefaultConfiguration(before_); }

    // As if the system held the test's certificate for that of an authority.
    void TrustTheAuthority() {
        QSslConfiguration trusting = before_;
        trusting.addCaCertificate(Own());
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    static QSslCertificate Own() { return QSslCertificate(QByteArray(test::kLocalCertificate)); }
    // A server that encrypts when it is asked to, and then says "safe".
    void EncryptWhenAsked(const QByteArray &answer = "220 go\r\n") {
        server.Greeting = "220 hi\r\n";
        server.OnReceived = [this, answer](const QByteArray &bytes) {
            if (bytes != "STARTTLS\r\n")
                return server.Say("you said " + bytes);
            server.Say(answer);
            server.Encrypt();
        };
        OnArrived = [this] {
            if (Arrived == "220 hi\r\n")
                connection->Write("STARTTLS\r\n");
            else if (Arrived.startsWith("220 hi\r\n220 go\r\n") && !std::exchange(asked_, true))
                connection->StartTls();
        };
    }

private:
    const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
    bool asked_ = false;
};

} // namespace

TEST_F(EncryptionTest, LiveLineIsEncrypted) {
    EncryptWhenAsked();
    Open(Encryption::WhenOffered);
    ASSERT_TRUE(Until("encrypted"));
    EXPECT_EQ(Events, (QByteArrayList{"opened", "certificate", "encrypted"}));
    EXPECT_EQ(Seen, Own());
    connection->Write("hello");
    EXPECT_TRUE(UntilArrived("220 hi\r\n220 go\r\nyou said hello"));
    server.Last->disconnectFromHost();
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::Closed);
}

TEST_F(EncryptionTest, BytesThatWereNotHandedOnBeforeTheHandshakeAreDropped) {
    EncryptWhenAsked();
    server.OnReceived = [this](const QByteArray &bytes) {
        if (bytes != "STARTTLS\r\n")
            return server.Say("you said " + bytes);
        server.Say("220 go\r\n");
    };
    OnArrived = [this] {
        if (Arrived == "220 hi\r\n")
            return connection->Write("STARTTLS\r\n");
        if (Arrived != "220 hi\r\n220 go\r\n")
            return;
        server.Say("injected");
        while (connection->IsQuiet()) {
        } // now it is at the client's
        server.Encrypt();
        connection->StartTls();
    };
    Open(Encryption::WhenOffered);
    ASSERT_TRUE(Until("encrypted"));
    connection->Write("hello");
    EXPECT_TRUE(UntilArrived("220 hi\r\n220 go\r\nyou said hello"));
}

TEST_F(EncryptionTest, LargeWriteArrivesWholeAndIsNotBufferedWhole) {
    EncryptWhenAsked();
    Open(Encryption::WhenOffered);
    ASSERT_TRUE(Until("encrypted"));
    const QByteArray large = QByteArray("0123456789abcde\n").repeated(500'000);
    server.OnReceived = nullptr;
    server.Received.clear();
    connection->Write(large);
    EXPECT_TRUE(connection->IsWriting());
    EXPECT_TRUE(test::WaitUntil([&] { return server.Received.size() == large.size(); }));
    EXPECT_EQ(server.Received, large);
    EXPECT_TRUE(test::WaitUntil([&] { return !connection->IsWriting(); }));
}

TEST_F(EncryptionTest, HandshakeThatFailsSaysSo) {
    EncryptWhenAsked();
    server.OnReceived = [this](const QByteArray &bytes) {
        server.Say(bytes.startsWith("STARTTLS") ? "220 go\r\n" : "this is no handshake\r\n");
    };
    Open(Encryption::WhenOffered);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::NotEncrypted);
    EXPECT_FALSE(End.Text.isEmpty());
}

TEST_F(EncryptionTest, CloseWithinTheHandshakeIsAFailureOfIt) {
    EncryptWhenAsked();
    server.OnReceived = [this](const QByteArray &bytes) {
        if (bytes.startsWith("STARTTLS"))
            server.Say("220 go\r\n");
        else
            server.Last->disconnectFromHost();
    };
    Open(Encryption::WhenOffered);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::NotEncrypted);
}

TEST_F(EncryptionTest, CertificateOfNobodyIsNotTrustedWhereItMatters) {
    EncryptWhenAsked();
    Open(Encryption::StartTls, kLocalhost);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(Events, (QByteArrayList{"opened", "certificate", "ended"}));
    EXPECT_EQ(End.Cause, Trouble::NotTrusted);
    EXPECT_EQ(Seen, Own()) << "for somebody to look at";
}

TEST_F(EncryptionTest, CertificateOfAnAuthorityIsTrustedForItsName) {
    TrustTheAuthority();
    EncryptWhenAsked();
    Open(Encryption::StartTls, kLocalhost);
    EXPECT_TRUE(Until("encrypted"));
}

TEST_F(EncryptionTest, CertificateOfAnAuthorityIsNotTrustedForAnotherName) {
    TrustTheAuthority();
    EncryptWhenAsked();
    Open(Encryption::StartTls, u"127.0.0.1"_s);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::NotTrusted);
}

TEST_F(EncryptionTest, PinnedCertificateIsTrustedWhoeverSignedIt) {
    EncryptWhenAsked();
    Open(Encryption::StartTls, u"127.0.0.1"_s, Own().digest(QCryptographicHash::Sha256));
    EXPECT_TRUE(Until("encrypted"));
}

TEST_F(EncryptionTest, AnotherCertificateThanThePinnedOneIsNotTrusted) {
    EncryptWhenAsked();
    Open(Encryption::StartTls, kLocalhost, QByteArray(32, 'x'));
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::NotTrusted);
}

TEST_F(EncryptionTest, LineThatIsEncryptedFromTheFirstByteOpensEncrypted) {
    TrustTheAuthority();
    server.EncryptsAtOnce = true;
    server.Greeting = "220 hi\r\n";
    Open(Encryption::Tls, kLocalhost);
    EXPECT_TRUE(UntilArrived("220 hi\r\n"));
    EXPECT_EQ(Events, (QByteArrayList{"opened", "certificate"}));
}

TEST_F(EncryptionTest, LineThatShouldBeEncryptedIsNotOpenedInTheClear) {
    server.Greeting = "220 hi\r\n";
    Open(Encryption::Tls, kLocalhost);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::NotEncrypted);
    EXPECT_EQ(Arrived, "");
}

} // namespace varlo::net
