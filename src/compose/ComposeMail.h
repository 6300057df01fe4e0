// What the compose window sends with: the SMTP component and the engine on top of it.
#pragma once

#include "compose/SendEngine.h"
#include "smtp/SMTP.h"

namespace varlo {

// Held together by the window and by the send that runs, so that a window destroyed in the middle of a send
// takes nothing away from under it.
struct ComposeMail {
    ComposeMail(Session &session, std::function<void(const QString &entry)> addPending)
        : Engine(session, Smtp, std::move(addPending)) {}

    OSSMTP::SMTP Smtp;
    SendEngine Engine;
};

} // namespace varlo
