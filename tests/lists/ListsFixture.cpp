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

void ListsFixture::WriteListFile(const QString &name, const QByteArray &bytes) const {
    profile.Write(u"lists/"_s + name + u".vlo"_s, bytes);
}

QByteArray ListsFixture::ReadListFile(const QString &name) const {
    return profile.Read(u"lists/"_s + name + u".vlo"_s);
}

QStringList ListsFixture::ListFolder() const {
    return QDir(session.ProfileFile(u"lists"_s))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

void ListsFixture::OpenList(const QString &name, const QStringList &entries) {
    WriteListFile(name, FileBytes(entries));
    ASSERT_TRUE(lists.Load(name));
    ASSERT_EQ(Current(), entries);
    TakeStatus();
}

void ListsFixture::AddPending(const QStringList &entries) {
    lists.lstEmailList(kPending).AddAll(entries);
}

QStringList ListsFixture::Errors() const {
    QStringList errors;
    for (const QString &line : profile.Log(u"ErrorLog.txt"_s))
        errors << line.section(u" Error "_s, 1);
    return errors;
}

void ListsFixture::BlockLog(const QString &file) const {
    const QString path = session.ProfileFile(u"logs"_s, file);
    QFile::remove(path);
    ASSERT_TRUE(QDir().mkpath(path));
}

} // namespace varlo::test
