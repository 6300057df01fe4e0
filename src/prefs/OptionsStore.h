// What the Preferences window shows and stores: the values of one profile, loaded and saved as a whole.
#pragma once

#include "core/Session.h"

namespace varlo {

// One member for each field of the window, as the operator sees it. Numbers are the typed text; the lines of
// the long texts end with CR LF.
struct Options {
    bool Notify = false;
    bool LogStatus = true;
    bool LogEmails = true;
    QString SMTPServer;
    QString SMTPPort;
    QString SMTPFrom;
    QString SMTPEmail;
    QString SMTPWrap;
    QString POPServer;
    QString POPPort;
    QString POPUsername;
    QString POPPassword;
    bool POPDeleteAll = false;
    QString SubSubject;
    QString SubBody;
    QString UnsubSubject;
    QString UnsubBody;
    bool SignatureOn = false;
    QString Signature;

    bool operator==(const Options &) const = default;
};

// The current settings: the in-memory copies where the program keeps one, the profile's file for the rest. A
// value that cannot be read is reported as "Prefs.Load" and left at the default of its member; the others are
// loaded.
Options LoadOptions(Session &session);

// Stores every value in the profile's file and in the in-memory copies. Throws RuntimeError 13 or 6 when
// SMTPPort or SMTPWrap is not a whole number of 16 bits; the section "General" is stored by then, the file's
// other sections are as they were. A file that cannot be written goes unnoticed.
void SaveOptions(Session &session, const Options &options);

// `typed` as the number of a port or column. Throws RuntimeError: 13 when it is not a whole number, 6 past 16
// bits.
qint16 TypedNumber(const QString &typed);

} // namespace varlo
