#include "smtp/BlockingMailer.h"

#include "core/RuntimeError.h"

#include <QPointer>

#include <utility>

namespace OSSMTP {

using varlo::Outcome;

namespace {

Outcome::Kind KindOf(int number) {
    if (number == CannotConnect || number == NameNotResolved)
        return Outcome::Kind::NotTried;
    if (number >= 400 && number < 500)
        return Outcome::Kind::Later;
    return number < 600 ? Outcome::Kind::Refused : Outcome::Kind::InDoubt;
}

} // namespace

BlockingMailer::BlockingMailer(const varlo::MailAccount &account, QObject *parent) : Mailer(parent) {
    smtp_.SetServer(account.Host);
    smtp_.SetPort(account.Port);
    smtp_.SetSender(account.Sender);
    connect(&smtp_, &SMTP::ErrorSMTP, this, [this](int number, const QString &description) {
        outcome_ = {KindOf(number), number, description};
    });
}

void BlockingMailer::Submit(const varlo::Mail &mail) {
    mail_ = mail;
    submitted_ = true;
    if (!running_)
        QMetaObject::invokeMethod(this, &BlockingMailer::Run, Qt::QueuedConnection);
}

// Goes on at once with what the handler of Finished submits.
void BlockingMailer::Run() {
    const QPointer<BlockingMailer> self(this);
    running_ = true;
    while (self && std::exchange(submitted_, false))
        SendOne();
    if (self)
        running_ = false;
}

void BlockingMailer::SendOne() {
    const QPointer<BlockingMailer> self(this); // an event handled meanwhile may destroy it
    outcome_ = {};
    try {
        Set(mail_);
        smtp_.Send();
    } catch (const varlo::RuntimeError &error) {
        smtp_.Abort();
        outcome_ = {Outcome::Kind::NotTried, error.Number(), error.Description(), true};
    }
    if (self)
        Q_EMIT Finished(Outcome(outcome_)); // a copy: the handler may submit the next one
}

void BlockingMailer::Set(const varlo::Mail &mail) {
    if (set_ != mail.Message) {
        smtp_.SetSubject(mail.Message->Subject);
        smtp_.SetMessageText(mail.Message->Text);
    }
    set_ = mail.Message;
    for (const QString &path : mail.Message->Attachments)
        smtp_.AddAttachment(path, path);
    smtp_.SetRecipient(mail.Recipient);
}

} // namespace OSSMTP
