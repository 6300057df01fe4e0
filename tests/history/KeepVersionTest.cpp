#include "history/KeepVersion.h"

#include "core/RuntimeError.h"
#include "history/HistoryFixture.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"

namespace varlo::test {
namespace {

class KeepVersionTest : public HistoryFixture {
protected:
    KeepVersionTest() { WriteList(Words("a@x.test")); }
    QByteArray List() const { return profile.Read(u"lists/news.vlo"_s); }
    // A save each hour or day; the entry of each says which one it was.
    void SaveMany(int count, qint64 secondsApart) {
        for (int i = 0; i < count; ++i) {
            Wait(secondsApart);
            Save({QString::number(i) + u"@x.test"_s});
        }
    }
};

TEST_F(KeepVersionTest, ASaveKeepsWhatItReplaces) {
    Save(Words("b@x.test a@x.test"), u"Process Pending List"_s);
    Wait(60);
    Save(Words("b@x.test"), u"Delete 1 Address"_s);
    EXPECT_EQ(HistoryFiles(),
              (QStringList{u"2026-03-04 050607.vlo"_s, u"2026-03-04 050707.vlo"_s, u"index.csv"_s}));
    EXPECT_EQ(Kept(), (QStringList{u"a@x.test"_s, u"b@x.test a@x.test"_s}));
    EXPECT_EQ(Versions()[0].Row,
              (History::IndexRow{u"2026-03-04 050607"_s, u"Process Pending List"_s, 1, 1, 0}));
    EXPECT_EQ(Versions()[1].Row, (History::IndexRow{u"2026-03-04 050707"_s, u"Delete 1 Address"_s, 2, 0, 1}));
    EXPECT_EQ(List(), Bytes(Words("b@x.test")));
}

TEST_F(KeepVersionTest, TheBytesAreThoseOfTheFile) {
    const QByteArray odd = "J\xF6rg@x.test\n\r\nno end";
    profile.Write(u"lists/news.vlo"_s, odd);
    Save(Words("b@x.test"));
    EXPECT_EQ(History::ReadVersionBytes(Versions()[0].Path), odd);
}

TEST_F(KeepVersionTest, ASaveThatChangesNothingKeepsNothing) {
    Save(Words("a@x.test"));
    EXPECT_FALSE(QDir(profile.Path(u"history"_s)).exists());
}

TEST_F(KeepVersionTest, ANewFileReplacesNothing) {
    Save(Words("a@x.test"), u"Save"_s, u"other"_s);
    EXPECT_FALSE(QDir(profile.Path(u"history"_s)).exists());
}

TEST_F(KeepVersionTest, TheSettingTurnsItOff) {
    profile.Write(u"prefs.ini"_s, "[General]\r\nHistory=0\r\n");
    Save(Words("b@x.test"));
    EXPECT_FALSE(QDir(profile.Path(u"history"_s)).exists());
    profile.Write(u"prefs.ini"_s, "[General]\r\nHistory=perhaps\r\n");
    Save(Words("c@x.test"));
    EXPECT_EQ(Kept(), Words("b@x.test"));
}

TEST_F(KeepVersionTest, SavesWithinOneSecondAreAllKept) {
    for (int i = 0; i < 12; ++i)
        Save({QString::number(i) + u"@x.test"_s});
    QStringList wanted{u"a@x.test"_s};
    for (int i = 0; i < 11; ++i)
        wanted.append(QString::number(i) + u"@x.test"_s);
    EXPECT_EQ(Kept(), wanted);
}

TEST_F(KeepVersionTest, AClockThatWasSetBackChangesNoOrder) {
    Save(Words("b@x.test"));
    Wait(-86400);
    Save(Words("c@x.test"));
    Wait(86400);
    Save(Words("d@x.test")); // the same second as the first one
    EXPECT_EQ(Kept(), Words("a@x.test b@x.test c@x.test"));
}

TEST_F(KeepVersionTest, AClockThatIsFarAheadForOneSaveThinsNothingOut) {
    SaveMany(20, 3600);
    Wait(qint64(86400) * 4000);
    Save(Words("late@x.test"));
    EXPECT_EQ(Versions().size(), 21);
}

TEST_F(KeepVersionTest, OldVersionsAreThinnedOutAndCompressed) {
    SaveMany(8 * 20, 3 * 3600); // twenty days, every three hours
    const auto versions = Versions();
    EXPECT_GE(versions.size(), 7 * 8 + 12);
    EXPECT_LE(versions.size(), 8 * 8 + 14);
    const QDateTime yesterday = versions[versions.size() - 2].Until.addDays(-1);
    for (const History::Version &version : versions)
        EXPECT_EQ(version.Path.endsWith(u".z"_s), version.Until < yesterday)
            << version.Row.Stem.toStdString();
    EXPECT_EQ(Kept().last(), u"158@x.test"_s);
    EXPECT_GT(versions.first().Next, versions.first().Until) << "some of that day have gone";
    EXPECT_EQ(Errors(), QStringList());
}

TEST_F(KeepVersionTest, ASaveThatFailsLeavesNoVersion) {
    EXPECT_EQ(ErrorOf([&] {
                  History::ReplaceKeeping(session, u"news"_s, u"Save"_s, Words("b@x.test"),
                                          [] { throw RuntimeError(DiskFull); });
              }),
              DiskFull);
    EXPECT_TRUE(Versions().isEmpty());
    EXPECT_EQ(Errors(), QStringList()) << "the caller reports";
}

TEST_F(KeepVersionTest, AVersionThatCannotBeKeptDoesNotHinderTheSave) {
    profile.Write(u"history"_s, "a file in the place of the folder");
    Save(Words("b@x.test"));
    EXPECT_EQ(List(), Bytes(Words("b@x.test")));
    ASSERT_EQ(Errors().size(), 1);
    EXPECT_TRUE(Errors()[0].contains(u"in Main.KeepVersion"_s)) << Errors()[0].toStdString();
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(KeepVersionTest, AnIndexThatCannotBeWrittenCostsItsLineOnly) {
    QDir().mkpath(profile.Path(u"history/news/index.csv"_s));
    Save(Words("b@x.test"));
    Save(Words("c@x.test"));
    EXPECT_EQ(HistoryFiles(), (QStringList{u"2026-03-04 050607-2.vlo"_s, u"2026-03-04 050607.vlo"_s}));
    EXPECT_EQ(List(), Bytes(Words("c@x.test")));
}

// Where the list itself fits, it is saved, whether or not the version does; where not, all is as before.
TEST_F(KeepVersionTest, ADiskThatIsFullAtAnyByteCostsNoListAndNoVersion) {
    const QStringList first = Words("aaaaaaaa@x.test bbbbbbbb@x.test");
    const QStringList second = Words("c@x.test");
    const QStringList third = Words("d@x.test");
    for (rlim_t bytes = 0; bytes < 140; ++bytes) {
        QDir(profile.Path(u"history"_s)).removeRecursively();
        WriteList(first);
        Save(second);
        bool saved = false;
        {
            const FullDisk full(bytes);
            saved = ErrorOf([&] { Save(third); }) == 0;
        }
        EXPECT_EQ(saved, bytes >= rlim_t(Bytes(third).size())) << bytes;
        EXPECT_EQ(List(), Bytes(saved ? third : second)) << bytes;
        const QStringList kept = Kept();
        EXPECT_EQ(kept.value(0), first.join(u' ')) << bytes;
        EXPECT_EQ(kept.mid(1), saved ? second : QStringList()) << bytes;
    }
}

// A kill after the version was written and before the list was.
TEST_F(KeepVersionTest, AVersionThatAKillLeftTwiceIsDropped) {
    Put("2026-03-04 050000.vlo", "a@x.test\r\n");
    Save(Words("b@x.test"));
    EXPECT_EQ(Kept(), Words("a@x.test"));
    EXPECT_EQ(Versions()[0].Row.Stem, u"2026-03-04 050607"_s);
}

TEST_F(KeepVersionTest, ADeletedListKeepsItsLastVersion) {
    Save(Words("b@x.test"));
    History::ReplaceKeeping(session, u"news"_s, u"Delete List"_s, {},
                            [&] { DeleteFile(profile.Path(u"lists/news.vlo"_s)); });
    EXPECT_EQ(Kept(), Words("a@x.test b@x.test"));
    EXPECT_EQ(Versions()[1].Row.Cause, u"Delete List"_s);
}

TEST_F(KeepVersionTest, ARenamedListTakesItsHistoryAlong) {
    Save(Words("b@x.test"));
    History::Rename(session, u"news"_s, u".."_s);
    EXPECT_TRUE(Versions().isEmpty());
    EXPECT_EQ(Kept(u".."_s), Words("a@x.test"));
    History::Rename(session, u"never saved"_s, u"other"_s);
    EXPECT_EQ(Errors(), QStringList());
}

TEST_F(KeepVersionTest, ItGoesBehindThatOfAnEarlierListOfTheName) {
    WriteList(Words("x@x.test"), u"old"_s);
    Save(Words("y@x.test"), u"Edit"_s, u"old"_s);
    Save(Words("b@x.test"), u"Add"_s);
    Save(Words("c@x.test"), u"Delete"_s);
    History::Compress(Versions()[0].Path);
    History::Rename(session, u"news"_s, u"old"_s);
    EXPECT_EQ(Kept(u"old"_s), Words("x@x.test a@x.test b@x.test"));
    QStringList causes;
    for (const History::Version &version : Versions(u"old"_s))
        causes.append(version.Row.Cause);
    EXPECT_EQ(causes, Words("Edit Add Delete"));
    EXPECT_FALSE(QDir(profile.Path(u"history/news"_s)).exists());
}

TEST_F(KeepVersionTest, WhatElseLiesInTheFolderStaysThere) {
    WriteList(Words("x@x.test"), u"old"_s);
    Save(Words("y@x.test"), u"Edit"_s, u"old"_s);
    Save(Words("b@x.test"), u"Add"_s);
    Put("notes.txt", "mine");
    History::Rename(session, u"news"_s, u"old"_s);
    EXPECT_EQ(HistoryFiles(), QStringList(u"notes.txt"_s));
}

} // namespace
} // namespace varlo::test
