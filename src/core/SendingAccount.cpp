#include "core/SendingAccount.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/TrustedServer.h"

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

QString KeyringTrouble(const Session &session) {
    const bool isNeeded = !session.Prefs.SMTPUsername.isEmpty() && session.Prefs.SMTPPassword.isEmpty();
    return isNeeded && session.PasswordTrouble ? session.PasswordTrouble() : QString();
}

// Any other number, as the preferences window shows it: automatic.
MailSecurity SecurityOf(int stored) {
    constexpr int kStartTls = 1;
    constexpr int kTls = 2;
    if (stored == kStartTls)
        return MailSecurity::StartTls;
    return stored == kTls ? MailSecurity::Tls : MailSecurity::Automatic;
}

} // namespace

QString Mailbox(const QString &name, const QString &address) {
    return u'"' + name + u"\" <"_s + address + u'>';
}

MailAccount SendingAccount(const Session &session) {
    return SendingAccount(session.Prefs);
}

MailAccount SendingAccount(const Preferences &values) {
    return {.Host = values.SMTPServer,
            .Port = values.SMTPPort,
            .Sender = Mailbox(values.SMTPFrom, values.SMTPEmail),
            .Security = SecurityOf(values.SMTPSecurity),
            .Username = values.SMTPUsername,
            .Secret = values.SMTPUsername.isEmpty() ? QString() : values.SMTPPassword,
            .SignIn = values.SMTPSignIn == 1 ? MailSignIn::Token : MailSignIn::Password,
            .Trusted = TrustedCertificate(values.SMTPTrusted, values.SMTPServer),
            .ClearTextAllowed = IsSameServer(values.SMTPUnencrypted, values.SMTPServer)};
}

QString TroubleWithAccount(const Session &session) {
    const QString &address = session.Prefs.SMTPEmail;
    if (std::any_of(address.begin(), address.end(), IsNoneOfAnAddress))
        return Trouble(u"e-mail address"_s, address);
    if (session.Prefs.SMTPPort < 1)
        return Trouble(u"SMTP port"_s, QString::number(session.Prefs.SMTPPort));
    if (QString trouble = KeyringTrouble(session); !trouble.isEmpty())
        return trouble;
    if (!session.Prefs.SMTPUsername.isEmpty() && session.Prefs.SMTPPassword.isEmpty())
        return u"There is no password for the username [%1] of the e-mail sending preferences. Please enter "
               u"it "
               "before anything is sent."_s.arg(session.Prefs.SMTPUsername);
    return {};
}

} // namespace varlo
