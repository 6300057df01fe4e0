#include "lists/ListManagement.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListsFixture.h"
#include "support/FullDisk.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FileBytes;
using test::Words;

const QString kNews = u"news"_s;

class ListManagementTest : public test::ListsFixture {
protected:
    void RemoveListsFolder() { ASSERT_TRUE(QDir(session.ProfileFile(u"lists"_s)).removeRecursively()); }

    std::optional<QString> Rename(const QString &name) {
        profile.Boxes.Inputs = {name};
        return RenameList(session, lists.Open, kNews);
    }
};

TEST_F(ListManagementTest, NewAsksForANameAndCreatesAnEmptyFile) {
    profile.Boxes.Inputs = {u"Über <b>uns"_s};
    EXPECT_EQ(CreateList(session), u"Über  b uns"_s);
    EXPECT_EQ(profile.Boxes.Asked,
              (std::vector<test::ScriptedDialogs::Input>{
                  {u"Please enter a name for the new mailing list:"_s, u"Create New List"_s, QString()}}));
    EXPECT_EQ(ReadListFile(u"Über  b uns"_s), QByteArray());
}

TEST_F(ListManagementTest, EveryCharacterThatNamesCannotHoldBecomesABlank) {
    profile.Boxes.Inputs = {u"a/b"_s, u"0\\/:*?\"<>|1"_s};
    EXPECT_EQ(CreateList(session), u"a b"_s);
    EXPECT_EQ(CreateList(session), u"0         1"_s);
    EXPECT_EQ(ListFolder(), (QStringList{u"0         1.vlo"_s, u"a b.vlo"_s}));
}

TEST_F(ListManagementTest, NamesAreNotTrimmed) {
    profile.Boxes.Inputs = {u" news "_s, u"../up"_s};
    EXPECT_EQ(CreateList(session), u" news "_s);
    EXPECT_EQ(CreateList(session), u".. up"_s);
    EXPECT_EQ(ListFolder(), (QStringList{u" news .vlo"_s, u".. up.vlo"_s}));
}

TEST_F(ListManagementTest, AnEmptyOrCancelledNameCreatesNothing) {
    profile.Boxes.Inputs = {QString()};
    EXPECT_EQ(CreateList(session), std::nullopt);
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(ListManagementTest, NewEmptiesAFileOfTheSameNameWithoutAQuestion) {
    WriteListFile(kNews, "a@x.test\r\n");
    profile.Boxes.Inputs = {kNews};
    EXPECT_EQ(CreateList(session), kNews);
    EXPECT_EQ(ReadListFile(kNews), QByteArray());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(ListManagementTest, NewInAVanishedFolderIsReported) {
    RemoveListsFolder();
    profile.Boxes.Inputs = {kNews};
    EXPECT_EQ(CreateList(session), kNews);
    EXPECT_EQ(Errors(), QStringList(u"76 in Main.cmdFileNew - Path not found"_s));
}

TEST_F(ListManagementTest, ANameThatIsTooLongIsReported) {
    profile.Boxes.Inputs = {QString(300, u'x')};
    CreateList(session);
    EXPECT_EQ(Errors().size(), 1);
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(ListManagementTest, RenameOffersTheOldNameAndRenamesTheFile) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(u"week:ly"_s), u"week ly"_s);
    EXPECT_EQ(profile.Boxes.Asked,
              (std::vector<test::ScriptedDialogs::Input>{
                  {u"Please enter the new name for [news]:"_s, u"Rename List"_s, kNews}}));
    EXPECT_EQ(ListFolder(), (QStringList{u"week ly.vlo"_s}));
    EXPECT_EQ(lists.Open.Name(), u"week ly"_s);
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListManagementTest, TheSameOrAnEmptyNameRenamesNothing) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(kNews), std::nullopt);
    EXPECT_EQ(Rename(QString()), std::nullopt);
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_EQ(lists.Open.Name(), kNews);
}

TEST_F(ListManagementTest, AChangeOfLetterCaseIsARename) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(u"News"_s), u"News"_s);
    EXPECT_EQ(ListFolder(), Words("News.vlo"));
}

TEST_F(ListManagementTest, RenameOntoATakenNameIsReportedAndBothFilesStay) {
    OpenList(kNews, Words("a@x.test"));
    WriteListFile(u"other"_s, FileBytes(Words("o@x.test")));
    EXPECT_EQ(Rename(u"other"_s), std::nullopt);
    EXPECT_EQ(Errors(), QStringList(u"58 in Main.cmdFileRename - File already exists"_s));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("a@x.test")));
    EXPECT_EQ(ReadListFile(u"other"_s), FileBytes(Words("o@x.test")));
    EXPECT_EQ(lists.Open.Name(), kNews);
}

TEST_F(ListManagementTest, RenameOfAMissingFileIsReported) {
    OpenList(kNews, Words("a@x.test"));
    RemoveListsFolder();
    EXPECT_EQ(Rename(u"other"_s), std::nullopt);
    EXPECT_EQ(Errors(), QStringList(u"53 in Main.cmdFileRename - File not found"_s));
    EXPECT_EQ(Current(), Words("a@x.test"));
}

TEST_F(ListManagementTest, RenameAsksAboutUnsavedChangesFirst) {
    OpenList(kNews, Words("a@x.test"));
    lists.Open.Add(u"b@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_EQ(Rename(kNews), std::nullopt);
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("a@x.test b@x.test")));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList(u"Saved [news]"_s));
}

// The list is to be renamed, not to be in two files: what is still unsaved belongs to the new name.
TEST_F(ListManagementTest, ChangesThatStayUnsavedBelongToTheNewName) {
    OpenList(kNews, Words("a@x.test"));
    lists.Open.Add(u"b@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_EQ(Rename(u"other"_s), u"other"_s);
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_EQ(ListFolder(), Words("other.vlo"));
    EXPECT_EQ(ReadListFile(u"other"_s), FileBytes(Words("a@x.test b@x.test")));
}

TEST_F(ListManagementTest, AWantedSaveThatFailsStopsTheRename) {
    OpenList(kNews, Words("a@x.test"));
    lists.Open.Add(u"b@x.test"_s);
    session.Prefs.LogStatus = 0;
    profile.Boxes.Answers = {BoxAnswer::Yes};
    const test::FullDisk disk(3);
    EXPECT_EQ(RenameList(session, lists.Open, kNews), std::nullopt);
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListManagementTest, DeleteAsksAndDeletesTheFile) {
    WriteListFile(kNews, "a@x.test\r\n");
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(DeleteList(session, kNews));
    const std::vector<test::ShownBox> expected{{u"Confirm Delete"_s,
                                                u"Are you sure you want to delete mailing list [news]?"_s,
                                                BoxButtons::YesNo, BoxIcon::Question}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(ListManagementTest, NoDeletesNothing) {
    WriteListFile(kNews, "a@x.test\r\n");
    profile.Boxes.Answers = {BoxAnswer::No};
    EXPECT_FALSE(DeleteList(session, kNews));
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
}

TEST_F(ListManagementTest, AFileThatIsGoneIsReportedWhenDeleted) {
    profile.Boxes.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    EXPECT_FALSE(DeleteList(session, kNews));
    RemoveListsFolder();
    EXPECT_FALSE(DeleteList(session, kNews));
    EXPECT_EQ(Errors(), (QStringList{u"53 in Main.cmdFileDelete - File not found"_s,
                                     u"53 in Main.cmdFileDelete - File not found"_s}));
}

} // namespace
} // namespace varlo
