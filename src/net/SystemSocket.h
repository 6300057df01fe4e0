// Bytes straight to and from the system's socket, for connections whose bytes nobody has to change on the way.
#pragma once

#include <QtGlobal>

namespace varlo::net {

// Bytes taken; 0 when it takes none now, -1 when it never will again. Never waits.
qint64 SendNow(qintptr socket, const char *bytes, qint64 size);

// Bytes that were there; 0 when there were none, also when there will be none. Never waits.
qint64 ReceiveNow(qintptr socket, char *bytes, qint64 size);

} // namespace varlo::net
