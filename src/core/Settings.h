// The settings of a profile and its "prefs.ini": one table, which loads, stores and tells of changes.
#pragma once

#include "core/Preferences.h"
#include "core/clsINIFile.h"

#include <QObject>

#include <initializer_list>
#include <span>
#include <variant>

namespace varlo {

class ErrorTrap;

// The member that holds a setting; its type is the kind of the value in the file: a whole number of 32 or 16
// bits, a truth value, or a text.
using SettingMember =
    std::variant<int Preferences::*, qint16 Preferences::*, bool Preferences::*, QString Preferences::*>;

// Who takes a value out of the file, and when.
enum class Use {
    Held,     // loaded at the start; the preferences window shows what is held in memory
    Fresh,    // read from the file at every use, by the preferences window, too
    InWindow, // read by the preferences window alone: another row reads the member for the rest of the program
    Outside,  // no part of the preferences window
};

// When the preferences window writes the key: always, or only where the file says otherwise, so that the file
// of somebody who never set it stays without the key.
enum class Kept { Always, WhenSet };

struct Setting {
    const char *Section;
    const char *Key;
    const char *Default;
    SettingMember Member;
    Use How;
    Kept Stored = Kept::Always;
    // A password. While the system's keyring keeps the passwords it is empty in the file, and what is held in
    // memory counts.
    bool IsSecret = false;
};

// The longest text that comes back from the file, in characters.
inline constexpr qsizetype kLongestText = clsINIFile::kLongestValue;

// One setting of `values` as the file has it, and back. Setting throws RuntimeError: 13 when the text is not of
// the setting's kind, 6 when it does not fit.
QString TextOf(const Preferences &values, const Setting &setting);
void SetText(Preferences &values, const Setting &setting, const QString &text);

// Works on whatever file the given clsINIFile points at when a call is made. User-interface thread only.
class Settings : public QObject {
    Q_OBJECT

public:
    explicit Settings(clsINIFile &ini);

    // Every row, those of the preferences window in the order in which they are stored.
    static std::span<const Setting> Table();
    // What an empty file gives.
    static Preferences Defaults();

    // Loads what is held in memory from the start on. A value that cannot be read is reported by `trap` and
    // stays as it is in memory; the others are loaded.
    void Load(ErrorTrap &trap);

    // Reads one setting from the file now and holds it, too. Throws RuntimeError 13 or 6; what is held then
    // stays.
    template<typename Value> Value Read(Value Preferences::*member) {
        ReadMember(member);
        return Held.*member;
    }

    // What the preferences window shows: what is held, or what the file has, whichever is said in the table. A
    // value that cannot be read is reported by `trap` and shown as its default.
    Preferences ForWindow(ErrorTrap &trap) const;

    // Stores what the preferences window edits, the rest of `wanted` is not looked at; with `section`, only
    // that section. One write of the file, all or nothing, then the same values are held in memory and
    // `Changed` is sent. Line breaks become blanks. Throws RuntimeError when the file cannot be written:
    // nothing has changed then.
    void Store(const Preferences &wanted, const char *section = nullptr);

    // Writes settings that are held, in one write. A failed write goes unnoticed and leaves the file as it was.
    void Write(std::initializer_list<SettingMember> members) const;

    Preferences Held = Defaults();

Q_SIGNALS:
    // The preferences window has stored settings.
    void Changed();

private:
    void ReadMember(const SettingMember &member);
    QString FileText(const Setting &setting) const;
    QString StoredText(const Setting &setting) const;

    clsINIFile &ini_;
};

} // namespace varlo
