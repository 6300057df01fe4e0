#include "core/SendingAccount.h"

#include "core/Literals.h"

namespace varlo {

QString Mailbox(const QString &name, const QString &address) {
    return u'"' + name + u"\" <"_s + address + u'>';
}

MailAccount SendingAccount(const Session &session) {
    return {session.Prefs.SMTPServer, session.Prefs.SMTPPort,
            Mailbox(session.Prefs.SMTPFrom, session.Prefs.SMTPEmail)};
}

} // namespace varlo
