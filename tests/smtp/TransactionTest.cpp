#include "smtp/Transaction.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace OSSMTP {

namespace {

using State = Transaction::State;
const Envelope kEnvelope{"ed@x.org", "ann@y.org", {}};
const QByteArray kMail = "MAIL FROM:<ed@x.org>\r\n";
const QByteArray kRcpt = "RCPT TO:<ann@y.org>\r\n";
const QByteArray kData = "DATA\r\n";

// The server says / the client must write.
struct Exchange {
    int Says;
    QByteArray Writes;
};

Transaction Play(const Envelope &envelope, bool pipelining, bool resetFirst, const QByteArray &opening,
                 const std::vector<Exchange> &dialogue) {
    Transaction transaction(envelope, pipelining, resetFirst);
    EXPECT_EQ(transaction.Start(), opening);
    for (const Exchange &exchange : dialogue)
        EXPECT_EQ(transaction.Take({exchange.Says, QByteArray::number(exchange.Says)}), exchange.Writes);
    return transaction;
}

Transaction Pipelined(const std::vector<Exchange> &dialogue) {
    return Play(kEnvelope, true, false, kMail + kRcpt + kData, dialogue);
}

Transaction StepByStep(const std::vector<Exchange> &dialogue) {
    return Play(kEnvelope, false, false, kMail, dialogue);
}

int AnswerOf(const Transaction &transaction) {
    return transaction.Answer() ? transaction.Answer()->Code : 0;
}

// State, answer, whether it was left open, whether the connection is spoilt.
std::tuple<State, int, bool, bool> End(const Transaction &transaction) {
    return {transaction.Now(), AnswerOf(transaction), transaction.LeftOpen(), transaction.SpoiltConnection()};
}

} // namespace

TEST(TransactionTest, PipelinedMessageIsSent) {
    Transaction transaction = Pipelined({{250, ""}, {250, ""}});
    EXPECT_FALSE(transaction.DataBegun());
    transaction.Take({354, "go"});
    EXPECT_EQ(transaction.Now(), State::Content);
    EXPECT_TRUE(transaction.DataBegun());
    transaction.Take({250, "queued"});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Sent, 0, false, false));
}

TEST(TransactionTest, SteppedMessageIsSent) {
    const Transaction transaction = StepByStep({{250, kRcpt}, {251, kData}, {354, ""}, {250, ""}});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Sent, 0, false, false));
}

TEST(TransactionTest, ParametersFollowTheSender) {
    Play({"ed@x.org", "ann@y.org", " SIZE=7 SMTPUTF8"}, false, false,
         "MAIL FROM:<ed@x.org> SIZE=7 SMTPUTF8\r\n", {});
}

TEST(TransactionTest, PipelinedResetComesFirst) {
    const Transaction transaction = Play(kEnvelope, true, true, "RSET\r\n" + kMail + kRcpt + kData,
                                         {{250, ""}, {250, ""}, {250, ""}, {354, ""}, {250, ""}});
    EXPECT_EQ(transaction.Now(), State::Sent);
}

TEST(TransactionTest, SteppedResetComesFirst) {
    const Transaction transaction = Play(kEnvelope, false, true, "RSET\r\n",
                                         {{250, kMail}, {250, kRcpt}, {250, kData}, {354, ""}, {250, ""}});
    EXPECT_EQ(transaction.Now(), State::Sent);
}

TEST(TransactionTest, ServerThatCannotResetIsLeft) {
    const Transaction transaction = Play(kEnvelope, false, true, "RSET\r\n", {{502, ""}});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Lost, 0, false, true));
}

TEST(TransactionTest, PipelinedRefusedSenderIsTheCause) {
    EXPECT_EQ(End(Pipelined({{553, ""}, {503, ""}, {503, ""}})),
              std::make_tuple(State::Refused, 553, false, false));
}

TEST(TransactionTest, SteppedRefusedSenderEndsIt) {
    EXPECT_EQ(End(StepByStep({{553, ""}})), std::make_tuple(State::Refused, 553, false, false));
}

TEST(TransactionTest, PipelinedRefusedRecipientLeavesItOpen) {
    EXPECT_EQ(End(Pipelined({{250, ""}, {550, ""}, {503, ""}})),
              std::make_tuple(State::Refused, 550, true, false));
}

TEST(TransactionTest, SteppedRefusedRecipientLeavesItOpen) {
    EXPECT_EQ(End(StepByStep({{250, kRcpt}, {450, ""}})), std::make_tuple(State::Refused, 450, true, false));
}

TEST(TransactionTest, DataGrantedForNobodyIsEndedByALoneDot) {
    Transaction transaction = Pipelined({{250, ""}, {550, ""}, {354, ".\r\n"}});
    EXPECT_EQ(transaction.Now(), State::Commands);
    transaction.Take({554, "nobody"});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Refused, 550, false, false));
}

TEST(TransactionTest, EmptyMessageTakenForNobodyIsStillARefusal) {
    EXPECT_EQ(End(Pipelined({{250, ""}, {550, ""}, {354, ".\r\n"}, {250, ""}})),
              std::make_tuple(State::Refused, 550, false, false));
}

TEST(TransactionTest, DataGrantedForARecipientOfARefusedSenderSpoilsTheConnection) {
    EXPECT_EQ(End(Pipelined({{553, ""}, {250, ""}, {354, ""}})),
              std::make_tuple(State::Refused, 553, false, true));
}

TEST(TransactionTest, RefusedDataLeavesItOpen) {
    EXPECT_EQ(End(Pipelined({{250, ""}, {250, ""}, {451, ""}})),
              std::make_tuple(State::Refused, 451, true, false));
    EXPECT_EQ(End(StepByStep({{250, kRcpt}, {250, kData}, {451, ""}})),
              std::make_tuple(State::Refused, 451, true, false));
}

