// The SMTP component: one mail in, its fate out, over one connection that is kept.
#pragma once

#include "core/Mailer.h"
#include "net/Trouble.h"

#include <memory>

namespace OSSMTP {

// Error numbers of the component. A refusal by the server is reported with its three-digit reply code
// instead.
using Error = varlo::net::MailError;
using enum varlo::net::MailError;

// What a mail needs (server, port, sender; subject, text, attachments; recipient; the sending itself) comes
// with the account and with Submit, and a failure goes out by ErrorSMTP too. The encoded form of a message is
// kept while the mails share it, and used again unless an attachment has changed.
//
// Promises: one connection is kept for many mails, and a new one is made when the server closed it or said
// something unasked. A mail is tried a second time only when the server cannot have it (the connection broke
// before the end of the message was written, or the server said that it closes down), so nobody gets it twice.
// Signing in, where the account asks for it, comes before anything else; no text that leaves here holds the
// secret.
class SMTP : public varlo::Mailer {
    Q_OBJECT

public:
    explicit SMTP(const varlo::MailAccount &account, QObject *parent = nullptr);
    ~SMTP() override; // says QUIT to a server that is still connected, without waiting for the answer

    void Submit(const varlo::Mail &mail) override;

    // How long anything may take that the server is waited for, instead of 30 s for the connection, ten minutes
    // for the word on a message and 60 s for all else. Counts from the next mail on.
    void SetTimeout(int milliseconds);
    // How long an answer is outstanding until Waiting tells of it; 5,000 ms unless set.
    void SetPatience(int milliseconds);

Q_SIGNALS:
    // Before Finished, for a mail that did not go out by the server's fault or its recipient's.
    void ErrorSMTP(int Number, const QString &Description);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace OSSMTP
