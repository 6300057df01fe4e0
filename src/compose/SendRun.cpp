#include "compose/SendRun.h"

#include "compose/SendTexts.h"
#include "core/Literals.h"

namespace varlo {

using Next = SendStep::Next;

namespace {

constexpr int kTimedOut = 12002;

} // namespace

SendRun::SendRun(QStringList recipients) : recipients_(std::move(recipients)) {
    duplicates_.Reserve(recipients_.size());
}

SendStep SendRun::GoOn() {
    if (state_ == State::Announced) {
        state_ = State::Submitted;
        return {{}, {}, Next::Submit, recipients_.at(index_)};
    }
    if (state_ == State::Submitted)
        return {};
    if (state_ == State::Skipped)
        ++index_;
    return BeginTurn();
}

// A duplicate yields too: a list may hold nothing else for a long time.
SendStep SendRun::BeginTurn() {
    state_ = State::Between;
    if (index_ == Count())
        return {{}, {}, Next::Complete};
    const QString &address = recipients_.at(index_);
    if (!duplicates_.IsNew(address)) {
        state_ = State::Skipped;
        return {DuplicateCheck::StatusText(address), {}, Next::Yield};
    }
    state_ = State::Announced;
    return {SendingText(index_, Count()), {}, Next::Breathe};
}

SendStep SendRun::Finished(const Outcome &outcome) {
    if (state_ != State::Submitted)
        return {};
    if (outcome.IsLocal)
        return {{}, {}, Next::Fail, outcome.Description, outcome.Number};
    SendStep step{{}, {}, Next::GoOn};
    if (outcome.Result != Outcome::Kind::Sent)
        step = SMTP_ErrorSMTP(outcome.Number, outcome.Description);
    state_ = State::Between;
    ++index_;
    return step;
}

// Wanted: a time-out says nothing about the address, so it is logged and never counts as a failure.
SendStep SendRun::SMTP_ErrorSMTP(int Number, const QString &Description) {
    SendStep step{SmtpErrorText(Number, Description), {}, Next::GoOn};
    if (Number != kTimedOut) {
        ++failed_;
        step.Pending = {RequestKind::Unsubscribe, recipients_.at(index_), RequestOrigin::FailedDelivery};
    }
    return step;
}

} // namespace varlo
