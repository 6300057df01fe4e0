// The settings of the open profile, as the program holds them in memory.
#pragma once

#include <QString>

namespace varlo {

// Plain values: section, key and default of each stand in the table of Settings.cpp. A switch is on at 1 and
// off at any other number. Texts are as the file has them: on one line, a line break of a longer text as the
// two characters backslash and "n" (ValueText.h).
struct Preferences {
    int LogStatus{};
    int LogEmails{};
    int Notify{};
    int Keyring{};       // the passwords are in the system's keyring
    QString KeyringName; // of this profile there
    QString SMTPServer;
    qint16 SMTPPort{};
    QString SMTPFrom;
    QString SMTPEmail;
    qint16 SMTPWrap{};
    int SMTPSecurity{}; // a MailSecurity
    QString SMTPUsername;
    QString SMTPPassword;
    int SMTPSignIn{};        // a MailSignIn
    QString SMTPTrusted;     // a server and its certificate (TrustedServer.h)
    QString SMTPUnencrypted; // a server that may be told the password on a line that is not encrypted
    QString POPServer;
    QString POPPort; // without encryption it is only stored and shown: the check uses port 110 then
    QString POPUsername;
    QString POPPassword;
    int POPDeleteAll{};
    int POPSecurity{}; // 0 none, 1 STLS, 2 TLS
    QString POPTrusted;
    QString SubSubject;
    QString SubBody;
    QString UnsubSubject;
    QString UnsubBody;
    int SignatureAutoAdd{};
    QString SignatureText;
    bool AlwaysOnTop{};
    int BypassPending{};
    qint16 ListCurrent{}; // a position in the list chooser
    int ListSortBy{};
    int History{};          // each save of a list keeps the version that it replaces
    int Careful{};          // an edit that is refused is asked for again
    QString WindowGeometry; // what Qt saves of the main window, as base64
    QString WindowSplitter;
    QString ComposeGeometry; // of the compose window, in the same form

    bool operator==(const Preferences &) const = default;
};

} // namespace varlo
