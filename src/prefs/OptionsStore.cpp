#include "prefs/OptionsStore.h"

#include "core/Literals.h"
#include "core/PreferenceKeys.h"
#include "core/Reporting.h"

#include <QRegularExpression>

namespace varlo {

namespace {

// Wherever the program asks a switch, it asks for 1; any other number in the file means that it is off.
bool ReadSwitch(clsINIFile &ini, const PreferenceKey &key) {
    return ReadNumber(ini, key) == 1;
}

void WriteSwitch(clsINIFile &ini, const PreferenceKey &key, bool on) {
    WriteValue(ini, key, on ? 1 : 0);
}

void FromMemory(const Preferences &prefs, Options &options) {
    options.Notify = prefs.Notify == 1;
    options.SMTPServer = prefs.SMTPServer;
    options.SMTPPort = QString::number(prefs.SMTPPort);
    options.SMTPFrom = prefs.SMTPFrom;
    options.SMTPEmail = prefs.SMTPEmail;
    options.SMTPWrap = QString::number(prefs.SMTPWrap);
    options.SubSubject = prefs.SubSubject;
    options.SubBody = FromOneLine(prefs.SubBody);
    options.UnsubSubject = prefs.UnsubSubject;
    options.UnsubBody = FromOneLine(prefs.UnsubBody);
}

void SaveGeneral(Session &session, const Options &options) {
    WriteSwitch(session.INI, Keys::LogStatus, options.LogStatus);
    session.Prefs.LogStatus = options.LogStatus ? 1 : 0;
    WriteSwitch(session.INI, Keys::LogEmails, options.LogEmails);
    WriteSwitch(session.INI, Keys::Notify, options.Notify);
    session.Prefs.Notify = options.Notify ? 1 : 0;
}

// Wanted: the memory comes first, field by field, so that a number that cannot be converted leaves the whole
// section of the file as it was.
void SaveSMTP(Session &session, const Options &options) {
    Preferences &prefs = session.Prefs;
    prefs.SMTPServer = options.SMTPServer;
    prefs.SMTPPort = TypedNumber(options.SMTPPort);
    prefs.SMTPFrom = options.SMTPFrom;
    prefs.SMTPEmail = options.SMTPEmail;
    prefs.SMTPWrap = TypedNumber(options.SMTPWrap);
    WriteValue(session.INI, Keys::SMTPServer, prefs.SMTPServer);
    WriteValue(session.INI, Keys::SMTPPort, prefs.SMTPPort);
    WriteValue(session.INI, Keys::SMTPFrom, prefs.SMTPFrom);
    WriteValue(session.INI, Keys::SMTPEmail, prefs.SMTPEmail);
    WriteValue(session.INI, Keys::SMTPWrap, prefs.SMTPWrap);
}

void SavePOP3(clsINIFile &ini, const Options &options) {
    WriteValue(ini, Keys::POPServer, options.POPServer);
    WriteValue(ini, Keys::POPPort, options.POPPort);
    WriteValue(ini, Keys::POPUsername, options.POPUsername);
    WriteValue(ini, Keys::POPPassword, options.POPPassword);
    WriteSwitch(ini, Keys::POPDeleteAll, options.POPDeleteAll);
}

// The in-memory bodies stay on one line, as the file holds them; who sends one turns the breaks back.
void SaveNotify(Session &session, const Options &options) {
    Preferences &prefs = session.Prefs;
    prefs.SubSubject = options.SubSubject;
    prefs.SubBody = ToOneLine(options.SubBody);
    prefs.UnsubSubject = options.UnsubSubject;
    prefs.UnsubBody = ToOneLine(options.UnsubBody);
    WriteValue(session.INI, Keys::SubSubject, prefs.SubSubject);
    WriteValue(session.INI, Keys::SubBody, prefs.SubBody);
    WriteValue(session.INI, Keys::UnsubSubject, prefs.UnsubSubject);
    WriteValue(session.INI, Keys::UnsubBody, prefs.UnsubBody);
}

void SaveSignature(clsINIFile &ini, const Options &options) {
    WriteSwitch(ini, Keys::SignatureAutoAddInPreferences, options.SignatureOn);
    WriteValue(ini, Keys::SignatureText, ToOneLine(options.Signature));
}

} // namespace

Options LoadOptions(Session &session) {
    clsINIFile &ini = session.INI;
    Options options;
    FromMemory(session.Prefs, options);
    ErrorTrap trap(session, u"Prefs.Load"_s);
    trap([&] { options.LogStatus = ReadSwitch(ini, Keys::LogStatus); });
    trap([&] { options.LogEmails = ReadSwitch(ini, Keys::LogEmails); });
    trap([&] { options.POPServer = ReadText(ini, Keys::POPServer); });
    trap([&] { options.POPPort = ReadText(ini, Keys::POPPort); });
    trap([&] { options.POPUsername = ReadText(ini, Keys::POPUsername); });
    trap([&] { options.POPPassword = ReadText(ini, Keys::POPPassword); });
    trap([&] { options.POPDeleteAll = ReadSwitch(ini, Keys::POPDeleteAll); });
    trap([&] { options.SignatureOn = ReadSwitch(ini, Keys::SignatureAutoAddInPreferences); });
    trap([&] { options.Signature = FromOneLine(ReadText(ini, Keys::SignatureText)); });
    return options;
}

void SaveOptions(Session &session, const Options &options) {
    SaveGeneral(session, options);
    SaveSMTP(session, options);
    SavePOP3(session.INI, options);
    SaveNotify(session, options);
    SaveSignature(session.INI, options);
}

qint16 TypedNumber(const QString &typed) {
    // Stricter than what is read from a file: "2.5" or "1e3" in a port field is a slip, not a number.
    static const QRegularExpression whole(u"\\A\\s*[+-]?[0-9]+\\s*\\z"_s);
    if (!whole.match(typed).hasMatch())
        throw RuntimeError(TypeMismatch);
    return static_cast<qint16>(ToNumber(typed, ValueType::Whole16));
}

} // namespace varlo
