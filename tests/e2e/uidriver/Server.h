// Takes commands over a socket on loopback and plays the operator of the program that it was loaded into.
#pragma once

#include "Act.h"

#include <QJsonObject>
#include <QObject>
#include <QTcpSocket>

namespace varlo::e2e {

// One command a line, as JSON: {"id": 1, "do": "click", "name": "cmdGo"}; one reply a line: {"id": 1, "ok":
// true, "value": ...} or {"id": 1, "ok": false, "error": "cmdGo is disabled"}. What the operator does is run
// from the event loop, and its reply comes when it is done, or as soon as it waits for the operator in a box
// of its own.
class Server : public QObject {
    Q_OBJECT

public:
    // Takes the commands of whoever listens at `port` while it lives.
    Server(quint16 port, QObject *parent);

private:
    void ReadCommands();
    void Obey(const QJsonObject &command);
    void Run(const QJsonObject &command, const Doing &doing);
    QJsonValue Look(const QJsonObject &command) const;

    QTcpSocket socket_;
};

} // namespace varlo::e2e
