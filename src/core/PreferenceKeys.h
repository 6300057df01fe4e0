// The whole table of settings keys: section, key, type and default, in one place.
#pragma once

#include "core/clsINIFile.h"

#include <span>

namespace varlo {

enum class ValueType { Text, Whole16, Whole32, Truth };

struct PreferenceKey {
    const char *Section;
    const char *Key;
    ValueType Type;
    const char *Default;
};

// Keys of "global.ini".
namespace GlobalKeys {
inline constexpr PreferenceKey AutoStart{"Profiles", "AutoStart", ValueType::Whole32, "0"};
// The position of the last opened profile in the manager's list, not its name.
inline constexpr PreferenceKey ProfileCurrent{"Profiles", "ProfileCurrent", ValueType::Whole32, "0"};
} // namespace GlobalKeys

// Keys of a profile's "prefs.ini".
namespace Keys {
inline constexpr PreferenceKey Notify{"General", "Notify", ValueType::Whole32, "0"};
// Wanted: the start of the program reads the key from "Main", the preferences window reads and writes it in
// "General". A profile so always starts with status logging on unless "Main" says otherwise.
inline constexpr PreferenceKey LogStatus{"General", "LogStatus", ValueType::Whole32, "1"};
inline constexpr PreferenceKey LogStatusAtStart{"Main", "LogStatus", ValueType::Whole32, "1"};
inline constexpr PreferenceKey LogEmails{"General", "LogEmails", ValueType::Whole32, "1"};
inline constexpr PreferenceKey SMTPServer{"SMTP", "SMTPServer", ValueType::Text, ""};
inline constexpr PreferenceKey SMTPPort{"SMTP", "SMTPPort", ValueType::Whole16, "25"};
inline constexpr PreferenceKey SMTPFrom{"SMTP", "SMTPFrom", ValueType::Text, ""};
inline constexpr PreferenceKey SMTPEmail{"SMTP", "SMTPEmail", ValueType::Text, ""};
inline constexpr PreferenceKey SMTPWrap{"SMTP", "SMTPWrap", ValueType::Whole16, "72"};
inline constexpr PreferenceKey POPServer{"POP3", "POPServer", ValueType::Text, ""};
inline constexpr PreferenceKey POPPort{"POP3", "POPPort", ValueType::Text, "110"};
inline constexpr PreferenceKey POPUsername{"POP3", "POPUsername", ValueType::Text, ""};
inline constexpr PreferenceKey POPPassword{"POP3", "POPPassword", ValueType::Text, ""};
inline constexpr PreferenceKey POPDeleteAll{"POP3", "POPDeleteAll", ValueType::Whole32, "0"};
inline constexpr PreferenceKey SubSubject{"Notify", "SubSubject", ValueType::Text,
                                          "Mailing list subscription notification"};
inline constexpr PreferenceKey SubBody{"Notify", "SubBody", ValueType::Text,
                                       "Your e-mail address has been subscribed to our mailing list."};
inline constexpr PreferenceKey UnsubSubject{"Notify", "UnsubSubject", ValueType::Text,
                                            "Mailing list unsubscription notification"};
inline constexpr PreferenceKey UnsubBody{"Notify", "UnsubBody", ValueType::Text,
                                         "Your e-mail address has been unsubscribed from our mailing list."};
inline constexpr PreferenceKey SignatureText{"Signature", "Text", ValueType::Text, ""};
// Wanted: two defaults for one key. A profile that never saved its preferences signs its messages, while the
// preferences window shows the box unticked until the operator saves.
inline constexpr PreferenceKey SignatureAutoAdd{"Signature", "AutoAdd", ValueType::Whole32, "1"};
inline constexpr PreferenceKey SignatureAutoAddInPreferences{"Signature", "AutoAdd", ValueType::Whole32, "0"};
inline constexpr PreferenceKey AlwaysOnTop{"Main", "AlwaysOnTop", ValueType::Truth, "False"};
inline constexpr PreferenceKey BypassPending{"Main", "BypassPending", ValueType::Whole32, "0"};
inline constexpr PreferenceKey ListCurrent{"Main", "ListCurrent", ValueType::Whole16, "0"};
inline constexpr PreferenceKey ListSortBy{"Main", "ListSortBy", ValueType::Whole32, "1"};
} // namespace Keys

// Every key of "prefs.ini", in the order of the table above.
std::span<const PreferenceKey> AllPreferenceKeys();

// Read and write through `ini`; its section is the key's afterwards. Numbers throw RuntimeError: 13 when the
// stored text is not a number, 6 when it does not fit the key's type.
QString ReadText(clsINIFile &ini, const PreferenceKey &key);
int ReadNumber(clsINIFile &ini, const PreferenceKey &key);
bool ReadTruth(clsINIFile &ini, const PreferenceKey &key);
void WriteValue(clsINIFile &ini, const PreferenceKey &key, const QVariant &value);

// `text` as a whole number of the given type. Throws RuntimeError 13 or 6.
int ToNumber(const QString &text, ValueType type);

// Multi-line texts stand on one line of the file, each line break as the two characters backslash and "n".
QString FromOneLine(QString stored); // "\n" to CR LF
QString ToOneLine(QString text);     // CR LF to "\n"

} // namespace varlo
