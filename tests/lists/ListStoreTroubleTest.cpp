// Lists that cannot be read or written, and lists that are too long.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListLibrary.h"
#include "lists/ListsFixture.h"
#include "support/FullDisk.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::FileBytes;
using test::Words;

constexpr int kMost = EntryListModel::kMostEntries;
const QString kNews = u"news"_s;
const QString kOther = u"other"_s;

class ListStoreTroubleTest : public test::ListsFixture {
protected:
    void Change() { lists.Open.Add(u"new@x.test"_s); }
    void RemoveListsFolder() { ASSERT_TRUE(QDir(session.ProfileFile(u"lists"_s)).removeRecursively()); }
    void ExpectUnsaved(const QStringList &entries) {
        EXPECT_EQ(lists.Open.Name(), kNews);
        EXPECT_EQ(Current(), entries);
        EXPECT_FALSE(lists.Open.IsSaved());
        EXPECT_EQ(TakeStatus(), QStringList());
    }
    void LoadTooLong(const QByteArray &bytes) {
        WriteListFile(kNews, bytes);
        EXPECT_TRUE(lists.Open.Load(kNews));
        EXPECT_EQ(lists.lstEmailList(kChronological).Count(), kMost);
        TakeStatus();
    }
};

TEST_F(ListStoreTroubleTest, AMissingFileIsReportedAndTheListIsEmpty) {
    OpenList(kOther, Words("o@x.test"));
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Errors(), QStringList(u"53 in Main.cmbMList - File not found"_s));
    EXPECT_EQ(Current() + Sorted(), QStringList());
    EXPECT_EQ(lists.Open.Name(), kNews);
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListStoreTroubleTest, AMissingFileIsWrittenByTheNextSave) {
    lists.Open.Load(kNews);
    Change();
    TakeStatus();
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListStoreTroubleTest, AFileThatCannotBeReadIsReported) {
    ASSERT_TRUE(QDir(profile.Path(u"lists"_s)).mkdir(u"news.vlo"_s));
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmbMList - Permission denied"_s));
    EXPECT_EQ(Current(), QStringList());
}

TEST_F(ListStoreTroubleTest, AVanishedFolderIsReportedAtLoading) {
    RemoveListsFolder();
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Errors(), QStringList(u"76 in Main.cmbMList - Path not found"_s));
}

TEST_F(ListStoreTroubleTest, AVanishedFolderIsReportedAtSavingAndNothingIsLost) {
    OpenList(kNews, Words("a@x.test"));
    Change();
    RemoveListsFolder();
    EXPECT_FALSE(lists.Open.WriteList(kNews));
    EXPECT_EQ(Errors(), QStringList(u"76 in Main.WriteList - Path not found"_s));
    ExpectUnsaved(Words("a@x.test new@x.test"));
}

TEST_F(ListStoreTroubleTest, ASaveThatFailsAtEveryByteLeavesTheOldList) {
    OpenList(kNews, Words("old@x.test"));
    Change();
    session.Prefs.LogStatus = 0;
    const auto size = static_cast<rlim_t>(FileBytes(Current()).size());
    for (rlim_t bytes = 0; bytes < size; ++bytes) {
        profile.Boxes.Answers = {BoxAnswer::Yes};
        {
            const test::FullDisk disk(bytes);
            EXPECT_FALSE(lists.Open.PromptSaveList());
        }
        ASSERT_EQ(ReadListFile(kNews), QByteArray("old@x.test\r\n")) << "after " << bytes << " bytes";
        ASSERT_EQ(ListFolder(), Words("news.vlo")) << "after " << bytes << " bytes";
        ExpectUnsaved(Words("old@x.test new@x.test"));
        EXPECT_TRUE(profile.Boxes.Shown.back().Text.contains(u"[ Disk full ]"_s));
    }
    EXPECT_EQ(profile.Boxes.Shown.size(), 2 * size);
}

TEST_F(ListStoreTroubleTest, AWantedSaveThatFailsKeepsTheOldListOpen) {
    OpenList(kNews, Words("a@x.test"));
    WriteListFile(kOther, FileBytes(Words("o@x.test")));
    Change();
    session.Prefs.LogStatus = 0;
    profile.Boxes.Answers = {BoxAnswer::Yes};
    {
        const test::FullDisk disk(5);
        EXPECT_FALSE(lists.Open.Load(kOther));
    }
    ExpectUnsaved(Words("a@x.test new@x.test"));
    EXPECT_EQ(Sorted(), Words("a@x.test new@x.test"));
}

TEST_F(ListStoreTroubleTest, AStatusLogThatCannotBeWrittenStopsNoLoad) {
    BlockLog(u"StatusLog.txt"_s);
    WriteListFile(kNews, "a@x.test\r\n");
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Current(), Words("a@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmbMList - Permission denied"_s))
        << "once for its two lines";
}

