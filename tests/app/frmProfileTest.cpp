#include "app/ProfileManagerFixture.h"
#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST_F(frmProfileTest, ShowsItsCaptionsAndToolTips) {
    Load();
    EXPECT_EQ(window_->objectName(), u"frmProfile"_s);
    EXPECT_EQ(window_->windowTitle(), u"Profile Manager"_s);
    EXPECT_EQ(Find<QGroupBox>("Frame1")->title(), u"Profiles"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->text(), u"&New"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->toolTip(), u"Create new profile"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->text(), u"&Rename"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->toolTip(), u"Rename profile"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->text(), u"&Delete"_s);
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->toolTip(), u"Delete profile"_s);
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->text(), u"Don't &ask at startup"_s);
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->toolTip(),
              u"Check this box to skip the profile manager at startup"_s);
    EXPECT_EQ(Find<QPushButton>("cmdGo")->text(), u"&Start Varlo Pro"_s);
    EXPECT_FALSE(List()->isEditable());
}

TEST_F(frmProfileTest, LoadPointsTheSettingsAtGlobalIni) {
    Load();
    EXPECT_EQ(session_.INI.File(), folder_.filePath(u"global.ini"_s));
    EXPECT_EQ(session_.INI.Section(), u"Profiles"_s);
    EXPECT_FALSE(QFile::exists(session_.INI.File())) << "loading alone writes nothing";
}

TEST_F(frmProfileTest, WithoutProfilesOnlyNewWorks) {
    Load();
    EXPECT_TRUE(QFileInfo(session_.ProfilesFolder()).isDir()) << "the profiles folder is made";
    EXPECT_EQ(Listed(), QStringList());
    EXPECT_EQ(Enabled(), QStringList{u"cmdProfileNew"_s});
}

TEST_F(frmProfileTest, ListsFoldersAndSkipsFiles) {
    MakeProfiles({u"beta"_s, u"Alpha"_s, u".hidden"_s});
    WriteFile(folder_.filePath(u"profiles/ErrorLog.txt"_s), "x");
    Load();
    EXPECT_EQ(Listed(), (QStringList{u".hidden"_s, u"Alpha"_s, u"beta"_s}));
    EXPECT_EQ(Enabled(), kAllEnabled);
}

TEST_F(frmProfileTest, RememberedPositionIsSelected) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "2");
    Load();
    EXPECT_EQ(Selected(), u"Gamma"_s);
}

TEST_F(frmProfileTest, RememberedPositionIsAPositionAndNotAName) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "1");
    MakeProfiles({u"Aardvark"_s});
    Load();
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, PositionBeyondTheListSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "5");
    Load();
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, PositionEqualToTheCountSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "3");
    Load();
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, NegativePositionSelectsTheFirst) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "-1");
    Load();
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, PositionThatIsNoNumberIsReported) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "first");
    Load();
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 13 in Profile.Load"_s});
    EXPECT_EQ(Listed(), kThree);
    EXPECT_EQ(ReadFile(folder_.filePath(u"global.ini"_s)),
              QByteArray("[Profiles]\r\nAutoStart=0\r\nProfileCurrent=first\r\n"));
}

TEST_F(frmProfileTest, UnreadablePositionNeverOpensAnyProfileByItself) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "first");
    Start();
    EXPECT_EQ(opened_, 0);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(BoxTitles(), (QStringList{u"varlo-pro Error 13 in Profile.Load"_s, u"Varlo Pro Error"_s}));
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, UnreadablePositionOpensTheManagerWithTheFirstSelected) {
    MakeProfiles(kThree);
    WriteGlobalIni("0", "first");
    Start();
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(Selected(), u"Alpha"_s);
}

TEST_F(frmProfileTest, EarlyErrorsReachTheLogInTheProfilesFolder) {
    MakeProfiles(kThree);
    Start();
    List()->setCurrentIndex(2);
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(u"profiles/Gamma"_s)));
    Click("cmdGo");
    EXPECT_EQ(session_.ProfilePath, QString()) << "none is open";
    const QByteArray log = ReadFile(folder_.filePath(u"profiles/ErrorLog.txt"_s));
    EXPECT_TRUE(log.contains(" Error 76 in Profile.Go - Profile not found: ")) << log.toStdString();
    EXPECT_TRUE(log.endsWith("profiles/Gamma\r\n")) << log.toStdString();
}

TEST_F(frmProfileTest, AnErrorAfterASearchInVainIsLoggedToo) {
    WriteGlobalIni("1", "0");
    Start(); // without any profile the path was that of the profiles folder itself
    MakeProfiles({u"Beta"_s});
    boxes_.Inputs = {u"Beta"_s};
    Click("cmdProfileNew");
    const QByteArray log = ReadFile(folder_.filePath(u"profiles/ErrorLog.txt"_s));
    EXPECT_TRUE(log.endsWith(" Error 75 in Profile.New - Path/File access error\r\n")) << log.toStdString();
}

TEST_F(frmProfileTest, WithoutProfilesAHintSaysWhatToDo) {
    Start();
    auto *hint = Find<QLabel>("lblNoProfile");
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), u"There is no profile yet. Press New to create one."_s);
    boxes_.Inputs = {u"Work"_s};
    Click("cmdProfileNew");
    EXPECT_FALSE(hint->isVisible());
}

