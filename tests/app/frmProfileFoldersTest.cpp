// Creating, renaming and deleting profiles in the profile manager.

#include "app/ProfileManagerFixture.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST_F(frmProfileTest, NewAsksForAName) {
    Load();
    boxes_.Inputs = {QStringLiteral("Work")};
    Click("cmdProfileNew");
    EXPECT_EQ(boxes_.Asked, (std::vector<ScriptedDialogs::Input>{
                                {QStringLiteral("Please enter a name for the new profile:"),
                                 QStringLiteral("Create New Profile"), QString()}}));
    EXPECT_EQ(Folders(), QStringList{QStringLiteral("Work")});
    EXPECT_EQ(Selected(), QStringLiteral("Work"));
    EXPECT_EQ(Enabled(), kAllEnabled);
}

TEST_F(frmProfileTest, NewMakesNothingButTheFolder) {
    Load();
    boxes_.Inputs = {QStringLiteral("Work")};
    Click("cmdProfileNew");
    EXPECT_TRUE(QDir(folder_.filePath(QStringLiteral("profiles/Work"))).isEmpty());
}

TEST_F(frmProfileTest, NewSelectsTheNewNameAmongOthers) {
    MakeProfiles(kThree);
    Load();
    boxes_.Inputs = {QStringLiteral("Bravo")};
    Click("cmdProfileNew");
    EXPECT_EQ(Listed(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Bravo"),
                                     QStringLiteral("Gamma")}));
    EXPECT_EQ(Selected(), QStringLiteral("Bravo"));
}

TEST_F(frmProfileTest, ForbiddenCharactersBecomeBlanks) {
    Load();
    boxes_.Inputs = {QStringLiteral("a/b:c")};
    Click("cmdProfileNew");
    EXPECT_EQ(Folders(), QStringList{QStringLiteral("a b c")});
    EXPECT_EQ(Selected(), QStringLiteral("a b c"));
}

TEST_F(frmProfileTest, NameOfForbiddenCharactersOnlyIsANameOfBlanks) {
    Load();
    boxes_.Inputs = {kForbiddenInNames};
    Click("cmdProfileNew");
    EXPECT_EQ(Folders(), QStringList{QString(9, u' ')});
    EXPECT_EQ(Selected(), QString(9, u' '));
    Click("cmdGo");
    EXPECT_EQ(opened_, 1);
}

TEST_F(frmProfileTest, EmptyAnswerCreatesNothing) {
    Load();
    boxes_.Inputs = {QString()};
    Click("cmdProfileNew");
    EXPECT_EQ(Folders(), QStringList());
    EXPECT_EQ(boxes_.Texts(), QStringList());
}

TEST_F(frmProfileTest, CreatingAnExistingNameIsReported) {
    MakeProfiles(kThree);
    Load();
    List()->setCurrentIndex(2);
    boxes_.Inputs = {QStringLiteral("Beta")};
    Click("cmdProfileNew");
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 75 in Profile.New")});
    EXPECT_EQ(Listed(), kThree);
    EXPECT_EQ(Selected(), QStringLiteral("Gamma"));
    const QByteArray log = ReadFile(folder_.filePath(QStringLiteral("profiles/ErrorLog.txt")));
    EXPECT_TRUE(log.endsWith(" Error 75 in Profile.New - Path/File access error\r\n")) << log.toStdString();
}

TEST_F(frmProfileTest, NamesOfDotsNeverLeaveTheProfilesFolder) {
    MakeProfiles(kThree);
    Load();
    for (const char *name : {".", "..", "../x"}) {
        boxes_.Inputs = {QString::fromLatin1(name)};
        Click("cmdProfileNew");
    }
    EXPECT_EQ(Folders(), (QStringList{QStringLiteral(".. x")} + kThree));
    EXPECT_EQ(BoxTitles(), (QStringList{QStringLiteral("varlo-pro Error 75 in Profile.New"),
                                        QStringLiteral("varlo-pro Error 75 in Profile.New")}));
}

TEST_F(frmProfileTest, NameTooLongForTheFileSystemIsReported) {
    Load();
    boxes_.Inputs = {QString(300, u'x')};
    Click("cmdProfileNew");
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_TRUE(BoxTitles().first().endsWith(QStringLiteral(" in Profile.New")));
    EXPECT_EQ(Folders(), QStringList());
}

TEST_F(frmProfileTest, RenameAsksWithTheOldName) {
    MakeProfiles(kThree);
    WriteFile(folder_.filePath(QStringLiteral("profiles/Beta/prefs.ini")), "[Main]\r\n");
    WriteGlobalIni("0", "1");
    Load();
    boxes_.Inputs = {QStringLiteral("Zulu|")};
    Click("cmdProfileRename");
    EXPECT_EQ(boxes_.Asked, (std::vector<ScriptedDialogs::Input>{
                                {QStringLiteral("Please enter the new name for [Beta]:"),
                                 QStringLiteral("Rename Profile"), QStringLiteral("Beta")}}));
    EXPECT_EQ(Listed(),
              (QStringList{QStringLiteral("Alpha"), QStringLiteral("Gamma"), QStringLiteral("Zulu ")}));
    EXPECT_EQ(Selected(), QStringLiteral("Zulu "));
    EXPECT_EQ(ReadFile(folder_.filePath(QStringLiteral("profiles/Zulu /prefs.ini"))),
              QByteArray("[Main]\r\n"));
    EXPECT_EQ(GlobalIni(), QByteArray("[Profiles]\r\nAutoStart=0\r\nProfileCurrent=1\r\n"))
        << "the remembered position is not touched";
}

