#include "lists/ListsFixture.h"

#include "core/Literals.h"

#include <QDir>

namespace varlo::test {

QStringList Words(const char *text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

QStringList Addresses(int count, const QString &prefix) {
    QStringList addresses;
    addresses.reserve(count);
    for (int i = 0; i < count; ++i)
        addresses << prefix + QString::number(i) + u"@x.test"_s;
    return addresses;
}

int RandomBelow(std::mt19937 &random, int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

QByteArray FileBytes(const QStringList &lines) {
    QByteArray bytes;
    for (const QString &line : lines)
        bytes += line.toUtf8() + "\r\n";
    return bytes;
}

QStringList NamesIn(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

QStringList ErrorsOf(const TestProfile &profile) {
    QStringList errors;
    for (const QString &line : profile.Log(u"ErrorLog.txt"_s))
        errors << line.section(u" Error "_s, 1);
    return errors;
}

void ReplaceByFolder(const QString &path) {
    QFile::remove(path);
    ASSERT_TRUE(QDir().mkpath(path));
}

} // namespace varlo::test