TEST_F(frmProfileTest, ALongNameHasATooltipWithTheWhole) {
    const QString longName = u"<b>R&D  "_s + QString(200, u'W');
    MakeProfiles({longName, u"short"_s});
    Start();
    EXPECT_EQ(List()->toolTip(), u"<html>"_s + longName.toHtmlEscaped());
    List()->setCurrentIndex(1);
    EXPECT_EQ(List()->toolTip(), QString());
}

TEST_F(frmProfileTest, ProfilesFolderThatCannotBeMadeIsReported) {
    WriteFile(folder_.filePath(u"file"_s), "x");
    Session inFile(folder_.filePath(u"file/program"_s), boxes_);
    const frmProfile window(inFile, {});
    EXPECT_EQ(BoxTitles(), QStringList{u"varlo-pro Error 76 in Profile.Load"_s});
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
    Start({u"--other"_s});
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(opened_, 1);
    EXPECT_EQ(session_.ProfilePath, folder_.filePath(u"profiles/Beta"_s));
}

TEST_F(frmProfileTest, ProfileSwitchShowsTheManagerInSpiteOfAutoStart) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({u"--other"_s, u"/profile"_s});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Selected(), u"Beta"_s);
}

TEST_F(frmProfileTest, ProfileSwitchIsFoundAnywhere) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({u"x=/profiles"_s});
    EXPECT_EQ(opened_, 0);
}

TEST_F(frmProfileTest, ProfileSwitchInCapitalsIsNotFound) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Start({u"/PROFILE"_s});
    EXPECT_EQ(opened_, 1);
}

TEST_F(frmProfileTest, GoOpensTheSelectedProfile) {
    MakeProfiles(kThree);
    Start();
    List()->setCurrentIndex(2);
    Find<QCheckBox>("chkAutoStart")->setChecked(true);
    Click("cmdGo");
    EXPECT_EQ(opened_, 1);
    EXPECT_EQ(session_.ProfilePath, folder_.filePath(u"profiles/Gamma"_s));
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
    for (const char *focus : {"cmbProfiles", "chkAutoStart", "cmdGo"}) {
        opened_ = 0;
        window_->show();
        Find<QWidget>(focus)->setFocus();
        QTest::keyClick(Find<QWidget>(focus), Qt::Key_Return);
        EXPECT_EQ(opened_, 1) << focus;
    }
}

TEST_F(frmProfileTest, EnterPressesTheButtonThatHasTheFocus) {
    MakeProfiles(kThree);
    Start();
    boxes_.Inputs = {u"Delta"_s};
    Find<QWidget>("cmdProfileNew")->setFocus();
    QTest::keyClick(Find<QWidget>("cmdProfileNew"), Qt::Key_Return);
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Selected(), u"Delta"_s);
}

TEST_F(frmProfileTest, VanishedProfileIsReportedAndNothingWritten) {
    MakeProfiles(kThree);
    Start();
    List()->setCurrentIndex(2);
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(u"profiles/Gamma"_s)));
    Click("cmdGo");
    EXPECT_EQ(boxes_.Shown,
              (std::vector<ShownBox>{{u"Varlo Pro Error"_s, kNotFound, BoxButtons::Ok, BoxIcon::Critical}}));
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Listed(), (QStringList{u"Alpha"_s, u"Beta"_s}));
    EXPECT_EQ(Selected(), u"Alpha"_s);
    EXPECT_EQ(GlobalIni(), QByteArray());
}

TEST_F(frmProfileTest, VanishedProfileWithAutoStartShowsTheWindow) {
    MakeProfiles(kThree);
    WriteGlobalIni("1", "1");
    Load();
    ASSERT_TRUE(QDir().rmdir(folder_.filePath(u"profiles/Beta"_s)));
    bool wasVisible = false;
    boxes_.OnBox = [&](const QString &) { wasVisible = window_->isVisible(); };
    window_->CheckAutoStart();
    EXPECT_TRUE(wasVisible) << "the message stands over the window";
    EXPECT_EQ(boxes_.Texts(), QStringList{kNotFound});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(Selected(), u"Alpha"_s);
    EXPECT_EQ(GlobalIni(), QByteArray("[Profiles]\r\nAutoStart=1\r\nProfileCurrent=1\r\n"));
}

TEST_F(frmProfileTest, AutoStartWithoutAnyProfileShowsTheWindow) {
    WriteGlobalIni("1", "0");
    Start();
    EXPECT_EQ(boxes_.Texts(), QStringList{kNotFound});
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(Enabled(), QStringList{u"cmdProfileNew"_s});
}

TEST_F(frmProfileTest, MarkupInANameIsShownAsItStands) {
    MakeProfiles({u"<b>x"_s});
    Load();
    EXPECT_EQ(Listed(), QStringList{u"<b>x"_s});
    boxes_.Answers = {BoxAnswer::No};
    Click("cmdProfileDelete");
    EXPECT_TRUE(boxes_.Texts().first().endsWith(u"[<b>x]?"_s));
}

TEST_F(frmProfileTest, LongestNameDoesNotWidenTheWindow) {
    MakeProfiles({u"a"_s});
    Load();
    const int width = window_->sizeHint().width();
    MakeProfiles({QString(255, u'W')});
    Load();
    EXPECT_EQ(window_->sizeHint().width(), width);
}

} // namespace
} // namespace varlo::test
