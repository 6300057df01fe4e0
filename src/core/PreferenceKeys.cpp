#include "core/PreferenceKeys.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QLocale>

#include <array>
#include <cmath>
#include <limits>

namespace varlo {

namespace {

constexpr std::array kAllKeys{
    Keys::Notify,        Keys::LogStatus,        Keys::LogStatusAtStart,
    Keys::LogEmails,     Keys::SMTPServer,       Keys::SMTPPort,
    Keys::SMTPFrom,      Keys::SMTPEmail,        Keys::SMTPWrap,
    Keys::POPServer,     Keys::POPPort,          Keys::POPUsername,
    Keys::POPPassword,   Keys::POPDeleteAll,     Keys::SubSubject,
    Keys::SubBody,       Keys::UnsubSubject,     Keys::UnsubBody,
    Keys::SignatureText, Keys::SignatureAutoAdd, Keys::SignatureAutoAddInPreferences,
    Keys::AlwaysOnTop,   Keys::BypassPending,    Keys::ListCurrent,
    Keys::ListSortBy,
};

} // namespace

std::span<const PreferenceKey> AllPreferenceKeys() {
    return kAllKeys;
}

QString ReadText(clsINIFile &ini, const PreferenceKey &key) {
    ini.SetSection(QString::fromLatin1(key.Section));
    return ini.GetValue(QString::fromLatin1(key.Key), QString::fromLatin1(key.Default));
}

int ReadNumber(clsINIFile &ini, const PreferenceKey &key) {
    return ToNumber(ReadText(ini, key), key.Type);
}

bool ReadTruth(clsINIFile &ini, const PreferenceKey &key) {
    const QString text = ReadText(ini, key).trimmed();
    if (text.compare(u"True"_s, Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"False"_s, Qt::CaseInsensitive) == 0)
        return false;
    return ToNumber(text, ValueType::Whole32) != 0;
}

void WriteValue(clsINIFile &ini, const PreferenceKey &key, const QVariant &value) {
    ini.SetSection(QString::fromLatin1(key.Section));
    ini.Values(QString::fromLatin1(key.Key), value);
}

int ToNumber(const QString &text, ValueType type) {
    bool isNumber = false;
    const double value = QLocale::c().toDouble(text.trimmed(), &isNumber);
    if (!isNumber || std::isnan(value))
        throw RuntimeError(TypeMismatch);
    const double whole = std::nearbyint(value); // a half goes to the even neighbour
    const bool is16Bit = type == ValueType::Whole16;
    const double lowest = is16Bit ? std::numeric_limits<qint16>::min() : std::numeric_limits<qint32>::min();
    const double highest = is16Bit ? std::numeric_limits<qint16>::max() : std::numeric_limits<qint32>::max();
    if (whole < lowest || whole > highest)
        throw RuntimeError(Overflow);
    return static_cast<int>(whole);
}

QString FromOneLine(QString stored) {
    return stored.replace(u"\\n"_s, u"\r\n"_s);
}

QString ToOneLine(QString text) {
    return text.replace(u"\r\n"_s, u"\\n"_s);
}

} // namespace varlo
