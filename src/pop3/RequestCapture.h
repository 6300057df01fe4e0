// Moving the requests of a mailbox check to the Pending list.
#pragma once

#include "core/PendingRequest.h"
#include "core/Session.h"
#include "pop3/Recognition.h"

#include <functional>

namespace varlo {

// The Pending list and the main window around it, as far as a capture uses them. Every member must be set;
// each may throw RuntimeError.
struct PendingDoor {
    std::function<bool(const PendingRequest &request)> Offer; // true when it was added
    std::function<void()> SelectLast;                         // makes the last entry the current one
    std::function<bool()> Bypass;         // the operator wants no waiting on the Pending list
    std::function<void()> ProcessPending; // as the button does; may run an event loop
};

// Puts the sender of each request on the Pending list, subscribers first, reports "POP3 check complete (+3,
// -1)" and processes the list when it is bypassed. Never throws: a sender that cannot be cut or finds no room
// is told by name, with an error box, when all else is done.
void CaptureRequests(Session &session, const Requests &requests, const PendingDoor &pending);

} // namespace varlo
