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
    QString SMTPServer;
    qint16 SMTPPort{};
    QString SMTPFrom;
    QString SMTPEmail;
    qint16 SMTPWrap{};
    QString POPServer;
    QString POPPort; // stored and shown; the check always uses port 110
    QString POPUsername;
    QString POPPassword;
    int POPDeleteAll{};
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
    QString WindowGeometry; // what Qt saves of the main window, as base64
    QString WindowSplitter;
    QString ComposeGeometry; // of the compose window, in the same form

    bool operator==(const Preferences &) const = default;
};

} // namespace varlo
