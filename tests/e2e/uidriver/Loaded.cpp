// Starts the server in a program into which this library was loaded by LD_PRELOAD. The program itself holds
// no code for tests and knows nothing of it.

#include "Server.h"

#include <QApplication>

#include <cstdlib>

namespace {

void StartServer() {
    const QString path = qEnvironmentVariable("VARLO_UIDRIVER_SOCKET");
    if (path.isEmpty())
        return;
    // What the program starts in its turn, a browser or a mail program, is not to be driven.
    qunsetenv("LD_PRELOAD");
    qunsetenv("VARLO_UIDRIVER_SOCKET");
    // The application is still being made; its windows can be looked at from the first event on.
    QMetaObject::invokeMethod(
        qApp, [path] { new varlo::e2e::Server(path, qApp); }, Qt::QueuedConnection);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(StartServer)
