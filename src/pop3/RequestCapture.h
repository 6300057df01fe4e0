// Moving the requests of a mailbox check to the Pending list.
#pragma once

#include "core/Session.h"
#include "pop3/Recognition.h"

#include <functional>

namespace varlo {

// The Pending list and the main window around it, as far as a capture uses them. An entry is "+" or "-" and
// the address. Every member must be set; each may throw RuntimeError.
struct PendingDoor {
    std::function<bool(const QString &address)> IsValid;  // without a box for a bad address
    std::function<bool(const QString &entry)> IsNew;      // tells the operator of a duplicate
    std::function<void(const QString &entry)> AddPending; // at the end of the list
    std::function<void()> SelectLast;                     // makes the last entry of the list the current one
    std::function<void()> UpdateControls;                 // counts and enabled states of the main window
    std::function<bool()> Bypass;                         // the operator wants no waiting on the Pending list
    std::function<void()> ProcessPending;                 // as the button does; may run an event loop
};

// Puts the sender of each request on the Pending list, subscribers first, reports "POP3 check complete (+3,
// -1)" and processes the list when it is bypassed. Throws RuntimeError: 5 or 6 for a sender that cannot be
// cut. What was added before stays added, the rest of the capture is skipped.
void CaptureRequests(Session &session, const Requests &requests, const PendingDoor &pending);

} // namespace varlo
