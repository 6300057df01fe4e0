#include "history/HistoryFolder.h"

#include "history/HistoryFixture.h"

namespace varlo::test {
namespace {

using HistoryFolderTest = HistoryFixture;

TEST_F(HistoryFolderTest, IsCalledAsItsList) {
    EXPECT_EQ(History::Folder(session, u"My Friends & Jörg"_s), profile.Path(u"history/My Friends & Jörg"_s));
}

TEST_F(HistoryFolderTest, EveryNameComesBackFromAFolderOfItsOwn) {
    const QStringList names{u"."_s,    u".."_s,   u"..."_s,   u".hidden"_s, u"a."_s,
                            u"a "_s,   u" a"_s,   u"100%"_s,  u"%2E"_s,     u"a\tb"_s,
                            u"a\nb"_s, u"[x]*"_s, u"Ñandú"_s, u"漢字"_s,    u"a\x7F"_s};
    for (const QString &name : names) {
        ASSERT_TRUE(QDir().mkpath(History::Folder(session, name))) << name.toStdString();
    }
    QStringList found = History::Names(session);
    QStringList wanted = names;
    found.sort();
    wanted.sort();
    EXPECT_EQ(found, wanted);
}

TEST_F(HistoryFolderTest, NoNameLeadsOutOfTheHistory) {
    for (const char *name : {".", "..", ". .", ". "}) {
        const QString folder = History::Folder(session, QString::fromLatin1(name));
        EXPECT_EQ(QFileInfo(QDir::cleanPath(folder)).path(), profile.Path(u"history"_s)) << name;
    }
}

TEST_F(HistoryFolderTest, WithoutAHistoryThereAreNoNames) {
    EXPECT_EQ(History::Names(session), QStringList());
}

} // namespace
} // namespace varlo::test
