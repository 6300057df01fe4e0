// The component joined to a fake server, with what its event reported.
#pragma once

#include "core/Literals.h"
#include "smtp/SMTP.h"
#include "support/FakeSmtpServer.h"

#include <QElapsedTimer>
#include <QTimer>

#include <ostream>
#include <vector>

namespace varlo::test {

struct SmtpError {
    int Number;
    QString Description;

    bool operator==(const SmtpError &) const = default;
};

inline void PrintTo(const SmtpError &error, std::ostream *out) {
    *out << error.Number << ' ' << error.Description.toStdString();
}

using SmtpErrors = std::vector<SmtpError>;

struct Sender {
    explicit Sender(int port) {
        Smtp.SetServer(u"127.0.0.1"_s);
        Smtp.SetPort(port);
        Smtp.SetSender(u"\"The Editor\" <editor@example.org>"_s);
        Smtp.SetSubject(u"News"_s);
        Smtp.SetMessageText(u"Hello\r\n"_s);
        QObject::connect(&Smtp, &OSSMTP::SMTP::ErrorSMTP, [this](int number, const QString &text) {
            Errors.push_back({number, text});
        });
    }
    explicit Sender(const FakeSmtpServer &server) : Sender(server.Port()) {}

    bool SendTo(const QString &address) {
        Smtp.SetRecipient(u"\"Readers\" <%1>"_s.arg(address));
        return Smtp.Send();
    }

    OSSMTP::SMTP Smtp;
    SmtpErrors Errors;
};

// Who got mail, in order.
inline QByteArrayList Reached(const FakeSmtpServer &server) {
    QByteArrayList all;
    for (const SmtpMail &mail : server.Mails())
        all += mail.Recipients;
    return all;
}

// What the client said after EHLO.
inline QByteArrayList ClientLines(const FakeSmtpServer &server) {
    QByteArrayList lines;
    for (const QByteArray &line : server.Dialogue())
        if (line.startsWith("C: ") && !line.startsWith("C: EHLO"))
            lines << line.mid(3);
    return lines;
}

// Measures how long the event loop went without turning.
class Heartbeat : public QObject {
public:
    Heartbeat() {
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, [this] { Beat(); });
        timer_.start(5);
        since_.start();
    }
    int Beats = 0;
    qint64 LongestGap = 0; // ms

private:
    void Beat() {
        ++Beats;
        LongestGap = std::max(LongestGap, since_.restart());
    }
    QTimer timer_;
    QElapsedTimer since_;
};

} // namespace varlo::test
