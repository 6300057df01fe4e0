#include "history/HistoryFolder.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"

#include <QDir>

namespace varlo::History {

namespace {

QString Escaped(const QString &name) {
    QString escaped;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name[i];
        const bool isLast = i + 1 == name.size();
        const bool isRefused = c == u'%' || c < u' ' || c.unicode() == 0x7F || (i == 0 && c == u'.') ||
                               (isLast && (c == u'.' || c == u' '));
        if (isRefused)
            escaped += u'%' + QString::number(c.unicode(), 16).toUpper().rightJustified(2, u'0');
        else
            escaped += c;
    }
    return escaped;
}

} // namespace

QString Folder(const Session &session, const QString &name) {
    return QDir(ProfileLayout::HistoryFolder(session)).filePath(Escaped(name));
}

QStringList Names(const Session &session) {
    QStringList names = QDir(ProfileLayout::HistoryFolder(session))
                            .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (QString &name : names)
        name = QString::fromUtf8(QByteArray::fromPercentEncoding(name.toUtf8()));
    return names;
}

} // namespace varlo::History
