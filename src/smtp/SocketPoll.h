// The one system call of this room: waiting a moment for a socket, without the event loop.
#pragma once

#include <QtGlobal>

namespace OSSMTP {

// True when `socket` becomes readable (or, when asked, writable), or fails, within `milliseconds`.
bool PollSocket(qintptr socket, bool orWritable, int milliseconds);

} // namespace OSSMTP
