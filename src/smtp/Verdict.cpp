#include "smtp/Verdict.h"

namespace OSSMTP {

namespace {

using Kind = varlo::Outcome::Kind;

varlo::Outcome Told(Kind kind, const Failure &failure) {
    return {kind, failure.Number, failure.Description, false};
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

Verdict JudgeTransaction(const Transaction &transaction, const MaybeFailure &failure, bool cut) {
    const bool begun = transaction.DataBegun();
    if (const auto &answer = transaction.Answer())
        return {
            {answer->Code >= 500 ? Kind::Refused : Kind::Later, answer->Code, answer->Description(), false},
            transaction.Now() == Transaction::State::Lost && !begun};
    if (const MaybeFailure end = EndOf(transaction, failure, cut))
        return {Told(begun && !cut ? Kind::InDoubt : Kind::Later, *end), end->IsLost && !begun};
    return {};
}

} // namespace OSSMTP
