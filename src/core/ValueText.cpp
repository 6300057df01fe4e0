#include "core/ValueText.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace varlo {

namespace {

template<typename Whole> Whole ToWhole(const QString &text) {
    bool isNumber = false;
    const double value = QLocale::c().toDouble(text.trimmed(), &isNumber);
    if (!isNumber || std::isnan(value))
        throw RuntimeError(TypeMismatch);
    const double whole = std::nearbyint(value);
    if (whole < std::numeric_limits<Whole>::min() || whole > std::numeric_limits<Whole>::max())
        throw RuntimeError(Overflow);
    return static_cast<Whole>(whole);
}

} // namespace

qint16 ToWhole16(const QString &text) {
    return ToWhole<qint16>(text);
}

qint32 ToWhole32(const QString &text) {
    return ToWhole<qint32>(text);
}

bool ToTruth(const QString &text) {
    const QString word = text.trimmed();
    if (word.compare(u"True"_s, Qt::CaseInsensitive) == 0)
        return true;
    return word.compare(u"False"_s, Qt::CaseInsensitive) != 0 && ToWhole32(word) != 0;
}

QString FromOneLine(QString stored) {
    return stored.replace(u"\\n"_s, u"\r\n"_s);
}

QString ToOneLine(QString text) {
    return text.replace(u"\r\n"_s, u"\\n"_s);
}

} // namespace varlo
