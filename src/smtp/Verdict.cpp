#include "smtp/Verdict.h"

namespace OSSMTP {

namespace {

using Kind = varlo::Outcome::Kind;

varlo::Outcome Told(Kind kind, const Failure &failure) {
    return {kind, failure.Number, failure.Description, false, failure.IsOfAccount};
}

// What ended a transaction that has no refusal.
MaybeFailure EndOf(const Transaction &transaction, const MaybeFailure &failure, bool cut) {
    using State = Transaction::State;
    if (failure)
        return failure;
    if (transaction.Now() == State::Confused)
        return InvalidReplyFailure();
    if (transaction.Now() == State::Lost || cut)
        return LostFailure();
    return {};
}

} // namespace

Verdict JudgeConnecting(const Failure &failure) {
    return {Told(Kind::NotTried, failure), failure.IsLost};
}

// A server that says 421 has not taken the message, whatever it was given; one that was not given all of it
// cannot have. Only in these cases, and before its content, may a message be sent again.
Verdict JudgeTransaction(const Transaction &transaction, const MaybeFailure &failure, bool cut) {
    const bool begun = transaction.DataBegun();
    if (const auto &answer = transaction.Answer())
        return {
            {answer->Code >= 500 ? Kind::Refused : Kind::Later, answer->Code, answer->Description(), false},
            transaction.Now() == Transaction::State::Lost};
    if (const MaybeFailure end = EndOf(transaction, failure, cut)) {
        const bool isTaken = transaction.Now() == Transaction::State::Sent; // too early, but who knows
        return {Told(begun && !cut ? Kind::InDoubt : Kind::Later, *end),
                end->IsLost && (!begun || (cut && !isTaken))};
    }
    return {};
}

} // namespace OSSMTP
