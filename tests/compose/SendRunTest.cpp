#include "compose/SendRun.h"

#include "compose/SendTexts.h"
#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <random>

namespace varlo {

void PrintTo(const SendStep &step, std::ostream *out) {
    *out << "step " << static_cast<int>(step.Then) << ' ' << step.Number << " [" << step.Status.toStdString()
         << "] [" << (step.Pending ? step.Pending->Entry() : QString()).toStdString() << "] ["
         << step.Text.toStdString() << ']';
}

namespace {

using Next = SendStep::Next;

PendingRequest Removal(const QString &address) {
    return {RequestKind::Unsubscribe, address, RequestOrigin::FailedDelivery};
}

Outcome Refused(int number) {
    return {Outcome::Kind::Refused, number, u"no\r\nway"_s};
}

// ---- One dialogue after the other

TEST(SendRunTest, ARecipientIsAnnouncedThenSubmitted) {
    SendRun run({u"a@x.test"_s});
    EXPECT_EQ(run.GoOn(), (SendStep{u"Sending message 1/1"_s, {}, Next::Breathe}));
    EXPECT_EQ(run.GoOn(), (SendStep{{}, {}, Next::Submit, u"a@x.test"_s}));
    EXPECT_EQ(run.Finished({}), (SendStep{{}, {}, Next::GoOn}));
    EXPECT_EQ(run.GoOn(), (SendStep{{}, {}, Next::Complete}));
    EXPECT_EQ(run.Index(), 1);
}

TEST(SendRunTest, ADuplicateYieldsAndIsSkipped) {
    SendRun run({u"a@x.test"_s, u"A@X.test"_s, u"b@x.test"_s});
    run.GoOn();
    run.GoOn();
    run.Finished({});
    EXPECT_EQ(run.GoOn(), (SendStep{u"Duplicate recipient [A@X.test] ignored"_s, {}, Next::Yield}));
    EXPECT_EQ(run.GoOn(), (SendStep{u"Sending message 3/3"_s, {}, Next::Breathe}));
    EXPECT_EQ(run.Duplicates(), 1);
}

TEST(SendRunTest, AFailureIsToldAndMarkedAndTheNextHasHisTurn) {
    SendRun run({u"a@x.test"_s, u"b@x.test"_s});
    run.GoOn();
    run.GoOn();
    EXPECT_EQ(run.Finished(Refused(550)),
              (SendStep{u"SMTP error 550 - no way"_s, Removal(u"a@x.test"_s), Next::GoOn}));
    EXPECT_EQ(run.GoOn(), (SendStep{u"Sending message 2/2"_s, {}, Next::Breathe}));
    EXPECT_EQ(run.Failed(), 1);
}

TEST(SendRunTest, ATimeOutIsToldAndNeverMarked) {
    SendRun run({u"a@x.test"_s});
    run.GoOn();
    run.GoOn();
    EXPECT_EQ(run.Finished({Outcome::Kind::InDoubt, 12002, u"timed out"_s}),
              (SendStep{u"SMTP error 12002 - timed out"_s, {}, Next::GoOn}));
    EXPECT_EQ(run.Failed(), 0);
}

TEST(SendRunTest, AFaultOfThisMachineEndsItAndIsNoFaultOfTheRecipient) {
    SendRun run({u"a@x.test"_s, u"b@x.test"_s});
    run.GoOn();
    run.GoOn();
    EXPECT_EQ(run.Finished({Outcome::Kind::NotTried, 53, u"File not found"_s, true}),
              (SendStep{{}, {}, Next::Fail, u"File not found"_s, 53}));
    EXPECT_EQ(run.Index(), 0);
    EXPECT_EQ(run.Failed(), 0);
}

TEST(SendRunTest, NobodyMakesOneStep) {
    SendRun run;
    EXPECT_EQ(run.GoOn(), (SendStep{{}, {}, Next::Complete}));
}

TEST(SendRunTest, AnOutcomeThatNobodyAwaitsIsNobodys) {
    SendRun run({u"a@x.test"_s});
    EXPECT_EQ(run.Finished(Refused(550)), SendStep());
    run.GoOn();
    EXPECT_EQ(run.Finished(Refused(550)), SendStep());
    EXPECT_EQ(run.GoOn(), (SendStep{{}, {}, Next::Submit, u"a@x.test"_s}));
    EXPECT_EQ(run.GoOn(), SendStep()) << "an answer is awaited, not a turn";
    run.Finished({});
    EXPECT_EQ(run.Finished(Refused(550)), SendStep());
    EXPECT_EQ(run.Failed(), 0);
}

// ---- What holds for every list and every fate

// A send on random recipients and fates, with strangers' events thrown in; what must hold is checked at every
// step.
class AnySend {
public:
    explicit AnySend(unsigned seed) : random_(seed), run_(MakeRecipients()) {}

    void Play() {
        SendStep step = run_.GoOn();
        while (step.Then != Next::Complete) {
            ASSERT_LE(++steps_, 4 * recipients_.size() + 1) << "it does not end";
            step = Answer(step);
        }
        CheckEnd();
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    QStringList MakeRecipients() {
        for (int i = Below(40); i > 0; --i)
            recipients_ << (Below(2) ? u"a%1@x.test"_s : u"A%1@X.test"_s).arg(Below(15));
        return recipients_;
    }
    Outcome AnyOutcome() {
        const int numbers[] = {450, 550, 12002, 12029, 12030};
        if (Below(2))
            return {};
        return {static_cast<Outcome::Kind>(1 + Below(4)), numbers[Below(5)], u"words"_s};
    }
    SendStep Answer(const SendStep &step) {
        EXPECT_EQ(step.Then == Next::Yield || step.Then == Next::Breathe,
                  !step.Status.isEmpty() && step.Then != Next::GoOn)
            << "a turn begins with a line";
        if (step.Then != Next::Submit) {
            EXPECT_EQ(run_.Finished(Refused(550)), SendStep());
            return run_.GoOn();
        }
        EXPECT_EQ(step.Text, recipients_.at(run_.Index()));
        EXPECT_FALSE(submitted_.contains(step.Text.toLower())) << "nobody gets it twice";
        submitted_ << step.Text.toLower();
        return Meet(AnyOutcome());
    }
    SendStep Meet(const Outcome &outcome) {
        const QString address = recipients_.at(run_.Index());
        const bool failed = outcome.Result != Outcome::Kind::Sent;
        const bool counts = failed && outcome.Number != 12002;
        failed_ += counts;
        const SendStep step = run_.Finished(outcome);
        EXPECT_EQ(step.Status, failed ? SmtpErrorText(outcome.Number, outcome.Description) : QString());
        EXPECT_EQ(step.Pending ? step.Pending->Entry() : QString(), counts ? u'-' + address : QString());
        return step;
    }
    void CheckEnd() {
        QStringList distinct;
        for (const QString &address : recipients_)
            if (!distinct.contains(address.toLower()))
                distinct << address.toLower();
        EXPECT_EQ(submitted_, distinct) << "everybody once, in order";
        EXPECT_EQ(run_.Index(), recipients_.size());
        EXPECT_EQ(run_.Duplicates(), recipients_.size() - distinct.size());
        EXPECT_EQ(run_.Failed(), failed_);
    }

    std::mt19937 random_;
    QStringList recipients_;
    SendRun run_;
    QStringList submitted_;
    qsizetype failed_ = 0;
    qsizetype steps_ = 0;
};

TEST(SendRunTest, EverybodyHasOneTurnWhateverBecomesOfTheOthers) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        AnySend(seed).Play();
    }
}

} // namespace
} // namespace varlo
