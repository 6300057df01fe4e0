// Access to one settings file in the INI format, one key at a time.
#pragma once

#include <QString>
#include <QVariant>

#include <span>

namespace varlo {

// One value of a settings file, to be written together with others.
struct IniEntry {
    QString Section;
    QString Key;
    QString Value;
};

// `text` as one line: line breaks and zeros become blanks.
QString IniLine(QString text);

// Nothing is cached: each read and write goes to the file, so that two instances on one file see each other's
// changes. All values travel as text. The rules are those of the Windows profile services, so that files pass
// between the systems: section and key names ignore letter case, the first matching section and key win,
// blanks and one pair of quotation marks around a value are dropped, a write keeps every other line and its
// place, a new key goes to the end of its section. User-interface thread only.
class clsINIFile {
public:
    // The longest value that GetValue gives, in characters: the services' buffer of 3072 less its closing zero.
    static constexpr qsizetype kLongestValue = 3071;

    // The full path of the file that every operation addresses.
    const QString &File() const { return file_; }
    // Stores the path and forgets the section.
    void SetFile(const QString &path);

    const QString &Section() const { return section_; }
    void SetSection(const QString &name) { section_ = name; }

    // The value of `ValueName` in the current section, at most 3071 characters. A missing key gives
    // `Default`; when the outcome is empty (a missing key with an empty default, or a key that is present and
    // empty), the result is `Default` and `*Fail` is set to true. Never reports an error.
    QString GetValue(const QString &ValueName, const QString &Default = {}, bool *Fail = nullptr) const;

    // Writes the text form of `vData` ("True"/"False" for a truth value, decimal for a number) as one line;
    // line breaks become blanks. File, section and key are created as needed. A failed write goes unnoticed
    // and leaves the file as it was.
    void Values(const QString &ValueName, const QVariant &vData) const;

    // Writes all the entries, whatever the current section, in one write of the file: all of them or none. A
    // value comes back as it is, blanks and quotation marks around it included. Throws RuntimeError when the
    // file cannot be read or written; it is as it was then.
    void Write(std::span<const IniEntry> entries) const;

    // Removes the key from the current section. A missing key goes unnoticed.
    void DeleteKey(const QString &KeyName) const;

    // Removes the named section with all its lines; the current section is neither used nor changed.
    void DeleteSection(const QString &SectionName) const;

private:
    QString file_;
    QString section_;
};

} // namespace varlo
