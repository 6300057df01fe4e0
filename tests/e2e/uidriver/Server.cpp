#include "Server.h"

#include "Find.h"
#include "Read.h"

#include <QApplication>
#include <QClipboard>
#include <QHash>
#include <QJsonDocument>

namespace varlo::e2e {

namespace {

using Looking = QJsonValue (*)(const QJsonObject &);

QString Text(const QJsonObject &command, const char *key) {
    return command.value(QLatin1String(key)).toString();
}

QWidget *Named(const QJsonObject &command) {
    return FindWidget(Text(command, "name"), Text(command, "window"));
}

// Without a name: the open box.
QJsonValue Grab(const QJsonObject &command) {
    const QString file = Text(command, "file");
    QWidget *widget = command.contains(QLatin1String("name")) ? Named(command) : ModalBox();
    if (!widget->grab().save(file))
        throw Refusal{QStringLiteral("no picture could be written to ") + file};
    return true;
}

QJsonValue SetClipboard(const QJsonObject &command) {
    QGuiApplication::clipboard()->setText(Text(command, "text"));
    return true;
}

const QHash<QString, Looking> &Lookings() {
    static const QHash<QString, Looking> table{
        {QStringLiteral("windows"), [](const QJsonObject &) { return Windows(); }},
        {QStringLiteral("box"), [](const QJsonObject &) { return DescribeBox(ModalBox()); }},
        {QStringLiteral("text"), [](const QJsonObject &c) { return TextOf(Named(c)); }},
        {QStringLiteral("get"),
         [](const QJsonObject &c) { return PropertyOf(Named(c), Text(c, "property")); }},
        {QStringLiteral("items"),
         [](const QJsonObject &c) {
             return ItemsOf(Named(c), c.value(QLatin1String("first")).toInt(0),
                            c.value(QLatin1String("count")).toInt(-1));
         }},
        {QStringLiteral("selected"), [](const QJsonObject &c) { return SelectedRowsOf(Named(c)); }},
        {QStringLiteral("grab"), Grab},
        {QStringLiteral("clipboard"),
         [](const QJsonObject &) { return QJsonValue(QGuiApplication::clipboard()->text()); }},
        {QStringLiteral("copy"), SetClipboard},
    };
    return table;
}

const QHash<QString, Doing (*)(const QJsonObject &)> &Doings() {
    static const QHash<QString, Doing (*)(const QJsonObject &)> table{
        {QStringLiteral("click"), Click},          {QStringLiteral("clickRow"), ClickRow},
        {QStringLiteral("type"), TypeText},        {QStringLiteral("setText"), EnterText},
        {QStringLiteral("keys"), PressKeys},       {QStringLiteral("select"), SelectEntry},
        {QStringLiteral("drop"), DropFiles},       {QStringLiteral("close"), CloseWindow},
        {QStringLiteral("trigger"), ChooseAction}, {QStringLiteral("answer"), AnswerBox},
    };
    return table;
}

void Reply(QLocalSocket *socket, const QJsonObject &command, bool ok, const char *key,
           const QJsonValue &value) {
    const QJsonObject reply{{QStringLiteral("id"), command.value(QLatin1String("id"))},
                            {QStringLiteral("ok"), ok},
                            {QLatin1String(key), value}};
    socket->write(QJsonDocument(reply).toJson(QJsonDocument::Compact) + '\n');
    socket->flush();
}

} // namespace

Server::Server(const QString &path, QObject *parent) : QObject(parent) {
    connect(&server_, &QLocalServer::newConnection, this, &Server::TakeConnection);
    if (!server_.listen(path))
        qWarning("uidriver: %s", qPrintable(server_.errorString()));
}

void Server::TakeConnection() {
    QLocalSocket *socket = server_.nextPendingConnection();
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] { ReadCommands(socket); });
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
}

void Server::ReadCommands(QLocalSocket *socket) {
    while (socket->canReadLine())
        Obey(socket, QJsonDocument::fromJson(socket->readLine()).object());
}

void Server::Obey(QLocalSocket *socket, const QJsonObject &command) {
    try {
        if (const auto make = Doings().value(Text(command, "do")))
            Run(socket, command, make(command));
        else
            Reply(socket, command, true, "value", Look(command));
    } catch (const Refusal &refusal) {
        Reply(socket, command, false, "error", refusal.Reason);
    }
}

// Two events in a row: where the first opens a box and waits in it, the second comes in the loop of that box.
void Server::Run(QLocalSocket *socket, const QJsonObject &command, const Doing &doing) {
    QMetaObject::invokeMethod(this, doing, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this,
        [socket = QPointer(socket), command] {
            if (socket)
                Reply(socket, command, true, "value", true);
        },
        Qt::QueuedConnection);
}

QJsonValue Server::Look(const QJsonObject &command) const {
    if (const auto look = Lookings().value(Text(command, "do")))
        return look(command);
    throw Refusal{QStringLiteral("there is no command ") + Text(command, "do")};
}

} // namespace varlo::e2e
