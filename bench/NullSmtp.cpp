// The SMTP component as fast as it can be: takes every message and sends none. What is left is the engine's
// own work.

#include "smtp/SMTP.h"

namespace OSSMTP {

class SMTP::Private {};

SMTP::SMTP(QObject *parent) : QObject(parent) {
}
SMTP::~SMTP() = default;
void SMTP::SetServer(const QString &) {
}
void SMTP::SetPort(int) {
}
void SMTP::SetSender(const QString &) {
}
void SMTP::SetSubject(const QString &) {
}
void SMTP::SetMessageText(const QString &) {
}
void SMTP::AddAttachment(const QString &, const QString &) {
}
void SMTP::SetRecipient(const QString &) {
}
void SMTP::SetTimeout(int) {
}
void SMTP::Abort() {
}

bool SMTP::Send() {
    return true;
}

} // namespace OSSMTP
