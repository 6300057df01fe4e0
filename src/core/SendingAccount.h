// Who sends, as the preferences say it.
#pragma once

#include "core/Mailer.h"
#include "core/Session.h"

namespace varlo {

// A mailbox as a mailer takes it: the name in double quotes, then the address in angle brackets.
QString Mailbox(const QString &name, const QString &address);

// The account of the open profile, as it is set at this moment; and one as `values` say it.
MailAccount SendingAccount(const Session &session);
MailAccount SendingAccount(const Preferences &values);

// What in that account cannot be right, as a sentence for the operator: the sender's own address (one with
// blanks, brackets or control characters in it), the port, or a username without a password. Empty when nothing is; what is not set at all is
// no matter of this function.
QString TroubleWithAccount(const Session &session);

} // namespace varlo
