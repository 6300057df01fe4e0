#include "core/clsINIFile.h"

#include "core/IniText.h"
#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"

#include <QDir>
#include <QFileInfo>

namespace varlo {

namespace {

// The file's text, empty for a missing file. Throws RuntimeError when it is there and cannot be read: such a
// file must not be replaced by what little is known of it.
QString Load(const QString &path) {
    return QFileInfo::exists(path) ? DecodeText(ReadFile(path)) : QString();
}

// Every start of the program stores settings that it has just read: those cost no write that waits for the
// disk.
void Store(const QString &path, const QString &oldText, const QString &text) {
    if (text != oldText || !QFileInfo::exists(path))
        WriteFile(path, EncodeText(text), FileAccess::OwnerOnly); // it holds a password
}

// By contract the single operations report no failure; the file is still whole.
template<typename Operation> void Unnoticed(Operation operation) {
    try {
        operation();
    } catch (const RuntimeError &) { // nobody asked
    }
}

QString TextForm(const QVariant &value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? u"True"_s : u"False"_s;
    return IniLine(value.toString());
}

// A failure as the operator has to read it: the file's name tells him where to look.
RuntimeError NotWritten(const QString &path, const RuntimeError &error) {
    return {error.Number(), u"The settings could not be written to "_s + QDir::toNativeSeparators(path) +
                                u": "_s + error.Description()};
}

} // namespace

QString IniLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    for (QChar &c : text)
        if (c == u'\r' || c == u'\n' || c == u'\0')
            c = u' ';
    return text;
}

void clsINIFile::SetFile(const QString &path) {
    file_ = path;
    section_.clear();
}

QString clsINIFile::GetValue(const QString &ValueName, const QString &Default, bool *Fail) const {
    QString text;
    Unnoticed([&] { text = Load(file_); });
    const QString value = IniText::Find(text, section_, ValueName).value_or(Default).left(kLongestValue);
    if (Fail)
        *Fail = value.isEmpty();
    return value.isEmpty() ? Default : value;
}

void clsINIFile::Values(const QString &ValueName, const QVariant &vData) const {
    Unnoticed([&] {
        const QString text = Load(file_);
        Store(file_, text, IniText::WithValue(text, section_, ValueName, TextForm(vData)));
    });
}

void clsINIFile::Write(std::span<const IniEntry> entries) const {
    try {
        const QString oldText = Load(file_);
        QString text = oldText;
        for (const IniEntry &entry : entries)
            text = IniText::WithValue(text, entry.Section, entry.Key, IniText::Kept(IniLine(entry.Value)));
        Store(file_, oldText, text);
    } catch (const RuntimeError &error) {
        throw NotWritten(file_, error);
    }
}

void clsINIFile::DeleteKey(const QString &KeyName) const {
    Unnoticed([&] {
        if (const QString text = Load(file_); !text.isEmpty())
            Store(file_, text, IniText::WithoutKey(text, section_, KeyName));
    });
}

void clsINIFile::DeleteSection(const QString &SectionName) const {
    Unnoticed([&] {
        if (const QString text = Load(file_); !text.isEmpty())
            Store(file_, text, IniText::WithoutSection(text, SectionName));
    });
}

} // namespace varlo
