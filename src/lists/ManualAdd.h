// What the add buttons beside the address box do.
#pragma once

#include "core/PendingRequest.h"
#include "core/Session.h"

#include <functional>

namespace varlo {

class ListStore;

// Checks `text` and puts it on the Pending list with its sign; then runs `process` when given ("Bypass" is
// ticked). True when the address box is to be emptied, false when the text stays for correction. Failures are
// reported as "Main.cmdEmailAdd" and the routine carries on.
bool AddTypedAddress(ListStore &lists, const QString &text, RequestKind kind,
                     const std::function<void()> &process);

// Tells in a box whether `text` is a valid address.
void ReportValidity(Session &session, const QString &text);

} // namespace varlo
