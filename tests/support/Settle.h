// For tests that nothing happens: when everything that is under way has arrived.
#pragma once

#include "support/WaitUntil.h"

#include <QAbstractEventDispatcher>
#include <QTcpServer>
#include <QTcpSocket>

namespace varlo::test {

// Returns when whatever sockets of this machine had sent has been handled, and all that followed from it: a byte is
// sent behind it, over a connection of its own, and when that has come the events are handled until there are none.
// Timers that are not due yet are not waited for.
inline void Settle() {
    QTcpServer server;
    QTcpSocket client;
    server.listen(QHostAddress::LocalHost);
    client.connectToHost(QHostAddress::LocalHost, server.serverPort());
    WaitUntil([&] { return server.hasPendingConnections(); });
    QTcpSocket *peer = server.nextPendingConnection();
    client.write(".");
    WaitUntil([&] { return peer && peer->bytesAvailable() > 0; });
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

} // namespace varlo::test
