#include "core/SendingAccount.h"

#include "core/Literals.h"
#include "core/Preferences.h"

#include <algorithm>

namespace varlo {

namespace {

// Such a character would end the address, or the command that it stands in.
bool IsNoneOfAnAddress(QChar c) {
    return c.isSpace() || c.category() == QChar::Other_Control || c == u'<' || c == u'>';
}

QString Trouble(const QString &what, const QString &value) {
    return u"The %1 [%2] of the e-mail sending preferences cannot be right. Please correct it before "
           "anything is sent."_s.arg(what, value);
}

} // namespace

QString Mailbox(const QString &name, const QString &address) {
    return u'"' + name + u"\" <"_s + address + u'>';
}

MailAccount SendingAccount(const Session &session) {
    return {session.Prefs.SMTPServer, session.Prefs.SMTPPort,
            Mailbox(session.Prefs.SMTPFrom, session.Prefs.SMTPEmail)};
}

QString TroubleWithAccount(const Session &session) {
    const QString &address = session.Prefs.SMTPEmail;
    if (std::any_of(address.begin(), address.end(), IsNoneOfAnAddress))
        return Trouble(u"e-mail address"_s, address);
    if (session.Prefs.SMTPPort < 1)
        return Trouble(u"SMTP port"_s, QString::number(session.Prefs.SMTPPort));
    return {};
}

} // namespace varlo
