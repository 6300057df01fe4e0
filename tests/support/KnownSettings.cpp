#include "support/KnownSettings.h"

#include <array>

namespace varlo::test {

namespace {

// clang-format off
const auto kKnown = std::to_array<KnownSetting>({
    {0, "chkLogStatus", "Log status messages", "Log Varlo Pro events to text files",
     "General", "LogStatus", "32-bit", "1", "0", "in window"},
    {0, "chkLogEmails", "Save sent e-mails", "Save all sent messages to text files",
     "General", "LogEmails", "32-bit", "1", "0", "fresh"},
    {0, "chkNotify", "Enable e-mail notification",
     "Check this box to notify subscribers/unsubscribers via e-mail",
     "General", "Notify", "32-bit", "0", "1", "held"},
    {0, "chkKeyring", "Keep passwords in the system's keyring",
     "Check this box to keep passwords out of the file of the preferences", "", "", "", "", "", ""},
    {-1, "", "", "", "General", "Keyring", "32-bit", "0", "1", "held"},
    {-1, "", "", "", "General", "KeyringName", "text", "", "0123-4567", "held"},
    {0, "cmbMaintenance", "Maintenance:", "", "", "", "", "", "", ""},
    {0, "cmdLogGo", "Go", "Activate the selected maintenance function", "", "", "", "", "", ""},

    {1, "txtSMTPServer", "SMTP server:", "Your SMTP server",
     "SMTP", "SMTPServer", "text", "", "smtp.example.org", "held"},
    {1, "txtSMTPPort", "Port:", "Your SMTP server", "SMTP", "SMTPPort", "16-bit", "25", "587", "held"},
    {1, "txtSMTPFrom", "Your name:", "Your name as it will appear on sent messages",
     "SMTP", "SMTPFrom", "text", "", "Jörg Ñandú 漢", "held"},
    {1, "txtSMTPEmail", "Your e-mail:", "Your e-mail address as it will appear on sent messages",
     "SMTP", "SMTPEmail", "text", "", "joerg@example.org", "held"},
    {1, "txtSMTPWrap", "Wrap messages to", "", "SMTP", "SMTPWrap", "16-bit", "72", "64", "held"},
    {1, "cmdWrapDefault", "Default", "Set default wrap column", "", "", "", "", "", ""},
    {1, "cmbSMTPSecurity", "Encryption:", "How the connection to your SMTP server is encrypted",
     "SMTP", "SMTPSecurity", "32-bit", "0", "2", "held"},
    {1, "txtSMTPUsername", "Username:", "Your SMTP account username, empty when the server asks for none",
     "SMTP", "SMTPUsername", "text", "", "joerg", "held"},
    {1, "txtSMTPPassword", "Password:", "Your SMTP account password or token",
     "SMTP", "SMTPPassword", "text", "", "gehe=im;[wort]", "held"},
    {1, "cmbSMTPSignIn", "Sign in with:", "What stands in the password box",
     "SMTP", "SMTPSignIn", "32-bit", "0", "1", "held"},
    {1, "cmdSMTPTest", "Test", "Connect and sign in without sending anything", "", "", "", "", "", ""},
    {-1, "", "", "", "SMTP", "SMTPTrusted", "text", "", "00ff mail.example.org", "held"},
    {-1, "", "", "", "SMTP", "SMTPUnencrypted", "text", "", "mail.example.org", "held"},

    {2, "txtPOPServer", "POP3 server:", "Your POP3 server",
     "POP3", "POPServer", "text", "", "pop.example.org", "fresh"},
    {2, "txtPOPPort", "Port:", "Your SMTP server", "POP3", "POPPort", "text", "110", "no number at all", "fresh"},
    {2, "txtPOPUsername", "Username:", "Your POP3 account username",
     "POP3", "POPUsername", "text", "", "lists", "fresh"},
    {2, "txtPOPPassword", "Password:", "Your POP3 account password",
     "POP3", "POPPassword", "text", "", "pä$$=;[word]", "fresh"},
    {2, "chkPOPDeleteAll", "Delete unrelated messages during POP3 check",
     "Check this box to delete all non-mailing list related messages on the server",
     "POP3", "POPDeleteAll", "32-bit", "0", "1", "fresh"},
    {2, "cmbPOPSecurity", "Encryption:", "How the connection to your POP3 server is encrypted",
     "POP3", "POPSecurity", "32-bit", "0", "2", "fresh"},
    {2, "cmdPOPTest", "Test", "Connect and sign in without fetching anything", "", "", "", "", "", ""},
    {-1, "", "", "", "POP3", "POPTrusted", "text", "", "00ff pop.example.org", "held"},

    {3, "txtNotifySubSubject", "Subject:", "",
     "Notify", "SubSubject", "text", "Mailing list subscription notification", "Welcome <b>you</b>", "held"},
    {3, "txtNotifySubBody", "Body:", "", "Notify", "SubBody", "text",
     "Your e-mail address has been subscribed to our mailing list.", "First\\nsecond\\n", "held"},
    {3, "txtNotifyUnsubSubject", "Subject:", "",
     "Notify", "UnsubSubject", "text", "Mailing list unsubscription notification", "Good bye", "held"},
    {3, "txtNotifyUnsubBody", "Body:", "", "Notify", "UnsubBody", "text",
     "Your e-mail address has been unsubscribed from our mailing list.", "Häufig\\n\\nゑ", "held"},

    {4, "chkSignatureOn", "Add signature when composing messages",
     "Check this box to automatically add your signature to e-mails",
     "Signature", "AutoAdd", "32-bit", "0", "1", "in window"},
    {-1, "", "", "", "Signature", "AutoAdd", "32-bit", "1", "0", "outside"},
    {4, "txtSignature", "Signature text:", "", "Signature", "Text", "text", "", "--\\nJörg", "fresh"},

    {-1, "", "", "", "Main", "LogStatus", "32-bit", "1", "0", "outside"},
    {-1, "", "", "", "Main", "AlwaysOnTop", "truth", "False", "True", "outside"},
    {-1, "", "", "", "Main", "BypassPending", "32-bit", "0", "1", "outside"},
    {-1, "", "", "", "Main", "ListCurrent", "16-bit", "0", "1", "outside"},
    {-1, "", "", "", "Main", "ListSortBy", "32-bit", "1", "0", "outside"},
    {-1, "", "", "", "General", "History", "32-bit", "1", "0", "outside"},
    {-1, "", "", "", "General", "Careful", "32-bit", "0", "1", "outside"},
    {-1, "", "", "", "Window", "Geometry", "text", "", "AdnQywAD", "outside"},
    {-1, "", "", "", "Window", "Splitter", "text", "", "AAAA/wAA", "outside"},
    {-1, "", "", "", "Window", "ComposeGeometry", "text", "", "AdnQywAE", "outside"},
});
// clang-format on

} // namespace

std::span<const KnownSetting> KnownSettings() {
    return kKnown;
}

QByteArray SampleFile(const char *section) {
    QByteArray file;
    QByteArray last;
    for (const KnownSetting &known : kKnown) {
        const bool isStored = known.Page >= 0 && *known.Section;
        if (!isStored || (section && qstrcmp(known.Section, section) != 0))
            continue;
        if (last != known.Section)
            file += QByteArray("[") + known.Section + "]\r\n";
        last = known.Section;
        file += QByteArray(known.Key) + "=" + known.Sample + "\r\n";
    }
    return file;
}

} // namespace varlo::test
