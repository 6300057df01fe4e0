// A message in one round trip: what the server hears, and that nobody gets it twice whatever it answers.
#include "core/Literals.h"
#include "smtp/Sender.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo::test {

namespace {

using Kind = Outcome::Kind;

const QString kAnn = u"ann@example.com"_s;
const QString kBob = u"bob@example.com"_s;
const QString kCat = u"cat@example.com"_s;

SmtpScript Chunking(std::vector<SmtpFault> faults = {}) {
    SmtpScript script;
    script.Extensions = {"PIPELINING", "CHUNKING", "SIZE"};
    script.Faults = std::move(faults);
    return script;
}

SmtpFault At(SmtpStep step, SmtpFault::Deed deed, const QByteArray &bytes, int times = -1,
             const QByteArray &holding = {}) {
    return {step, deed, bytes, holding, 0, times};
}

QByteArrayList Verbs(const FakeSmtpServer &server) {
    QByteArrayList verbs;
    for (const QByteArray &line : ClientLines(server))
        verbs << line.left(4);
    return verbs;
}

const QByteArrayList kAtOnce{"MAIL", "RCPT", "BDAT", "(mes"};
const QByteArrayList kAsked{"MAIL", "RCPT", "DATA", "(mes"};

} // namespace

TEST(ChunkTest, ServerHearsAllBeforeItAnswersAnything) {
    SmtpScript script = Chunking();
    script.HoldUntilData = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(Verbs(server), kAtOnce);
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
}

TEST(ChunkTest, MessageIsTheSameAsWithData) {
    const QString text = u".\r\n..\r\n.a\r\nb.\r\n\r\n.\r\n"_s.repeated(100);
    const FakeSmtpServer chunking(Chunking());
    const FakeSmtpServer plain;
    QByteArrayList bodies;
    for (const FakeSmtpServer *server : {&chunking, &plain}) {
        Sender sender(*server);
        sender.Message.Text = text;
        ASSERT_TRUE(sender.SendTo(kAnn));
        const QByteArray data = server->Mails().value(0).Data;
        bodies << data.mid(data.indexOf("\r\n\r\n"));
    }
    EXPECT_EQ(bodies[0], bodies[1]);
    EXPECT_EQ(bodies[0], "\r\n\r\n" + text.toUtf8());
    const qsizetype size = chunking.Mails().value(0).Data.size();
    EXPECT_EQ(ClientLines(chunking).value(2), "BDAT " + QByteArray::number(size) + " LAST");
    EXPECT_TRUE(ClientLines(chunking).value(0).endsWith(" SIZE=" + QByteArray::number(size)));
}

TEST(ChunkTest, LargeMessageWaitsForTheRecipient) {
    for (const auto &[lines, verbs] : {std::pair(1000, kAtOnce), std::pair(1100, kAsked)}) {
        const FakeSmtpServer server(Chunking());
        Sender sender(server);
        sender.Message.Text = (QString(62, u'x') + u"\r\n"_s).repeated(lines);
        EXPECT_TRUE(sender.SendTo(kAnn));
        EXPECT_EQ(Verbs(server), verbs) << lines;
    }
}

TEST(ChunkTest, WithoutPipeliningOneThingFollowsTheOther) {
    SmtpScript script = Chunking();
    script.Extensions = {"CHUNKING"};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(Verbs(server), kAsked);
    EXPECT_FALSE(server.WasOverrun());
}

// A server that closes after each message, which is the commonest of those that close at all, would leave the
// second one in doubt.
TEST(ChunkTest, SecondMessageOfAConnectionIsAskedFor) {
    const FakeSmtpServer server(Chunking());
    Sender sender(server);
    for (const QString &address : {kAnn, kBob, kCat})
        EXPECT_TRUE(sender.SendTo(address));
    EXPECT_EQ(Verbs(server), kAtOnce + kAsked + kAtOnce);
    EXPECT_EQ(server.Connections(), 1);
}

