// Who sends, as the preferences say it.
#pragma once

#include "core/Mailer.h"
#include "core/Session.h"

namespace varlo {

// A mailbox as a mailer takes it: the name in double quotes, then the address in angle brackets.
QString Mailbox(const QString &name, const QString &address);

// The account of the open profile, as it is set at this moment.
MailAccount SendingAccount(const Session &session);

} // namespace varlo
