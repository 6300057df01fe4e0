#include "support/FakeSmtp.h"

#include "core/RuntimeError.h"

#include <gtest/gtest.h>

#include <map>

namespace varlo::test {

namespace {

std::map<OSSMTP::SMTP *, FakeSmtp> &Fakes() {
    static std::map<OSSMTP::SMTP *, FakeSmtp> fakes;
    return fakes;
}

OSSMTP::SMTP *&NewestComponent() {
    static OSSMTP::SMTP *newest = nullptr;
    return newest;
}

} // namespace

std::function<void(FakeSmtp &)> FakeSmtp::OnCreated;

int FakeSmtp::Alive() {
    return static_cast<int>(Fakes().size());
}

FakeSmtp &FakeSmtp::Of(OSSMTP::SMTP &smtp) {
    return Fakes().at(&smtp);
}

FakeSmtp &FakeSmtp::Newest() {
    return Fakes().at(NewestComponent());
}

QStringList FakeSmtp::Recipients() const {
    QStringList recipients;
    for (const Message &message : Sent)
        recipients << message.Recipient;
    return recipients;
}

} // namespace varlo::test

namespace OSSMTP {

using varlo::test::FakeSmtp;

class SMTP::Private {};

SMTP::SMTP(QObject *parent) : QObject(parent) {
    varlo::test::NewestComponent() = this;
    FakeSmtp &fake = varlo::test::Fakes()[this];
    fake.Fail = [this](int number, const QString &description) {
        Q_EMIT ErrorSMTP(number, description);
        return false;
    };
    if (FakeSmtp::OnCreated)
        FakeSmtp::OnCreated(fake);
}

SMTP::~SMTP() {
    varlo::test::Fakes().erase(this);
}

void SMTP::SetServer(const QString &host) {
    FakeSmtp::Of(*this).Current.Server = host;
}

void SMTP::SetPort(int port) {
    FakeSmtp::Of(*this).Current.Port = port;
}

void SMTP::SetSender(const QString &mailbox) {
    FakeSmtp::Of(*this).Current.Sender = mailbox;
}

void SMTP::SetSubject(const QString &subject) {
    FakeSmtp::Of(*this).Current.Subject = subject;
}

void SMTP::SetMessageText(const QString &text) {
    FakeSmtp::Of(*this).Current.Text = text;
}

void SMTP::AddAttachment(const QString &path, const QString &key) {
    FakeSmtp &fake = FakeSmtp::Of(*this);
    EXPECT_EQ(path, key);
    fake.OnAddAttachment(path);
    if (fake.Current.Attachments.contains(key))
        throw varlo::RuntimeError(varlo::KeyAlreadyPresent);
    fake.Current.Attachments << path;
}

void SMTP::SetRecipient(const QString &mailbox) {
    FakeSmtp::Of(*this).Current.Recipient = mailbox;
}

bool SMTP::Send() {
    FakeSmtp &fake = FakeSmtp::Of(*this);
    fake.Sent.push_back(fake.Current);
    fake.Current.Attachments.clear();
    const auto answer = fake.OnSend; // the script may replace itself
    return answer();
}

void SMTP::SetTimeout(int) {
}

void SMTP::Abort() {
    FakeSmtp &fake = FakeSmtp::Of(*this);
    ++fake.Aborts;
    fake.Current.Attachments.clear();
}

} // namespace OSSMTP
