// Encryption that is offered, refused, broken or lied about.
#include "core/Literals.h"
#include "smtp/SMTP.h"
#include "smtp/Sender.h"

#include <gtest/gtest.h>

namespace varlo::test {

namespace {

const QString kAnn = u"ann@example.com"_s;
const QString kBob = u"bob@example.com"_s;

} // namespace

TEST(SMTPEncryptionTest, RefusedEncryptionGoesOnInTheClear) {
    SmtpScript script;
    script.Extensions = {"STARTTLS", "PIPELINING"};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ClientLines(server).value(0), "STARTTLS");
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPEncryptionTest, EncryptionThatDoesNotWorkGoesOnInTheClear) {
    SmtpScript script;
    script.Extensions = {"STARTTLS", "PIPELINING"};
    script.Faults = {{SmtpStep::StartTls, SmtpFault::ReplyThenClose, "220 go\r\n"}};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(server.Connections(), 2);
    EXPECT_EQ(sender.Errors, SmtpErrors());
}

TEST(SMTPEncryptionTest, OfferedEncryptionIsTakenWhoeverSignedIt) {
    SmtpScript script;
    script.Encrypts = true;
    script.Extensions = {"PIPELINING", "SMTPUTF8"};
    script.EncryptedExtensions = {"SIZE"};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(server.Connections(), 1);
    EXPECT_FALSE(server.WasOverrun()) << "what was offered in the clear counts no more";
    EXPECT_TRUE(ClientLines(server).value(1).contains(" SIZE="));
    EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
}

TEST(SMTPEncryptionTest, BytesThatCameBeforeTheHandshakeDoNotCount) {
    SmtpScript script;
    script.Encrypts = true;
    script.StartTlsReply = "220 go ahead\r\n250-evil.example\r\n250 PIPELINING\r\n550 no\r\n";
    script.EncryptedExtensions = {};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, SmtpErrors());
    EXPECT_EQ(server.Connections(), 1);
    EXPECT_FALSE(server.WasOverrun());
}

} // namespace varlo::test
