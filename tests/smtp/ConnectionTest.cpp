#include "smtp/Connection.h"

#include "core/Literals.h"
#include "support/FakeSmtpServer.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

using varlo::test::FakeSmtpServer;
using varlo::test::SmtpFault;
using varlo::test::SmtpScript;
using varlo::test::SmtpStep;

class ConnectionTest : public testing::Test {
protected:
    ConnectionTest() { waiter_.Begin(2000); }

    MaybeFailure Open(const FakeSmtpServer &server) {
        return connection_.Open({u"127.0.0.1"_s, server.Port()});
    }
    bool IsUsableFor(const FakeSmtpServer &server) {
        return connection_.IsUsableFor({u"127.0.0.1"_s, server.Port()});
    }

    Waiter waiter_;
    Connection connection_{waiter_};
};

int NumberOf(const MaybeFailure &failure) {
    return failure ? failure->Number : 0;
}

} // namespace

TEST_F(ConnectionTest, ExtensionsAreLearnt) {
    SmtpScript script;
    script.Extensions = {"pipelining", "SIZE 1000", "8BITMIME"};
    const FakeSmtpServer server(script);
    ASSERT_EQ(NumberOf(Open(server)), 0);
    EXPECT_TRUE(connection_.Offers("PIPELINING"));
    EXPECT_TRUE(connection_.Offers("SIZE"));
    EXPECT_FALSE(connection_.Offers("SMTPUTF8"));
    EXPECT_FALSE(connection_.Offers("FAKE.EXAMPLE")) << "the first line is the server's name";
}

TEST_F(ConnectionTest, NothingIsUsableBeforeOpen) {
    EXPECT_FALSE(connection_.IsUsableFor({u"127.0.0.1"_s, 25}));
    connection_.Close();
}

TEST_F(ConnectionTest, RepliesAreReadInOrder) {
    const FakeSmtpServer server;
    ASSERT_EQ(NumberOf(Open(server)), 0);
    ASSERT_EQ(NumberOf(connection_.Write("RSET\r\nMAIL FROM:<a@b>\r\n")), 0);
    Reply first;
    Reply second;
    ASSERT_EQ(NumberOf(connection_.Read(first)), 0);
    ASSERT_EQ(NumberOf(connection_.Read(second)), 0);
    EXPECT_EQ(first, (Reply{250, "reset"}));
    EXPECT_EQ(second, (Reply{250, "sender ok"}));
    EXPECT_TRUE(IsUsableFor(server));
}

TEST_F(ConnectionTest, ConnectionThatTheServerClosedIsNotUsable) {
    const FakeSmtpServer server;
    ASSERT_EQ(NumberOf(Open(server)), 0);
    connection_.Write("QUIT\r\n");
    Reply reply;
    ASSERT_EQ(NumberOf(connection_.Read(reply)), 0);
    EXPECT_EQ(reply.Code, 221);
    EXPECT_EQ(connection_.Read(reply), LostFailure());
    EXPECT_FALSE(IsUsableFor(server));
}

TEST_F(ConnectionTest, RefusedEncryptionGoesOnInTheClear) {
    SmtpScript script;
    script.Extensions = {"STARTTLS", "PIPELINING"};
    const FakeSmtpServer server(script);
    EXPECT_EQ(NumberOf(Open(server)), 0);
    EXPECT_TRUE(connection_.Offers("PIPELINING"));
    EXPECT_TRUE(server.Dialogue().contains("C: STARTTLS"));
}

TEST_F(ConnectionTest, EncryptionThatDoesNotWorkGoesOnInTheClear) {
    SmtpScript script;
    script.Extensions = {"STARTTLS", "PIPELINING"};
    script.Faults = {{SmtpStep::StartTls, SmtpFault::ReplyThenClose, "220 go\r\n"}};
    const FakeSmtpServer server(script);
    EXPECT_EQ(NumberOf(Open(server)), 0);
    EXPECT_EQ(server.Connections(), 2);
    EXPECT_TRUE(connection_.Offers("PIPELINING"));
}

TEST_F(ConnectionTest, OfferedEncryptionIsTakenWhoeverSignedIt) {
    SmtpScript script;
    script.Encrypts = true;
    script.Extensions = {"PIPELINING", "SMTPUTF8"};
    script.EncryptedExtensions = {"SIZE"};
    const FakeSmtpServer server(script);
    ASSERT_EQ(NumberOf(Open(server)), 0);
    EXPECT_TRUE(connection_.Offers("SIZE"));
    EXPECT_FALSE(connection_.Offers("PIPELINING")) << "what was offered in the clear counts no more";
    ASSERT_EQ(NumberOf(connection_.Write("RSET\r\n")), 0);
    Reply reply;
    ASSERT_EQ(NumberOf(connection_.Read(reply)), 0);
    EXPECT_EQ(reply, (Reply{250, "reset"}));
    EXPECT_TRUE(IsUsableFor(server));
}

TEST_F(ConnectionTest, ReplyDuringAMessageIsTheServersLastWord) {
    SmtpScript script;
    script.Extensions = {};
    script.Faults = {{SmtpStep::MessageBegin, SmtpFault::ReplyThenSilence, "452 full\r\n"}};
    const FakeSmtpServer server(script);
    ASSERT_EQ(NumberOf(Open(server)), 0);
    Reply reply;
    for (const char *command : {"MAIL FROM:<a@b>\r\n", "RCPT TO:<c@d>\r\n", "DATA\r\n"}) {
        ASSERT_EQ(NumberOf(connection_.Write(command)), 0);
        ASSERT_EQ(NumberOf(connection_.Read(reply)), 0);
    }
    EXPECT_EQ(NumberOf(connection_.Write(QByteArray(50'000'000, 'x'), Connection::Early::Ends)), 0);
    EXPECT_TRUE(connection_.IsCut());
    ASSERT_EQ(NumberOf(connection_.Read(reply)), 0);
    EXPECT_EQ(reply, (Reply{452, "full"}));
    EXPECT_FALSE(IsUsableFor(server));
}

TEST_F(ConnectionTest, ServerThatStopsReadingIsATimeOut) {
    SmtpScript script;
    script.Faults = {{SmtpStep::Rset, SmtpFault::Silence}};
    const FakeSmtpServer server(script);
    waiter_.Begin(200);
    ASSERT_EQ(NumberOf(Open(server)), 0);
    connection_.Write("RSET\r\n");
    EXPECT_EQ(connection_.Write(QByteArray(50'000'000, 'x')), TimedOutFailure());
}

TEST_F(ConnectionTest, EndlessGreetingIsNotSmtp) {
    SmtpScript script;
    script.Faults = {
        {SmtpStep::Greeting, SmtpFault::Reply, QByteArray("220-more of this\r\n").repeated(10'000)}};
    const FakeSmtpServer server(script);
    EXPECT_EQ(Open(server), InvalidReplyFailure());
}

TEST_F(ConnectionTest, GreetingWithoutALineEndIsNotSmtp) {
    SmtpScript script;
    script.Faults = {{SmtpStep::Greeting, SmtpFault::Reply, QByteArray(1024 * 1024, '2')}};
    const FakeSmtpServer server(script);
    EXPECT_EQ(Open(server), InvalidReplyFailure());
}

} // namespace OSSMTP
