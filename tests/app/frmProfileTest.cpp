#include "app/ProfileManagerFixture.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST_F(frmProfileTest, ShowsItsCaptionsAndToolTips) {
    Load();
    EXPECT_EQ(window_->objectName(), QStringLiteral("frmProfile"));
    EXPECT_EQ(window_->windowTitle(), QStringLiteral("Profile Manager"));
    EXPECT_EQ(Find<QGroupBox>("Frame1")->title(), QStringLiteral("Profiles"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->text(), QStringLiteral("&New"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->toolTip(), QStringLiteral("Create new profile"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->text(), QStringLiteral("&Rename"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->toolTip(), QStringLiteral("Rename profile"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->text(), QStringLiteral("&Delete"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->toolTip(), QStringLiteral("Delete profile"));
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->text(), QStringLiteral("Don't &ask at startup"));
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->toolTip(),
              QStringLiteral("Check this box to skip the profile manager at startup"));
    EXPECT_EQ(Find<QPushButton>("cmdGo")->text(), QStringLiteral("&Start Varlo Pro"));
    EXPECT_FALSE(List()->isEditable());
}

TEST_F(frmProfileTest, LoadPointsTheSettingsAtGlobalIni) {
    Load();
    EXPECT_EQ(session_.INI.File(), folder_.filePath(QStringLiteral("global.ini")));
    EXPECT_EQ(session_.INI.Section(), QStringLiteral("Profiles"));
    EXPECT_FALSE(QFile::exists(session_.INI.File())) << "loading alone writes nothing";
}

TEST_F(frmProfileTest, WithoutProfilesOnlyNewWorks) {
    Load();
    EXPECT_TRUE(QFileInfo(session_.ProfilesFolder()).isDir()) << "the profiles folder is made";
    EXPECT_EQ(Listed(), QStringList());
    EXPECT_EQ(Enabled(), QStringList{QStringLiteral("cmdProfileNew")});
}

TEST_F(frmProfileTest, ListsFoldersAndSkipsFiles) {
    MakeProfiles({QStringLiteral("beta"), QStringLiteral("Alpha"), QStringLiteral(".hidden")});
    WriteFile(folder_.filePath(QStringLiteral("profiles/ErrorLog.txt")), "x");
    Load();
    EXPECT_EQ(Listed(),
              (QStringList{QStringLiteral(".hidden"), QStringLiteral("Alpha"), QStringLiteral("beta")}));
    EXPECT_EQ(Enabled(), kAllEnabled);
}

TEST_F(frmProfileTest, RememberedPositionIsSelected) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "2");
    Load();
    EXPECT_EQ(Selected(), QStringLiteral("Gamma"));
}

TEST_F(frmProfileTest, RememberedPositionIsAPositionAndNotAName) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "1");
    MakeProfiles({QStringLiteral("Aardvark")});
    Load();
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, PositionBeyondTheListSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "5");
    Load();
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, PositionEqualToTheCountSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "3");
    Load();
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, NegativePositionSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "-1");
    Load();
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, PositionThatIsNoNumberIsReported) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "first");
    Load();
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 13 in Profile.Load")});
    EXPECT_EQ(Listed(), kThree);
    EXPECT_EQ(ReadFile(folder_.filePath(QStringLiteral("global.ini"))),
              QByteArray("[Profiles]\r\nAutoStart=0\r\nProfileCurrent=first\r\n"));
}

TEST_F(frmProfileTest, UnreadablePositionNeverOpensAnyProfileByItself) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "first");
    Start();
    EXPECT_EQ(opened_, 0);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(BoxTitles(), (QStringList{QStringLiteral("varlo-pro Error 13 in Profile.Load"),
                                        QStringLiteral("Varlo Pro Error")}));
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
}

TEST_F(frmProfileTest, ProfilesFolderThatCannotBeMadeIsReported) {
    WriteFile(folder_.filePath(QStringLiteral("file")), "x");
    Session inFile(folder_.filePath(QStringLiteral("file/program")), boxes_);
    const frmProfile window(inFile, {});
    EXPECT_EQ(BoxTitles(), QStringList{QStringLiteral("varlo-pro Error 76 in Profile.Load")});
}

TEST_F(frmProfileTest, AutoStartIsShownInTheCheckBox) {
    WriteGlobalIni("1", "0");
    Load();
    EXPECT_TRUE(Find<QCheckBox>("chkAutoStart")->isChecked());
}

TEST_F(frmProfileTest, WithoutSettingsTheBoxIsNotTicked) {
    Load();
    EXPECT_FALSE(Find<QCheckBox>("chkAutoStart")->isChecked());
}

TEST_F(frmProfileTest, StartShowsTheManagerByDefault) {
    MakeProfiles(kThree);
    Start();
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(session_.ProfilePath, QString());
}

