// Which fate follows from which end.
#include "smtp/Verdict.h"

#include "core/Literals.h"
#include "smtp/Sender.h"

#include <gtest/gtest.h>

#include <vector>

namespace OSSMTP {

namespace {

using varlo::Outcome;
using Kind = Outcome::Kind;

Transaction After(const std::vector<Reply> &replies, bool pipelining = true) {
    Transaction transaction({"ed@x.org", "ann@y.org", {}}, pipelining, false);
    for (const Reply &reply : replies)
        transaction.Take(reply);
    return transaction;
}

const Reply kOk{250, "ok"};
const Reply kGo{354, "go"};
const Failure kTimeOut{TimedOut, u"late"_s, false};

Outcome Fate(Kind kind, int number, const QString &text) {
    return {kind, number, text, false};
}

void ExpectVerdict(const Verdict &verdict, const Outcome &fate, bool mayRepeat) {
    EXPECT_EQ(verdict.Fate, fate);
    EXPECT_EQ(verdict.MayRepeat, mayRepeat);
}

const QString kLost = LostFailure().Description;

} // namespace

TEST(VerdictTest, TakenMessageIsSent) {
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo, kOk}), {}, false), Outcome{}, false);
}

TEST(VerdictTest, RepliesTellRefusedFromLater) {
    ExpectVerdict(JudgeTransaction(After({kOk, {550, "no"}, {503, "?"}}), {}, false),
                  Fate(Kind::Refused, 550, u"no"_s), false);
    ExpectVerdict(JudgeTransaction(After({kOk, {450, "busy"}, {503, "?"}}), {}, false),
                  Fate(Kind::Later, 450, u"busy"_s), false);
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo, {554, "spam"}}), {}, false),
                  Fate(Kind::Refused, 554, u"spam"_s), false);
}

TEST(VerdictTest, RefusalCountsThoughTheConnectionWasLostBeforeTheNextReply) {
    ExpectVerdict(JudgeTransaction(After({kOk, {550, "no"}}), LostFailure(), false),
                  Fate(Kind::Refused, 550, u"no"_s), false);
}

TEST(VerdictTest, ConnectionLostBeforeTheContentMayBeTriedAgain) {
    ExpectVerdict(JudgeTransaction(After({kOk}), LostFailure(), false),
                  Fate(Kind::Later, ConnectionLost, kLost), true);
    ExpectVerdict(JudgeTransaction(After({{421, "bye"}}), {}, false), Fate(Kind::Later, 421, u"bye"_s), true);
}

TEST(VerdictTest, ConnectionLostAfterTheContentIsInDoubt) {
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo}), LostFailure(), false),
                  Fate(Kind::InDoubt, ConnectionLost, kLost), false);
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo}), kTimeOut, false),
                  Fate(Kind::InDoubt, TimedOut, u"late"_s), false);
}

TEST(VerdictTest, ServerThatClosesDownHasNotTakenTheContent) {
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo, {421, "bye"}}), {}, false),
                  Fate(Kind::Later, 421, u"bye"_s), true);
}

TEST(VerdictTest, ServerCannotHaveWhatWasNotHandedOver) {
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo}), LostFailure(), true),
                  Fate(Kind::Later, ConnectionLost, kLost), true);
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo}), kTimeOut, true),
                  Fate(Kind::Later, TimedOut, u"late"_s), false);
}

TEST(VerdictTest, ServerThatTookTheContentTooEarlyIsNotGivenItAgain) {
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo, kOk}), {}, true),
                  Fate(Kind::Later, ConnectionLost, kLost), false);
}

TEST(VerdictTest, ChunkIsTriedAgainOnlyWhenTheServerCannotHaveIt) {
    const auto chunk = [](const std::vector<Reply> &replies) {
        Transaction transaction({"ed@x.org", "ann@y.org", {}, 7}, true, false);
        for (const Reply &reply : replies)
            transaction.Take(reply);
        return transaction;
    };
    for (const auto &replies : {std::vector<Reply>(), {kOk}, {kOk, kOk}}) {
        ExpectVerdict(JudgeTransaction(chunk(replies), LostFailure(), false),
                      Fate(Kind::InDoubt, ConnectionLost, kLost), false);
        ExpectVerdict(JudgeTransaction(chunk(replies), LostFailure(), true),
                      Fate(Kind::Later, ConnectionLost, kLost), true);
    }
    ExpectVerdict(JudgeTransaction(chunk({kOk, {550, "no"}}), LostFailure(), false),
                  Fate(Kind::Refused, 550, u"no"_s), false);
    ExpectVerdict(JudgeTransaction(chunk({kOk, kOk, kOk}), {}, true),
                  Fate(Kind::Later, ConnectionLost, kLost), false);
}

TEST(VerdictTest, TimeOutIsNotTriedAgain) {
    ExpectVerdict(JudgeTransaction(After({kOk}), kTimeOut, false), Fate(Kind::Later, TimedOut, u"late"_s),
                  false);
}

TEST(VerdictTest, AnswerThatIsNoneIsForLaterAndInDoubtAfterTheContent) {
    const QString text = InvalidReplyFailure().Description;
    ExpectVerdict(JudgeTransaction(After({kGo}), {}, false), Fate(Kind::Later, InvalidReply, text), false);
    ExpectVerdict(JudgeTransaction(After({kOk, kOk, kGo, kGo}), {}, false),
                  Fate(Kind::InDoubt, InvalidReply, text), false);
}

TEST(VerdictTest, WithoutAConnectionNothingWasTried) {
    ExpectVerdict(JudgeConnecting({CannotConnect, u"refused"_s, false}),
                  Fate(Kind::NotTried, CannotConnect, u"refused"_s), false);
    ExpectVerdict(JudgeConnecting(LostFailure()), Fate(Kind::NotTried, ConnectionLost, kLost), true);
}

} // namespace OSSMTP
