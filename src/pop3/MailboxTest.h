// The test of a mailbox: connects, encrypts, signs in, asks how many messages there are, leaves.
#pragma once

#include "net/Connection.h"
#include "net/ServerTest.h"
#include "pop3/MailboxAccount.h"

namespace varlo {

class MailboxTest : public net::ServerTest {
    Q_OBJECT

public:
    // What is asked for and how long an answer may take, in milliseconds.
    MailboxTest(Pop3Account account, net::Endpoint endpoint, int patience = 60000, QObject *parent = nullptr);

    void Start() override;

private:
    enum class Awaited { Greeting, Stls, User, Pass, Stat, Quit };

    void Connection_Opened();
    void Connection_Encrypted();
    void Connection_Arrived(const QByteArray &bytes);
    void Connection_Ended(const net::Failure &failure);
    void Take(const QByteArray &reply);
    void SignIn();
    void Say(Awaited next, const QString &command, const QString &shown = {});
    void End(const net::TestResult &result);
    QString Masked(QString text) const;

    const Pop3Account account_;
    const net::Endpoint endpoint_;
    const int patience_;
    net::Connection connection_;
    net::Certificate certificate_;
    Awaited awaited_ = Awaited::Greeting;
    QByteArray line_; // what has arrived of it
};

} // namespace varlo
