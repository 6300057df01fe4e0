// Takes commands over a local socket and plays the operator of the program that it was loaded into.
#pragma once

#include "Act.h"

#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>

namespace varlo::e2e {

// One command a line, as JSON: {"id": 1, "do": "click", "name": "cmdGo"}; one reply a line: {"id": 1, "ok":
// true, "value": ...} or {"id": 1, "ok": false, "error": "cmdGo is disabled"}. What the operator does is run
// from the event loop, and its reply comes when it is done, or as soon as it waits for the operator in a box
// of its own.
class Server : public QObject {
    Q_OBJECT

public:
    // Listens at `path` while it lives.
    Server(const QString &path, QObject *parent);

private:
    void TakeConnection();
    void ReadCommands(QLocalSocket *socket);
    void Obey(QLocalSocket *socket, const QJsonObject &command);
    void Run(QLocalSocket *socket, const QJsonObject &command, const Doing &doing);
    QJsonValue Look(const QJsonObject &command) const;

    QLocalServer server_;
};

} // namespace varlo::e2e
