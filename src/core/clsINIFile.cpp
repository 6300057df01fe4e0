#include "core/clsINIFile.h"

#include "core/IniText.h"
#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"

#include <QFileInfo>

#include <optional>

namespace varlo {

namespace {

// The longest value that callers get, in characters: the services' buffer of 3072 less its closing zero.
constexpr qsizetype kLongestValue = 3071;

// The file's text; empty for a missing file, nothing for one that is there and cannot be read: such a file
// must not be replaced by what little is known of it.
std::optional<QString> Load(const QString &path) {
    try {
        return DecodeText(ReadFile(path));
    } catch (const RuntimeError &) { // by contract no operation on settings reports a failure
        if (!QFileInfo::exists(path))
            return QString();
        return std::nullopt;
    }
}

// Every start of the program stores settings that it has just read: those cost no write that waits for the
// disk.
void Store(const QString &path, const QString &oldText, const QString &text) {
    if (text == oldText && QFileInfo::exists(path))
        return;
    try {
        WriteFile(path, EncodeText(text), FileAccess::OwnerOnly); // it holds a password
    } catch (const RuntimeError &) {
        // By contract a failed write goes unnoticed; the old file is still whole.
    }
}

QString TextForm(const QVariant &value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? u"True"_s : u"False"_s;
    QString text = value.toString();
    text.replace(u"\r\n"_s, u" "_s);
    for (QChar &c : text)
        if (c == u'\r' || c == u'\n' || c == u'\0')
            c = u' ';
    return text;
}

} // namespace

void clsINIFile::SetFile(const QString &path) {
    file_ = path;
    section_.clear();
}

QString clsINIFile::GetValue(const QString &ValueName, const QString &Default, bool *Fail) const {
    const QString text = Load(file_).value_or(QString());
    const QString value = IniText::Find(text, section_, ValueName).value_or(Default).left(kLongestValue);
    if (Fail)
        *Fail = value.isEmpty();
    return value.isEmpty() ? Default : value;
}

void clsINIFile::Values(const QString &ValueName, const QVariant &vData) const {
    if (const auto text = Load(file_))
        Store(file_, *text, IniText::WithValue(*text, section_, ValueName, TextForm(vData)));
}

void clsINIFile::DeleteKey(const QString &KeyName) const {
    if (const auto text = Load(file_); text && !text->isEmpty())
        Store(file_, *text, IniText::WithoutKey(*text, section_, KeyName));
}

void clsINIFile::DeleteSection(const QString &SectionName) const {
    if (const auto text = Load(file_); text && !text->isEmpty())
        Store(file_, *text, IniText::WithoutSection(*text, SectionName));
}

} // namespace varlo
