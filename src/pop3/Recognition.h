// Which downloaded messages are requests, and the requests of one check.
#pragma once

#include "pop3/clsMessages.h"

namespace varlo {

enum class Recognised { Subscribe, Unsubscribe, Unrelated };

// The requests of one mailbox check, in download order, each kind keyed by Message-ID.
struct Requests {
    clsMessages colSubscribe;
    clsMessages colUnsubscribe;
};

// Tells what the message asks for, by its whole subject in any letter case, and keeps a request in
// `requests`. Throws RuntimeError 457 for a second request of one kind with the same Message-ID.
Recognised Recognise(const clsMessage &message, Requests &requests);

} // namespace varlo
