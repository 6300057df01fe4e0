// The component joined to a fake server, with what its events reported.
#pragma once

#include "core/Literals.h"
#include "smtp/SMTP.h"
#include "support/FakeSmtpServer.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace varlo {

inline void PrintTo(const Outcome &outcome, std::ostream *out) {
    *out << "kind " << static_cast<int>(outcome.Result) << ' ' << outcome.Number << ' '
         << outcome.Description.toStdString() << (outcome.IsLocal ? " (local)" : "");
}

} // namespace varlo

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

// What is set counts for the next mail; another account makes another component.
struct Sender {
    explicit Sender(int port) : Account{u"127.0.0.1"_s, port, u"\"The Editor\" <editor@example.org>"_s} {}
    explicit Sender(const FakeSmtpServer &server) : Sender(server.Port()) {}

    // The component for the account as it is now.
    OSSMTP::SMTP &Component() {
        if (smtp_ && made_ == Account)
            return *smtp_;
        made_ = Account;
        smtp_ = std::make_unique<OSSMTP::SMTP>(Account);
        QObject::connect(smtp_.get(), &OSSMTP::SMTP::ErrorSMTP, [this](int number, const QString &text) {
            Errors.push_back({number, text});
        });
        QObject::connect(smtp_.get(), &OSSMTP::SMTP::Finished,
                         [this](const Outcome &outcome) { Outcomes.push_back(outcome); });
        return *smtp_;
    }

    // Begins to send to a mailbox as it stands in a To header.
    void Submit(const QString &mailbox) {
        if (!shared_ || *shared_ != Message)
            shared_ = std::make_shared<MailMessage>(Message);
        Component().SetTimeout(Timeout);
        const std::size_t before = Outcomes.size();
        smtp_->Submit({shared_, mailbox});
        EXPECT_EQ(Outcomes.size(), before) << "never from within Submit";
    }

    // Sends and waits; true when the server took it.
    bool Send(const QString &mailbox) {
        const std::size_t before = Outcomes.size();
        Submit(mailbox);
        EXPECT_TRUE(WaitUntil([&] { return Outcomes.size() > before; }));
        return Outcomes.size() > before && Last().Result == Outcome::Kind::Sent;
    }
    bool SendTo(const QString &address) { return Send(u"\"Readers\" <%1>"_s.arg(address)); }

    const Outcome &Last() const { return Outcomes.back(); }
    // Ends the component.
    void Leave() { smtp_.reset(); }

    MailAccount Account;
    MailMessage Message{u"News"_s, u"Hello\r\n"_s, {}};
    int Timeout = 60000;
    SmtpErrors Errors;
    std::vector<Outcome> Outcomes;

private:
    MailAccount made_;
    std::shared_ptr<const MailMessage> shared_;
    std::unique_ptr<OSSMTP::SMTP> smtp_;
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

} // namespace varlo::test