TEST_F(frmProfileTest, AutoStartOpensTheRememberedProfileWithoutShowing) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({QStringLiteral("--other")});
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(opened_, 1);
    EXPECT_EQ(session_.ProfilePath, folder_.filePath(QStringLiteral("profiles/Beta")));
}

TEST_F(frmProfileTest, ProfileSwitchShowsTheManagerInSpiteOfAutoStart) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({QStringLiteral("--other"), QStringLiteral("/profile")});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Selected(), QStringLiteral("Beta"));
}

TEST_F(frmProfileTest, ProfileSwitchIsFoundAnywhere) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({QStringLiteral("x=/profiles")});
    EXPECT_EQ(opened_, 0);
}

TEST_F(frmProfileTest, ProfileSwitchInCapitalsIsNotFound) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({QStringLiteral("/PROFILE")});
    EXPECT_EQ(opened_, 1);
}

TEST_F(frmProfileTest, GoOpensTheSelectedProfile) {
    MakeProfiles(kThree);
    Start();
    List()->setCurrentIndex(2);
    Find<QCheckBox>("chkAutoStart")->setChecked(true);
    Click("cmdGo");
    EXPECT_EQ(opened_, 1);
    EXPECT_EQ(session_.ProfilePath, folder_.filePath(QStringLiteral("profiles/Gamma")));
    EXPECT_EQ(iniAtOpening_, QByteArray("[Profiles]\r\nAutoStart=1\r\nProfileCurrent=2\r\n"))
        << "the choice is stored before the main window loads";
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(boxes_.Texts(), QStringList());
}

TEST_F(frmProfileTest, GoStoresAnUntickedBox) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "2");
    Load();
    Find<QCheckBox>("chkAutoStart")->setChecked(false);
    List()->setCurrentIndex(0);
    Click("cmdGo");
    EXPECT_EQ(GlobalIni(), QByteArray("[Profiles]\r\nAutoStart=0\r\nProfileCurrent=0\r\n"));
}

TEST_F(frmProfileTest, EnterStarts) {
    MakeProfiles(kThree);
    Start();
    for (const char *focus : {"cmbProfiles", "chkAutoStart", "cmdProfileDelete"}) {
        opened_ = 0;
        window_->show();
        Find<QWidget>(focus)->setFocus();
        QTest::keyClick(Find<QWidget>(focus), Qt::Key_Return);
        EXPECT_EQ(opened_, 1) << focus;
    }
}

TEST_F(frmProfileTest, VanishedProfileIsReportedAndNothingWritten) {
    MakeProfiles(kThree);
    Start();
    List()->setCurrentIndex(2);
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(QStringLiteral("profiles/Gamma"))));
    Click("cmdGo");
    EXPECT_EQ(boxes_.Shown, (std::vector<ShownBox>{{QStringLiteral("Varlo Pro Error"), kNotFound,
                                                    BoxButtons::Ok, BoxIcon::Critical}}));
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Listed(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("Beta")}));
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
    EXPECT_EQ(GlobalIni(), QByteArray());
}

TEST_F(frmProfileTest, VanishedProfileWithAutoStartShowsTheWindow) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Load();
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(QStringLiteral("profiles/Beta"))));
    bool wasVisible = false;
    boxes_.OnBox = [&](const QString &) { wasVisible = window_->isVisible(); };
    window_->CheckAutoStart();
    EXPECT_TRUE(wasVisible) << "the message stands over the window";
    EXPECT_EQ(boxes_.Texts(), QStringList{kNotFound});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
    EXPECT_EQ(GlobalIni(), QByteArray("[Profiles]\r\nAutoStart=1\r\nProfileCurrent=1\r\n"));
}

TEST_F(frmProfileTest, AutoStartWithoutAnyProfileShowsTheWindow) {
    WriteGlobalIni("1", "0");
    Start();
    EXPECT_EQ(boxes_.Texts(), QStringList{kNotFound});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Enabled(), QStringList{QStringLiteral("cmdProfileNew")});
}

TEST_F(frmProfileTest, MarkupInANameIsShownAsItStands) {
    MakeProfiles({QStringLiteral("<b>x")});
    Load();
    EXPECT_EQ(Listed(), QStringList{QStringLiteral("<b>x")});
    boxes_.Answers = {BoxAnswer::No};
    Click("cmdProfileDelete");
    EXPECT_TRUE(boxes_.Texts().first().endsWith(QStringLiteral("[<b>x]?")));
}

TEST_F(frmProfileTest, LongestNameDoesNotWidenTheWindow) {
    MakeProfiles({QStringLiteral("a")});
    Load();
    const int width = window_->sizeHint().width();
    MakeProfiles({QString(255, u'W')});
    Load();
    EXPECT_EQ(window_->sizeHint().width(), width);
}

} // namespace
} // namespace varlo::test
