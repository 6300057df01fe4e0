#include "core/modPublic.h"

#include "core/Literals.h"

#include <QFileInfo>

#include <algorithm>

namespace varlo {

bool PathExists(const QString &path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink(); // a link that leads nowhere is a found name, too
}

QString LowerCased(const QString &text) {
    const bool isLower = std::all_of(text.cbegin(), text.cend(),
                                     [](QChar c) { return c < u'A' || (c > u'Z' && c.unicode() < 0x80); });
    return isLower ? text : text.toLower();
}

QString StripChars(QString text, const QString &chars) {
    for (QChar c : chars)
        text.replace(c, u' ');
    return text;
}

void SortNames(QStringList &names) {
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order == 0 ? a < b : order < 0;
    });
}

QString DurationText(qint64 seconds) {
    const qint64 hours = seconds / 3600;
    const qint64 minutes = seconds % 3600 / 60;
    QString text;
    if (hours > 0)
        text += QString::number(hours) + u" hrs, "_s;
    if (minutes > 0)
        text += QString::number(minutes) + u" mins, "_s;
    return text + QString::number(seconds % 60) + u" secs"_s;
}

} // namespace varlo
