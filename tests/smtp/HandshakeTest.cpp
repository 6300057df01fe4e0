// Server says / client must write, from the greeting to the first mail.
#include "smtp/Handshake.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace OSSMTP {

namespace {

using State = Handshake::State;
using varlo::net::Encryption;

struct Exchange {
    Reply Says;
    QByteArray Writes; // the verb
};

Handshake Play(Encryption wanted, const std::vector<Exchange> &dialogue) {
    Handshake handshake({wanted});
    for (const Exchange &exchange : dialogue) {
        const QByteArray out = handshake.Take(exchange.Says);
        EXPECT_TRUE(out.isEmpty() || (out.endsWith("\r\n") && out.count('\n') == 1)) << out.constData();
        EXPECT_EQ(out.trimmed().split(' ').first(), exchange.Writes) << exchange.Says.Code;
    }
    return handshake;
}

const Exchange kGreeting{{220, "hi"}, "EHLO"};
const Reply kPlain{250, "host\nPIPELINING"};
const Reply kWithTls{250, "host\nSTARTTLS\nPIPELINING"};

} // namespace

TEST(HandshakeTest, ExtensionsAreLearnt) {
    const Handshake handshake =
        Play(Encryption::None, {kGreeting, {{250, "fake.example\npipelining\nSIZE 1000\n8BITMIME"}, ""}});
    EXPECT_EQ(handshake.Now(), State::Ready);
    EXPECT_TRUE(handshake.Offers("PIPELINING"));
    EXPECT_TRUE(handshake.Offers("SIZE"));
    EXPECT_FALSE(handshake.Offers("SMTPUTF8"));
    EXPECT_FALSE(handshake.Offers("FAKE.EXAMPLE")) << "the first line is the server's name";
}

TEST(HandshakeTest, ServerThatKnowsOnlyHeloHasNoExtensions) {
    const Handshake handshake =
        Play(Encryption::WhenOffered, {kGreeting, {{500, "what"}, "HELO"}, {{250, "host\nPIPELINING"}, ""}});
    EXPECT_EQ(handshake.Now(), State::Ready);
    EXPECT_FALSE(handshake.Offers("PIPELINING"));
}

TEST(HandshakeTest, OfferedEncryptionIsTakenAndAllIsAskedAgain) {
    Handshake handshake =
        Play(Encryption::WhenOffered, {kGreeting, {kWithTls, "STARTTLS"}, {{220, "go"}, ""}});
    ASSERT_EQ(handshake.Now(), State::Encrypting);
    EXPECT_TRUE(handshake.Resume().startsWith("EHLO "));
    EXPECT_EQ(handshake.Now(), State::Talking);
    EXPECT_FALSE(handshake.Offers("PIPELINING")) << "what was offered in the clear counts no more";
    EXPECT_EQ(handshake.Take({250, "host\nSTARTTLS\nSIZE"}), "") << "not twice";
    EXPECT_EQ(handshake.Now(), State::Ready);
    EXPECT_TRUE(handshake.Offers("SIZE"));
}

TEST(HandshakeTest, EncryptionIsNotAskedForByThoseWhoWantNone) {
    EXPECT_EQ(Play(Encryption::None, {kGreeting, {kWithTls, ""}}).Now(), State::Ready);
    EXPECT_EQ(Play(Encryption::Tls, {kGreeting, {kWithTls, ""}}).Now(), State::Ready);
}

TEST(HandshakeTest, RefusedEncryptionGoesOnInTheClear) {
    const Handshake handshake =
        Play(Encryption::WhenOffered, {kGreeting, {kWithTls, "STARTTLS"}, {{454, "not now"}, ""}});
    EXPECT_EQ(handshake.Now(), State::Ready);
    EXPECT_TRUE(handshake.Offers("PIPELINING"));
}

TEST(HandshakeTest, EncryptionThatIsAMustIsNotGivenUp) {
    const Failure refused = AccountFailure(CannotConnect, u"The server does not encrypt"_s);
    for (const Handshake &handshake :
         {Play(Encryption::StartTls, {kGreeting, {kPlain, ""}}),
          Play(Encryption::StartTls, {kGreeting, {{500, "what"}, ""}}),
          Play(Encryption::StartTls, {kGreeting, {kWithTls, "STARTTLS"}, {{454, "not now"}, ""}})}) {
        EXPECT_EQ(handshake.Now(), State::Failed);
        EXPECT_EQ(handshake.Trouble(), refused);
    }
}

TEST(HandshakeTest, RefusalsAreReportedWithTheirReply) {
    EXPECT_EQ(Play(Encryption::None, {{{554, "no service"}, ""}}).Trouble(),
              (Failure{554, u"no service"_s, false}));
    EXPECT_EQ(Play(Encryption::None, {kGreeting, {{550, "no"}, "HELO"}, {{550, "still no"}, ""}}).Trouble(),
              (Failure{550, u"still no"_s, false}));
}

TEST(HandshakeTest, ServerThatClosesDownIsLost) {
    for (const auto &dialogue :
         {std::vector<Exchange>{{{421, "bye"}, ""}}, std::vector<Exchange>{kGreeting, {{421, "bye"}, ""}}}) {
        const Handshake handshake = Play(Encryption::None, dialogue);
        EXPECT_EQ(handshake.Now(), State::Failed);
        EXPECT_EQ(handshake.Trouble(), (Failure{421, u"bye"_s, true}));
    }
}

TEST(HandshakeTest, AnswersThatDoNotBelongAreNotSmtp) {
    EXPECT_EQ(Play(Encryption::None, {{{354, "eh"}, ""}}).Trouble(), InvalidReplyFailure());
}

} // namespace OSSMTP
