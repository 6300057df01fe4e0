#include "lists/ListManagement.h"

#include "lists/ListsFixture.h"
#include "support/FullDisk.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FileBytes;
using test::Words;

const QString kNews = QStringLiteral("news");

class ListManagementTest : public test::ListsFixture {
protected:
    void RemoveListsFolder() {
        ASSERT_TRUE(QDir(session.ProfileFile(QStringLiteral("lists"))).removeRecursively());
    }

    std::optional<QString> Rename(const QString &name) {
        profile.Boxes.Inputs = {name};
        return RenameList(session, lists, kNews);
    }
};

TEST_F(ListManagementTest, NewAsksForANameAndCreatesAnEmptyFile) {
    profile.Boxes.Inputs = {QStringLiteral("Über <b>uns")};
    EXPECT_EQ(CreateList(session), QStringLiteral("Über  b uns"));
    EXPECT_EQ(profile.Boxes.Asked, (std::vector<test::ScriptedDialogs::Input>{
                                       {QStringLiteral("Please enter a name for the new mailing list:"),
                                        QStringLiteral("Create New List"), QString()}}));
    EXPECT_EQ(ReadListFile(QStringLiteral("Über  b uns")), QByteArray());
}

TEST_F(ListManagementTest, EveryCharacterThatNamesCannotHoldBecomesABlank) {
    profile.Boxes.Inputs = {QStringLiteral("a/b"), QStringLiteral("0\\/:*?\"<>|1")};
    EXPECT_EQ(CreateList(session), QStringLiteral("a b"));
    EXPECT_EQ(CreateList(session), QStringLiteral("0         1"));
    EXPECT_EQ(ListFolder(), (QStringList{QStringLiteral("0         1.vlo"), QStringLiteral("a b.vlo")}));
}

TEST_F(ListManagementTest, NamesAreNotTrimmed) {
    profile.Boxes.Inputs = {QStringLiteral(" news "), QStringLiteral("../up")};
    EXPECT_EQ(CreateList(session), QStringLiteral(" news "));
    EXPECT_EQ(CreateList(session), QStringLiteral(".. up"));
    EXPECT_EQ(ListFolder(), (QStringList{QStringLiteral(" news .vlo"), QStringLiteral(".. up.vlo")}));
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
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("76 in Main.cmdFileNew - Path not found")));
}

TEST_F(ListManagementTest, ANameThatIsTooLongIsReported) {
    profile.Boxes.Inputs = {QString(300, u'x')};
    CreateList(session);
    EXPECT_EQ(Errors().size(), 1);
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(ListManagementTest, RenameOffersTheOldNameAndRenamesTheFile) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(QStringLiteral("week:ly")), QStringLiteral("week ly"));
    EXPECT_EQ(profile.Boxes.Asked, (std::vector<test::ScriptedDialogs::Input>{
                                       {QStringLiteral("Please enter the new name for [news]:"),
                                        QStringLiteral("Rename List"), kNews}}));
    EXPECT_EQ(ListFolder(), (QStringList{QStringLiteral("week ly.vlo")}));
    EXPECT_EQ(lists.CurrentListName, QStringLiteral("week ly"));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListManagementTest, TheSameOrAnEmptyNameRenamesNothing) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(kNews), std::nullopt);
    EXPECT_EQ(Rename(QString()), std::nullopt);
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_EQ(lists.CurrentListName, kNews);
}

TEST_F(ListManagementTest, AChangeOfLetterCaseIsARename) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_EQ(Rename(QStringLiteral("News")), QStringLiteral("News"));
    EXPECT_EQ(ListFolder(), Words("News.vlo"));
}

TEST_F(ListManagementTest, RenameOntoATakenNameIsReportedAndBothFilesStay) {
    OpenList(kNews, Words("a@x.test"));
    WriteListFile(QStringLiteral("other"), FileBytes(Words("o@x.test")));
    EXPECT_EQ(Rename(QStringLiteral("other")), std::nullopt);
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("58 in Main.cmdFileRename - File already exists")));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("a@x.test")));
    EXPECT_EQ(ReadListFile(QStringLiteral("other")), FileBytes(Words("o@x.test")));
    EXPECT_EQ(lists.CurrentListName, kNews);
}

TEST_F(ListManagementTest, RenameOfAMissingFileIsReported) {
    OpenList(kNews, Words("a@x.test"));
    RemoveListsFolder();
    EXPECT_EQ(Rename(QStringLiteral("other")), std::nullopt);
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("53 in Main.cmdFileRename - File not found")));
    EXPECT_EQ(Current(), Words("a@x.test"));
}

TEST_F(ListManagementTest, RenameAsksAboutUnsavedChangesFirst) {
    OpenList(kNews, Words("a@x.test"));
    lists.lstEmailList(kChronological).Add(QStringLiteral("b@x.test"));
    lists.MarkUnsaved();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_EQ(Rename(kNews), std::nullopt);
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("a@x.test b@x.test")));
    EXPECT_TRUE(lists.ListSaved);
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Saved [news]")));
}

// The list is to be renamed, not to be in two files: what is still unsaved belongs to the new name.
TEST_F(ListManagementTest, ChangesThatStayUnsavedBelongToTheNewName) {
    OpenList(kNews, Words("a@x.test"));
    lists.lstEmailList(kChronological).Add(QStringLiteral("b@x.test"));
    lists.MarkUnsaved();
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_EQ(Rename(QStringLiteral("other")), QStringLiteral("other"));
    EXPECT_TRUE(lists.PromptSaveList());
    EXPECT_EQ(ListFolder(), Words("other.vlo"));
    EXPECT_EQ(ReadListFile(QStringLiteral("other")), FileBytes(Words("a@x.test b@x.test")));
}

TEST_F(ListManagementTest, AWantedSaveThatFailsStopsTheRename) {
    OpenList(kNews, Words("a@x.test"));
    lists.lstEmailList(kChronological).Add(QStringLiteral("b@x.test"));
    lists.MarkUnsaved();
    session.Prefs.LogStatus = 0;
    profile.Boxes.Answers = {BoxAnswer::Yes};
    const test::FullDisk disk(3);
    EXPECT_EQ(RenameList(session, lists, kNews), std::nullopt);
    EXPECT_EQ(ListFolder(), Words("news.vlo"));
    EXPECT_FALSE(lists.ListSaved);
}

TEST_F(ListManagementTest, DeleteAsksAndDeletesTheFile) {
    WriteListFile(kNews, "a@x.test\r\n");
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(DeleteList(session, kNews));
    const std::vector<test::ShownBox> expected{
        {QStringLiteral("Confirm Delete"),
         QStringLiteral("Are you sure you want to delete mailing list [news]?"), BoxButtons::YesNo,
         BoxIcon::Question}};
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
    EXPECT_EQ(Errors(), (QStringList{QStringLiteral("53 in Main.cmdFileDelete - File not found"),
                                     QStringLiteral("53 in Main.cmdFileDelete - File not found")}));
}

} // namespace
} // namespace varlo