TEST(TransactionTest, RefusedMessageLeavesNothingOpen) {
    EXPECT_EQ(End(Pipelined({{250, ""}, {250, ""}, {354, ""}, {554, ""}})),
              std::make_tuple(State::Refused, 554, false, false));
}

TEST(TransactionTest, ClosingServerIsLostAtAnyStep) {
    const std::vector<Exchange> good{{250, ""}, {250, ""}, {354, ""}};
    for (size_t step = 0; step <= good.size(); ++step) {
        Transaction transaction = Pipelined({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(step)});
        EXPECT_EQ(transaction.Take({421, "bye"}), "");
        EXPECT_EQ(End(transaction), std::make_tuple(State::Lost, 421, false, true));
        EXPECT_EQ(transaction.DataBegun(), step == 3);
    }
}

TEST(TransactionTest, ClosingServerAfterARefusalIsTheRefusal) {
    EXPECT_EQ(End(Pipelined({{250, ""}, {550, ""}, {421, ""}})),
              std::make_tuple(State::Refused, 550, true, true));
}

TEST(TransactionTest, ReplyOfAnotherKindConfuses) {
    EXPECT_EQ(Pipelined({{354, ""}}).Now(), State::Confused);
    EXPECT_EQ(Pipelined({{250, ""}, {354, ""}}).Now(), State::Confused);
    EXPECT_EQ(Pipelined({{250, ""}, {250, ""}, {250, ""}}).Now(), State::Confused);
    EXPECT_EQ(Pipelined({{250, ""}, {250, ""}, {354, ""}, {354, ""}}).Now(), State::Confused);
}

// ---- All at once

namespace {

Transaction AtOnce(const std::vector<Exchange> &dialogue, bool resetFirst = false) {
    return Play({"ed@x.org", "ann@y.org", {}, 7}, true, resetFirst,
                (resetFirst ? "RSET\r\n" : "") + kMail + kRcpt + "BDAT 7 LAST\r\n", dialogue);
}

} // namespace

TEST(TransactionTest, ChunkIsSent) {
    const Transaction transaction = AtOnce({{250, ""}, {250, ""}, {250, ""}});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Sent, 0, false, false));
}

TEST(TransactionTest, ServerMayHaveAChunkFromTheFirstMomentOn) {
    EXPECT_TRUE(AtOnce({}).DataBegun());
    EXPECT_FALSE(Pipelined({}).DataBegun());
}

TEST(TransactionTest, ChunkBehindAResetIsSent) {
    EXPECT_EQ(AtOnce({{250, ""}, {250, ""}, {250, ""}, {250, ""}}, true).Now(), State::Sent);
}

TEST(TransactionTest, RefusedRecipientOfAChunkLeavesItOpen) {
    for (const int answer : {503, 554, 450})
        EXPECT_EQ(End(AtOnce({{250, ""}, {550, ""}, {answer, ""}})),
                  std::make_tuple(State::Refused, 550, true, false));
}

TEST(TransactionTest, RefusedSenderOfAChunkIsTheCause) {
    EXPECT_EQ(End(AtOnce({{553, ""}, {503, ""}, {503, ""}})),
              std::make_tuple(State::Refused, 553, false, false));
}

TEST(TransactionTest, RefusedChunkLeavesItOpen) {
    for (const int answer : {552, 554, 452})
        EXPECT_EQ(End(AtOnce({{250, ""}, {250, ""}, {answer, ""}})),
                  std::make_tuple(State::Refused, answer, true, false));
}

TEST(TransactionTest, ChunkThatIsUnknownSpoilsTheConnectionAndIsNoRefusal) {
    for (const int answer : {500, 501, 502, 503, 504}) {
        const Transaction transaction = AtOnce({{250, ""}, {250, ""}, {answer, ""}});
        EXPECT_EQ(End(transaction), std::make_tuple(State::Lost, answer, true, true));
        EXPECT_TRUE(transaction.IsChunkUnknown());
    }
}

TEST(TransactionTest, ChunkThatIsUnknownBehindARefusalIsTheRefusal) {
    const Transaction transaction = AtOnce({{250, ""}, {550, ""}, {502, ""}});
    EXPECT_EQ(End(transaction), std::make_tuple(State::Refused, 550, true, true));
    EXPECT_TRUE(transaction.IsChunkUnknown());
}

TEST(TransactionTest, ChunkTakenForNobodyIsStillARefusal) {
    EXPECT_EQ(End(AtOnce({{250, ""}, {550, ""}, {250, ""}})),
              std::make_tuple(State::Refused, 550, true, true));
}

TEST(TransactionTest, ChunkTakenForARecipientOfARefusedSenderIsSent) {
    EXPECT_EQ(End(AtOnce({{553, ""}, {250, ""}, {250, ""}})), std::make_tuple(State::Sent, 0, false, true));
}

TEST(TransactionTest, ClosingServerIsLostAtAnyStepOfAChunk) {
    for (std::size_t step = 0; step < 3; ++step) {
        const Transaction transaction = [&] {
            std::vector<Exchange> dialogue(step, {250, ""});
            dialogue.push_back({421, ""});
            return AtOnce(dialogue);
        }();
        EXPECT_EQ(End(transaction), std::make_tuple(State::Lost, 421, false, true));
    }
}

TEST(TransactionTest, ReplyOfAnotherKindConfusesAChunk) {
    EXPECT_EQ(AtOnce({{354, ""}}).Now(), State::Confused);
    EXPECT_EQ(AtOnce({{250, ""}, {250, ""}, {354, ""}}).Now(), State::Confused);
}

} // namespace OSSMTP
