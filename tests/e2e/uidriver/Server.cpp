#include "Server.h"

#include "Find.h"
#include "Read.h"
#include "core/Literals.h"

#include <QApplication>
#include <QClipboard>
#include <QHash>
#include <QHostAddress>
#include <QJsonDocument>
#include <QNetworkProxy>

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
        throw Refusal{u"no picture could be written to "_s + file};
    return true;
}

QJsonValue SetClipboard(const QJsonObject &command) {
    QGuiApplication::clipboard()->setText(Text(command, "text"));
    return true;
}

const QHash<QString, Looking> &Lookings() {
    static const QHash<QString, Looking> table{
        {u"windows"_s, [](const QJsonObject &) { return Windows(); }},
        {u"box"_s, [](const QJsonObject &) { return DescribeBox(ModalBox()); }},
        {u"text"_s, [](const QJsonObject &c) { return TextOf(Named(c)); }},
        {u"get"_s, [](const QJsonObject &c) { return PropertyOf(Named(c), Text(c, "property")); }},
        {u"items"_s,
         [](const QJsonObject &c) {
             return ItemsOf(Named(c), c.value(QLatin1String("first")).toInt(0),
                            c.value(QLatin1String("count")).toInt(-1));
         }},
        {u"selected"_s, [](const QJsonObject &c) { return SelectedRowsOf(Named(c)); }},
        {u"grab"_s, Grab},
        {u"clipboard"_s,
         [](const QJsonObject &) { return QJsonValue(QGuiApplication::clipboard()->text()); }},
        {u"copy"_s, SetClipboard},
    };
    return table;
}

const QHash<QString, Doing (*)(const QJsonObject &)> &Doings() {
    static const QHash<QString, Doing (*)(const QJsonObject &)> table{
        {u"click"_s, Click},       {u"clickRow"_s, ClickRow}, {u"type"_s, TypeText},
        {u"setText"_s, EnterText}, {u"keys"_s, PressKeys},    {u"select"_s, SelectEntry},
        {u"drop"_s, DropFiles},    {u"close"_s, CloseWindow}, {u"trigger"_s, ChooseAction},
        {u"answer"_s, AnswerBox},
    };
    return table;
}

void Reply(QTcpSocket &socket, const QJsonObject &command, bool ok, const char *key,
           const QJsonValue &value) {
    const QJsonObject reply{
        {u"id"_s, command.value(QLatin1String("id"))}, {u"ok"_s, ok}, {QLatin1String(key), value}};
    socket.write(QJsonDocument(reply).toJson(QJsonDocument::Compact) + '\n');
    socket.flush();
}

} // namespace

Server::Server(quint16 port, QObject *parent) : QObject(parent) {
    connect(&socket_, &QTcpSocket::readyRead, this, &Server::ReadCommands);
    connect(&socket_, &QTcpSocket::errorOccurred, this,
            [this] { qWarning("uidriver: %s", qPrintable(socket_.errorString())); });
    socket_.setProxy(QNetworkProxy::NoProxy);
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket_.connectToHost(QHostAddress::LocalHost, port);
}

void Server::ReadCommands() {
    while (socket_.canReadLine())
        Obey(QJsonDocument::fromJson(socket_.readLine()).object());
}

void Server::Obey(const QJsonObject &command) {
    try {
        if (const auto make = Doings().value(Text(command, "do")))
            Run(command, make(command));
        else
            Reply(socket_, command, true, "value", Look(command));
    } catch (const Refusal &refusal) {
        Reply(socket_, command, false, "error", refusal.Reason);
    }
}

// Two events in a row: where the first opens a box and waits in it, the second comes in the loop of that box.
void Server::Run(const QJsonObject &command, const Doing &doing) {
    QMetaObject::invokeMethod(this, doing, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this, [this, command] { Reply(socket_, command, true, "value", true); }, Qt::QueuedConnection);
}

QJsonValue Server::Look(const QJsonObject &command) const {
    if (const auto look = Lookings().value(Text(command, "do")))
        return look(command);
    throw Refusal{u"there is no command "_s + Text(command, "do")};
}

} // namespace varlo::e2e
