// What became of a mail, from what its transaction and its connection came to.
#pragma once

#include "core/Mailer.h"
#include "smtp/Failure.h"
#include "smtp/Transaction.h"

namespace OSSMTP {

struct Verdict {
    varlo::Outcome Fate;
    bool MayRepeat = false; // on a new connection: the server was not given the message
};

// The connection did not come to the point where the recipient is named.
Verdict JudgeConnecting(const Failure &failure);

// A transaction that has ended by itself or by `failure`. `cut`: not all of the message was handed over, so
// the server cannot have it.
Verdict JudgeTransaction(const Transaction &transaction, const MaybeFailure &failure, bool cut);

} // namespace OSSMTP
