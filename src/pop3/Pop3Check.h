// One mailbox check from the click to the Pending list: joins the session, the connection and the requests.
#pragma once

#include "core/Session.h"
#include "pop3/MailboxAccount.h"
#include "pop3/Pop3Session.h"
#include "pop3/RequestCapture.h"
#include "pop3/WinsockPOP.h"

#include <QObject>

#include <functional>

namespace varlo {

// Lives as long as the main window. Nothing here traps an error: one that a server or a full disk causes is
// reported and ends the check, and the next click finds everything as after the program's start.
class Pop3Check : public QObject {
    Q_OBJECT

public:
    static constexpr quint16 kPort = kPop3Port;

    // `openPreferences` shows the preferences window and returns when it is closed. `port` is another one
    // only where a test's server listens: without encryption the port among the preferences is not consulted.
    // `askTrust` shows a certificate that nobody vouches for; without it, or without a yes, the check fails.
    Pop3Check(Session &session, PendingDoor pending, std::function<void()> openPreferences,
              quint16 port = kPort, net::AskTrust askTrust = {}, QObject *parent = nullptr);

    // The click on "E-mail Account": reads the preferences and begins a check; one that is under way is
    // dropped. Asks for the preferences instead when they name no server, user or password.
    void Start();

private:
    template<typename Event> void Handle(Event &&event);
    void Begin();
    void WinsockPOP_DataArrival(const QByteArray &chunk);
    void WinsockPOP_Error(int Number, const QString &Description);
    void WinsockPOP_Encrypted();
    void WinsockPOP_Distrusted(const net::Certificate &certificate, int Number, const QString &Description);
    void CarryOut(const Pop3Effects &effects);
    void CarryOut(const Pop3Effect &effect);
    void Examine(const QString &text);

    Session &session_;
    const PendingDoor pending_;
    const std::function<void()> openPreferences_;
    const quint16 port_;
    const net::AskTrust askTrust_;
    net::Endpoint endpoint_; // of the check under way
    Pop3Session pop3_;
    Requests requests_;
    quint64 check_ = 0; // number of the check under way
    WinsockPOP WinsockPOP_;
};

} // namespace varlo
