// Creating, renaming and deleting profiles in the profile manager.

#include "app/ProfileManagerFixture.h"
#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST_F(frmProfileTest, NewAsksForAName) {
    Load();
    boxes_.Inputs = {u"Work"_s};
    Click("cmdProfileNew");
    EXPECT_EQ(boxes_.Asked,
              (std::vector<ScriptedDialogs::Input>{
                  {u"Please enter a name for the new profile:"_s, u"Create New Profile"_s, QString()}}));
    EXPECT_EQ(Folders(), QStringList{u"Work"_s});
    EXPECT_EQ(Selected(), u"Work"_s);
    EXPECT_EQ(Enabled(), kAllEnabled);
}

TEST_F(frmProfileTest, NewMakesNothingButTheFolder) {
    Load();
    boxes_.Inputs = {u"Work"_s};
    Click("cmdProfileNew");
    EXPECT_TRUE(QDir(folder_.filePath(u"profiles/Work"_s)).isEmpty());
}

TEST_F(frmProfileTest, NewSelectsTheNewNameAmongOthers) {
    MakeProfiles(kThree);
    Load();
    boxes_.Inputs = {u"Bravo"_s};
    Click("cmdProfileNew");
    EXPECT_EQ(Listed(), (QStringList{u"Alpha"_s, u"Beta"_s, u"Bravo"_s, u"Gamma"_s}));
    EXPECT_EQ(Selected(), u"Bravo"_s);
}

TEST_F(frmProfileTest, ForbiddenCharactersBecomeBlanks) {
    Load();
    boxes_.Inputs = {u"a/b:c"_s};
    Click("cmdProfileNew");
    EXPECT_EQ(Folders(), QStringList{u"a b c"_s});
    EXPECT_EQ(Selected(), u"a b c"_s);
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
    boxes_.Inputs = {u"Beta"_s};
    Click("cmdProfileNew");
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 75 in Profile.New"_s});
    EXPECT_EQ(Listed(), kThree);
    EXPECT_EQ(Selected(), u"Gamma"_s);
    const QByteArray log = ReadFile(folder_.filePath(u"profiles/ErrorLog.txt"_s));
    EXPECT_TRUE(log.endsWith(" Error 75 in Profile.New - Path/File access error\r\n")) << log.toStdString();
}

TEST_F(frmProfileTest, NamesOfDotsNeverLeaveTheProfilesFolder) {
    MakeProfiles(kThree);
    Load();
    for (const char *name : {".", "..", "../x"}) {
        boxes_.Inputs = {QString::fromLatin1(name)};
        Click("cmdProfileNew");
    }
    EXPECT_EQ(Folders(), (QStringList{u".. x"_s} + kThree));
    EXPECT_EQ(BoxTitles(),
              (QStringList{u"varlo-pro Error 75 in Profile.New"_s, u"varlo-pro Error 75 in Profile.New"_s}));
}

TEST_F(frmProfileTest, NameTooLongForTheFileSystemIsReported) {
    Load();
    boxes_.Inputs = {QString(300, u'x')};
    Click("cmdProfileNew");
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_TRUE(BoxTitles().first().endsWith(u" in Profile.New"_s));
    EXPECT_EQ(Folders(), QStringList());
}

