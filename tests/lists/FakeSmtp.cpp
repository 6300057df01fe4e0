#include "lists/FakeSmtp.h"

#include "smtp/SMTP.h"

#include <gtest/gtest.h>

namespace varlo::test {

FakeSmtp *FakeSmtp::Instance = nullptr;

FakeSmtp::FakeSmtp() {
    EXPECT_EQ(Instance, nullptr);
    Instance = this;
}

FakeSmtp::~FakeSmtp() {
    EXPECT_EQ(Alive, 0) << "a mailer outlived its run";
    Instance = nullptr;
}

namespace {

void Note(const char *what, const QString &value) {
    FakeSmtp::Instance->Calls << QString::fromLatin1(what) + u' ' + value;
}

} // namespace
} // namespace varlo::test

namespace OSSMTP {

using varlo::test::FakeSmtp;
using varlo::test::Note;

class SMTP::Private {};

SMTP::SMTP(QObject *parent) : QObject(parent) {
    ++FakeSmtp::Instance->Created;
    ++FakeSmtp::Instance->Alive;
}

SMTP::~SMTP() {
    --FakeSmtp::Instance->Alive;
}

void SMTP::SetServer(const QString &host) {
    Note("server", host);
}

void SMTP::SetPort(int port) {
    Note("port", QString::number(port));
}

void SMTP::SetSender(const QString &mailbox) {
    Note("from", mailbox);
}

void SMTP::SetSubject(const QString &subject) {
    Note("subject", subject);
}

void SMTP::SetMessageText(const QString &text) {
    Note("text", text);
}

void SMTP::SetRecipient(const QString &mailbox) {
    Note("to", mailbox);
}

bool SMTP::Send() {
    FakeSmtp::Instance->Calls << QStringLiteral("send");
    const FakeSmtp::Failure failure = FakeSmtp::Instance->OnSend();
    if (failure.Number != 0)
        Q_EMIT ErrorSMTP(failure.Number, failure.Description);
    return failure.Number == 0;
}

void SMTP::Abort() {
    ++FakeSmtp::Instance->Aborts;
}

} // namespace OSSMTP