TEST_F(frmProfileTest, RenamingToOtherLetterCaseRenames) {
    MakeProfiles({QStringLiteral("Work")});
    Load();
    boxes_.Inputs = {QStringLiteral("work")};
    Click("cmdProfileRename");
    EXPECT_EQ(Folders(), QStringList{QStringLiteral("work")});
    EXPECT_EQ(Selected(), QStringLiteral("work"));
}

TEST_F(frmProfileTest, RenamingToTheSameNameDoesNothing) {
    MakeProfiles({QStringLiteral("Work")});
    Load();
    // Its folder is gone: a rename would be reported.
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(QStringLiteral("profiles/Work"))));
    boxes_.Inputs = {QStringLiteral("Work")};
    Click("cmdProfileRename");
    EXPECT_EQ(boxes_.Texts(), QStringList());
    EXPECT_EQ(Listed(), QStringList{QStringLiteral("Work")});
}

TEST_F(frmProfileTest, CancelledRenameDoesNothing) {
    MakeProfiles({QStringLiteral("Work")});
    Load();
    boxes_.Inputs = {QString()};
    Click("cmdProfileRename");
    EXPECT_EQ(Folders(), QStringList{QStringLiteral("Work")});
}

TEST_F(frmProfileTest, RenamingOntoAnExistingNameIsReported) {
    MakeProfiles(kThree);
    Load();
    boxes_.Inputs = {QStringLiteral("Gamma")};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 58 in Profile.Rename")});
    EXPECT_EQ(Folders(), kThree);
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, RenamingAVanishedProfileIsReported) {
    MakeProfiles(kThree);
    Load();
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(QStringLiteral("profiles/Alpha"))));
    boxes_.Inputs = {QStringLiteral("Delta")};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 53 in Profile.Rename")});
    EXPECT_EQ(Listed(), kThree) << "the list is left as it was";
}

TEST_F(frmProfileTest, RenameWithoutASelectionTouchesNoFolder) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "first");
    Load();
    ASSERT_EQ(List()->currentIndex(), -1);
    boxes_.Shown.clear();
    boxes_.Inputs = {QStringLiteral("Delta")};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 53 in Profile.Rename")});
    EXPECT_EQ(Folders(), kThree);
}

TEST_F(frmProfileTest, DeleteAsksTwice) {
    MakeProfiles(kThree);
    WriteFile(folder_.filePath(QStringLiteral("profiles/Alpha/prefs.ini")), "x");
    ASSERT_TRUE(QDir().mkpath(folder_.filePath(QStringLiteral("profiles/Alpha/lists/deep"))));
    Load();
    boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdProfileDelete");
    EXPECT_EQ(boxes_.Texts(),
              (QStringList{QStringLiteral("Warning: Deleting a profile will remove ALL files and folders "
                                          "relating to that profile.\r\n\r\nAre you sure you want to delete "
                                          "profile [Alpha]?"),
                           QStringLiteral("About to delete profile [Alpha]. Are you completely sure?")}));
    EXPECT_EQ(BoxTitles(), (QStringList{QStringLiteral("Confirm Delete"), QStringLiteral("Confirm Delete")}));
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::YesNo);
    EXPECT_EQ(boxes_.Shown[1].Buttons, BoxButtons::YesNo);
    EXPECT_EQ(Folders(), (QStringList{QStringLiteral("Beta"), QStringLiteral("Gamma")}));
    EXPECT_EQ(Selected(), QStringLiteral("Beta"));
}

TEST_F(frmProfileTest, DeletingTheLastProfileDisablesTheButtons) {
    MakeProfiles({QStringLiteral("Work")});
    Load();
    boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdProfileDelete");
    EXPECT_EQ(Folders(), QStringList());
    EXPECT_EQ(Enabled(), QStringList{QStringLiteral("cmdProfileNew")});
}

TEST_F(frmProfileTest, NoToTheFirstQuestionKeepsTheProfile) {
    MakeProfiles(kThree);
    Load();
    boxes_.Answers = {BoxAnswer::No};
    Click("cmdProfileDelete");
    EXPECT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(Folders(), kThree);
}

TEST_F(frmProfileTest, NoToTheSecondQuestionKeepsTheProfile) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "2");
    Load();
    boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::No};
    Click("cmdProfileDelete");
    EXPECT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_EQ(Folders(), kThree);
    EXPECT_EQ(Selected(), QStringLiteral("Gamma"));
}

} // namespace
} // namespace varlo::test
