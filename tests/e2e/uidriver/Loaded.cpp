// Starts the server in a program into which this library was loaded by LD_PRELOAD, or linked where there is no such
// thing. The program itself holds no code for tests and knows nothing of it.

#include "Server.h"

#include <QApplication>

#include <cstdlib>

namespace {

void StartServer() {
    const auto port = static_cast<quint16>(qEnvironmentVariableIntValue("VARLO_UIDRIVER_PORT"));
    if (port == 0)
        return;
    // What the program starts in its turn, a browser or a mail program, is not to be driven.
    qunsetenv("LD_PRELOAD");
    qunsetenv("VARLO_UIDRIVER_PORT");
    // The system's own choosers cannot be played, Qt's can.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // The application is still being made; its windows can be looked at from the first event on.
    QMetaObject::invokeMethod(
        qApp, [port] { new varlo::e2e::Server(port, qApp); }, Qt::QueuedConnection);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(StartServer)