TEST_F(frmProfileTest, RenameAsksWithTheOldName) {
    MakeProfiles(kThree);
    WriteFile(folder_.filePath(u"profiles/Beta/prefs.ini"_s), "[Main]\r\n");
    WriteGlobalIni("0", "1");
    Load();
    boxes_.Inputs = {u"Zulu|"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(boxes_.Asked, (std::vector<ScriptedDialogs::Input>{{u"Please enter the new name for [Beta]:"_s,
                                                                  u"Rename Profile"_s, u"Beta"_s}}));
    EXPECT_EQ(Listed(), (QStringList{u"Alpha"_s, u"Gamma"_s, u"Zulu "_s}));
    EXPECT_EQ(Selected(), u"Zulu "_s);
    EXPECT_EQ(ReadFile(folder_.filePath(u"profiles/Zulu /prefs.ini"_s)), QByteArray("[Main]\r\n"));
    EXPECT_EQ(GlobalIni(), QByteArray("[Profiles]\r\nAutoStart=0\r\nProfileCurrent=1\r\n"))
        << "the remembered position is not touched";
}

TEST_F(frmProfileTest, RenamingToOtherLetterCaseRenames) {
    MakeProfiles({u"Work"_s});
    Load();
    boxes_.Inputs = {u"work"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(Folders(), QStringList{u"work"_s});
    EXPECT_EQ(Selected(), u"work"_s);
}

TEST_F(frmProfileTest, RenamingToTheSameNameDoesNothing) {
    MakeProfiles({u"Work"_s});
    Load();
    // Its folder is gone: a rename would be reported.
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(u"profiles/Work"_s)));
    boxes_.Inputs = {u"Work"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(boxes_.Texts(), QStringList());
    EXPECT_EQ(Listed(), QStringList{u"Work"_s});
}

TEST_F(frmProfileTest, CancelledRenameDoesNothing) {
    MakeProfiles({u"Work"_s});
    Load();
    boxes_.Inputs = {QString()};
    Click("cmdProfileRename");
    EXPECT_EQ(Folders(), QStringList{u"Work"_s});
}

TEST_F(frmProfileTest, RenamingOntoAnExistingNameIsReported) {
    MakeProfiles(kThree);
    Load();
    boxes_.Inputs = {u"Gamma"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 58 in Profile.Rename"_s});
    EXPECT_EQ(Folders(), kThree);
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, RenamingAVanishedProfileIsReported) {
    MakeProfiles(kThree);
    Load();
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(u"profiles/Alpha"_s)));
    boxes_.Inputs = {u"Delta"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 53 in Profile.Rename"_s});
    EXPECT_EQ(Listed(), kThree) << "the list is left as it was";
}

TEST_F(frmProfileTest, RenameWithoutASelectionTouchesNoFolder) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "first");
    Load();
    ASSERT_EQ(List()->currentIndex(), -1);
    boxes_.Shown.clear();
    boxes_.Inputs = {u"Delta"_s};
    Click("cmdProfileRename");
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 53 in Profile.Rename"_s});
    EXPECT_EQ(Folders(), kThree);
}

TEST_F(frmProfileTest, DeleteAsksTwice) {
    MakeProfiles(kThree);
    WriteFile(folder_.filePath(u"profiles/Alpha/prefs.ini"_s), "x");
    ASSERT_TRUE(QDir().mkpath(folder_.filePath(u"profiles/Alpha/lists/deep"_s)));
    Load();
    boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdProfileDelete");
    EXPECT_EQ(boxes_.Texts(), (QStringList{u"Warning: Deleting a profile will remove ALL files and folders "
                                           "relating to that profile.\r\n\r\nAre you sure you want to delete "
                                           "profile [Alpha]?"_s,
                                           u"About to delete profile [Alpha]. Are you completely sure?"_s}));
    EXPECT_EQ(BoxTitles(), (QStringList{u"Confirm Delete"_s, u"Confirm Delete"_s}));
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::YesNo);
    EXPECT_EQ(boxes_.Shown[1].Buttons, BoxButtons::YesNo);
    EXPECT_EQ(boxes_.Destroying, boxes_.Texts()) << "Enter alone deletes nothing";
    EXPECT_EQ(Folders(), (QStringList{u"Beta"_s, u"Gamma"_s}));
    EXPECT_EQ(Selected(), u"Beta"_s);
}

TEST_F(frmProfileTest, DeletingTheLastProfileDisablesTheButtons) {
    MakeProfiles({u"Work"_s});
    Load();
    boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdProfileDelete");
    EXPECT_EQ(Folders(), QStringList());
    EXPECT_EQ(Enabled(), QStringList{u"cmdProfileNew"_s});
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
    EXPECT_EQ(Selected(), u"Gamma"_s);
}

} // namespace
} // namespace varlo::test