TEST_F(ListStoreTroubleTest, AStatusLogThatCannotBeWrittenLeavesASavedListSaved) {
    OpenList(kNews, Words("a@x.test"));
    Change();
    BlockLog(u"StatusLog.txt"_s);
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("a@x.test new@x.test")));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.PromptSaveList - Permission denied"_s));
}

TEST_F(ListStoreTroubleTest, AFileOfTheMostLinesIsLoadedWhole) {
    WriteListFile(kNews, FileBytes(Addresses(kMost)));
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Errors(), QStringList());
    EXPECT_EQ(Current(), Addresses(kMost));
    EXPECT_EQ(lists.lstEmailList(kAlphabetical).Count(), kMost);
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
}

TEST_F(ListStoreTroubleTest, OneLineTooManyIsReportedAndTheRestIsLoaded) {
    WriteListFile(kNews, FileBytes(Addresses(kMost + 1)));
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.cmbMList - Overflow"_s));
    EXPECT_EQ(Current(), Addresses(kMost));
    QStringList sorted = Sorted();
    std::sort(sorted.begin(), sorted.end());
    QStringList expected = Addresses(kMost);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(sorted, expected);
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListStoreTroubleTest, TheFirstSaveOfATooLongListKeepsItsOldFile) {
    const QByteArray old = FileBytes(Addresses(kMost + 1));
    LoadTooLong(old);
    EXPECT_TRUE(lists.Open.Save(kNews, u"Main.cmdFileSave"_s));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Saved [news]"_s, u"Kept the old file as [news.vlo.bak]"_s}));
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak"_s), old);
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Addresses(kMost)));
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(ListFolder(), Words("news.vlo news.vlo.bak"));
}

TEST_F(ListStoreTroubleTest, ASwitchTellsLastThatItKeptTheOldFile) {
    WriteListFile(kOther, {});
    LoadTooLong(FileBytes(Addresses(kMost + 1)));
    lists.Open.Remove(Addresses(1).first());
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(lists.Open.Load(kOther));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Saved [news]"_s, u"Loading [other]..."_s, u"Loaded [other]"_s,
                                         u"Kept the old file as [news.vlo.bak]"_s}));
}

TEST_F(ListStoreTroubleTest, ASecondTooLongListDoesNotReplaceTheFirstOnesBackup) {
    const QByteArray first = FileBytes(Addresses(kMost + 1, u"first"_s));
    const QByteArray second = FileBytes(Addresses(kMost + 2, u"second"_s));
    LoadTooLong(first);
    EXPECT_TRUE(lists.Open.Save(kNews, u"Main.cmdFileSave"_s));
    LoadTooLong(second);
    EXPECT_TRUE(lists.Open.Save(kNews, u"Main.cmdFileSave"_s));
    EXPECT_EQ(TakeStatus().last(), u"Kept the old file as [news.vlo.bak2]"_s);
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak"_s), first);
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak2"_s), second);
}

TEST_F(ListStoreTroubleTest, ATooLongListThatIsLeftAloneKeepsNoBackup) {
    LoadTooLong(FileBytes(Addresses(kMost + 1)));
    OpenList(kOther, Words("o@x.test"));
    EXPECT_TRUE(lists.Open.WriteList(kOther));
    EXPECT_EQ(ListFolder(), Words("news.vlo other.vlo"));
}

TEST_F(ListStoreTroubleTest, WithoutRoomForTheBackupATooLongListStaysAsItWas) {
    const QByteArray old = FileBytes(Addresses(kMost + 1));
    LoadTooLong(old);
    lists.Open.Remove(Addresses(1).first());
    session.Prefs.LogStatus = 0;
    {
        const test::FullDisk disk(static_cast<rlim_t>(old.size()) - 1);
        EXPECT_FALSE(lists.Open.WriteList(kNews));
    }
    EXPECT_EQ(ReadListFile(kNews), old);
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak"_s), old);
}

TEST_F(ListStoreTroubleTest, AStatusLogThatCannotBeWrittenStopsNoSaveOfATooLongList) {
    LoadTooLong(FileBytes(Addresses(kMost + 1)));
    BlockLog(u"StatusLog.txt"_s);
    EXPECT_TRUE(lists.Open.Save(kNews, u"Main.cmdFileSave"_s));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Addresses(kMost)));
    EXPECT_EQ(ListFolder(), Words("news.vlo news.vlo.bak"));
    EXPECT_EQ(Errors().last(), u"70 in Main.cmdFileSave - Permission denied"_s);
}

} // namespace
} // namespace varlo
