// Waiting a moment for a socket, without the event loop: for servers that answer sooner than the loop turns.
#pragma once

#include <QtGlobal>

namespace varlo {

// Long enough for the answer of a server on the same machine or network, in milliseconds.
constexpr int kShortWait = 2;

// True when `socket` becomes readable (or, when asked, writable), or fails, within `milliseconds`. A wait
// keeps its processor busy for its first moment, so this is for answers that are due, not for silence.
bool PollSocket(qintptr socket, bool orWritable, int milliseconds);

} // namespace varlo