TEST(ChunkTest, RefusedRecipientIsNoMatterOfTheNext) {
    for (const QByteArray answer : {"503 no valid recipients\r\n", "554 5.5.1 no valid recipients\r\n"}) {
        SmtpScript script =
            Chunking({At(SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", -1, "ann")});
        script.ChunkForNobody = answer;
        const FakeSmtpServer server(script);
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(), (Outcome{Kind::Refused, 550, u"no such user"_s}));
        EXPECT_TRUE(sender.SendTo(kBob));
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
        EXPECT_EQ(server.Connections(), 1);
        EXPECT_EQ(Verbs(server), kAtOnce + QByteArrayList{"RSET"} + kAsked);
    }
}

TEST(ChunkTest, RefusedSenderIsReportedWithItsOwnReply) {
    const FakeSmtpServer server(Chunking({At(SmtpStep::Mail, SmtpFault::Reply, "553 not yours\r\n")}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{553, u"not yours"_s}}));
}

TEST(ChunkTest, RefusedMessageIsReportedAndTheConnectionKept) {
    for (const auto &[reply, kind] : {std::pair(QByteArray("552 too much"), Kind::Refused),
                                      std::pair(QByteArray("554 spam"), Kind::Refused),
                                      std::pair(QByteArray("452 disk full"), Kind::Later)}) {
        const FakeSmtpServer server(Chunking({At(SmtpStep::Message, SmtpFault::Reply, reply + "\r\n", 1)}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(), (Outcome{kind, reply.left(3).toInt(), QString::fromLatin1(reply.mid(4))}));
        EXPECT_TRUE(sender.SendTo(kBob));
        EXPECT_EQ(server.Connections(), 1);
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
    }
}

TEST(ChunkTest, ServerThatClosesDownIsTriedOnceMore) {
    for (const SmtpStep step : {SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::MessageBegin, SmtpStep::Message}) {
        const FakeSmtpServer server(Chunking({At(step, SmtpFault::ReplyThenClose, "421 bye\r\n", 1)}));
        Sender sender(server);
        EXPECT_TRUE(sender.SendTo(kAnn)) << static_cast<int>(step);
        EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
        EXPECT_EQ(server.Connections(), 2);
    }
}

TEST(ChunkTest, ServerThatClosesDownAgainIsReported) {
    const FakeSmtpServer server(Chunking({At(SmtpStep::Message, SmtpFault::ReplyThenClose, "421 bye\r\n")}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last(), (Outcome{Kind::Later, 421, u"bye"_s}));
    EXPECT_EQ(server.Connections(), 2);
}

// The server had all of it in hand, so it may have the message.
TEST(ChunkTest, LostAnywhereIsInDoubtAndNeverTriedAgain) {
    for (const SmtpStep step : {SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::MessageBegin, SmtpStep::Message}) {
        const FakeSmtpServer server(Chunking({At(step, SmtpFault::Close, "", 1)}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(), (Outcome{Kind::InDoubt, OSSMTP::ConnectionLost,
                                          u"The connection was closed by the server"_s}));
        EXPECT_EQ(server.Connections(), 1) << static_cast<int>(step);
        EXPECT_TRUE(sender.SendTo(kBob));
    }
}

TEST(ChunkTest, SilenceIsInDoubt) {
    for (const SmtpStep step : {SmtpStep::Mail, SmtpStep::Message}) {
        const FakeSmtpServer server(Chunking({At(step, SmtpFault::Silence, "", 1)}));
        Sender sender(server);
        sender.Timeout = 200;
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(),
                  (Outcome{Kind::InDoubt, OSSMTP::TimedOut, u"The server did not answer in time"_s}));
        EXPECT_EQ(server.Connections(), 1);
    }
}

TEST(ChunkTest, AnswerThatIsNoneIsInDoubt) {
    for (const QByteArray reply : {"hello\r\n", "354 go on\r\n"}) {
        const FakeSmtpServer server(Chunking({At(SmtpStep::Message, SmtpFault::Reply, reply, 1)}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last().Result, Kind::InDoubt);
        EXPECT_EQ(server.Connections(), 1);
        EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
    }
}

TEST(ChunkTest, ServerThatRefusesBdatOnceGetsDataFromThenOn) {
    for (const QByteArray reply : {"502 not implemented\r\n", "503 bad sequence\r\n"}) {
        const FakeSmtpServer server(
            Chunking({At(SmtpStep::MessageBegin, SmtpFault::Reply, reply, -1, "BDAT")}));
        Sender sender(server);
        for (const QString &address : {kAnn, kBob, kCat})
            EXPECT_TRUE(sender.SendTo(address)) << reply.constData();
        EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com", "cat@example.com"}));
        EXPECT_EQ(Verbs(server).count("BDAT"), 1);
        EXPECT_EQ(server.Connections(), 2);
        EXPECT_EQ(sender.Errors, SmtpErrors());
    }
}

TEST(ChunkTest, MessageThatWasTakenForCommandsIsSentProperlyOnce) {
    SmtpScript script = Chunking();
    script.ChunksUnknown = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    sender.Message.Text = u"RSET\r\nMAIL FROM:<evil@example.org>\r\nRCPT TO:<all@example.org>\r\nHELLO\r\n"_s;
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
    EXPECT_EQ(server.Connections(), 2) << "the connection that heard the message as commands is left";
}

TEST(ChunkTest, UnknownBdatBehindARefusedRecipientIsTheRefusalAndData) {
    SmtpScript script = Chunking({At(SmtpStep::Rcpt, SmtpFault::Reply, "550 no\r\n", -1, "ann")});
    script.ChunksUnknown = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last(), (Outcome{Kind::Refused, 550, u"no"_s}));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(Verbs(server).count("BDAT"), 1);
    EXPECT_EQ(server.Connections(), 2);
}

TEST(ChunkTest, ServerThatClosesAfterEachMessageLeavesNobodyInDoubt) {
    SmtpScript script = Chunking();
    script.CloseEvery = 1;
    const FakeSmtpServer server(script);
    Sender sender(server);
    for (int i = 0; i < 50; ++i)
        EXPECT_TRUE(sender.SendTo(kAnn)) << i;
    EXPECT_EQ(server.Mails().size(), 50);
    EXPECT_EQ(server.Connections(), 50);
}

TEST(ChunkTest, ServerThatClosesEveryHundredGetsEachMessageOnce) {
    SmtpScript script = Chunking();
    script.CloseEvery = 100;
    const FakeSmtpServer server(script);
    Sender sender(server);
    QByteArrayList sent;
    for (int i = 0; i < 1000; ++i) {
        const QString address = u"member%1@example.com"_s.arg(i);
        if (sender.SendTo(address))
            sent << address.toLatin1();
    }
    EXPECT_EQ(Reached(server), sent);
    EXPECT_GE(sent.size(), 999) << "the first close may come as a surprise";
}

TEST(ChunkTest, EncryptedLineCarriesChunksToo) {
    SmtpScript script = Chunking();
    script.Encrypts = true;
    script.EncryptedExtensions = {"PIPELINING", "CHUNKING"};
    const FakeSmtpServer server(script);
    Sender sender(server);
    sender.Message.Text = (QString(62, u'x') + u"\r\n"_s).repeated(900);
    EXPECT_TRUE(sender.SendTo(kAnn)) << testing::PrintToString(sender.Last());
    EXPECT_EQ(Verbs(server), QByteArrayList{"STAR"} + kAtOnce);
    EXPECT_TRUE(server.Mails().value(0).Data.endsWith(sender.Message.Text.toLatin1()));
}

} // namespace varlo::test
