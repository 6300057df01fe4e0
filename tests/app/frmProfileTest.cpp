#include "app/frmProfile.h"

#include "core/Session.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "support/ScriptedDialogs.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace varlo::test {
namespace {

const QString kNotFound =
    QStringLiteral("The selected profile could not be found. It may have been renamed, moved or deleted.");

class frmProfileTest : public testing::Test {
protected:
    // A program folder with these profiles; no "profiles" folder at all without any.
    void MakeProfiles(const QStringList &names) {
        for (const QString &name : names)
            ASSERT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("profiles/") + name));
    }
    void WriteGlobalIni(const QByteArray &autoStart, const QByteArray &current) {
        WriteFile(folder_.filePath(QStringLiteral("global.ini")),
                  "[Profiles]\r\nAutoStart=" + autoStart + "\r\nProfileCurrent=" + current + "\r\n");
    }
    QByteArray GlobalIni() const {
        const QString path = folder_.filePath(QStringLiteral("global.ini"));
        return QFile::exists(path) ? ReadFile(path) : QByteArray();
    }
    QStringList Folders() const {
        return QDir(session_.ProfilesFolder())
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    }

    void Load(const QStringList &arguments = {}) {
        window_ = std::make_unique<frmProfile>(session_, arguments);
        QObject::connect(window_.get(), &frmProfile::ProfileOpened, window_.get(), [this] {
            ++opened_;
            iniAtOpening_ = GlobalIni();
        });
    }
    void Start(const QStringList &arguments = {}) {
        Load(arguments);
        window_->CheckAutoStart();
    }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window_->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void Click(const char *button) const { Find<QPushButton>(button)->click(); }
    QComboBox *List() const { return Find<QComboBox>("cmbProfiles"); }
    QStringList Listed() const {
        QStringList names;
        for (int i = 0; i < List()->count(); ++i)
            names << List()->itemText(i);
        return names;
    }
    QString Selected() const { return List()->currentText(); }
    QStringList Enabled() const {
        QStringList names;
        for (const char *name :
             {"cmbProfiles", "cmdProfileNew", "cmdProfileRename", "cmdProfileDelete", "cmdGo"})
            if (Find<QWidget>(name)->isEnabled())
                names << QString::fromLatin1(name);
        return names;
    }
    // The title of the only box shown, or all of them.
    QStringList BoxTitles() const {
        QStringList titles;
        for (const ShownBox &box : boxes_.Shown)
            titles << box.Title;
        return titles;
    }

    QTemporaryDir folder_;
    ScriptedDialogs boxes_;
    Session session_{folder_.path(), boxes_};
    std::unique_ptr<frmProfile> window_;
    int opened_ = 0;
    QByteArray iniAtOpening_;
};

const QStringList kAllEnabled{QStringLiteral("cmbProfiles"), QStringLiteral("cmdProfileNew"),
                              QStringLiteral("cmdProfileRename"), QStringLiteral("cmdProfileDelete"),
                              QStringLiteral("cmdGo")};
const QStringList kThree{QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Gamma")};

TEST_F(frmProfileTest, ShowsItsCaptionsAndToolTips) {
    Load();
    EXPECT_EQ(window_->objectName(), QStringLiteral("frmProfile"));
    EXPECT_EQ(window_->windowTitle(), QStringLiteral("Profile Manager"));
    EXPECT_EQ(Find<QGroupBox>("Frame1")->title(), QStringLiteral("Profiles"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->text(), QStringLiteral("New"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileNew")->toolTip(), QStringLiteral("Create new profile"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->text(), QStringLiteral("Rename"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileRename")->toolTip(), QStringLiteral("Rename profile"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->text(), QStringLiteral("Delete"));
    EXPECT_EQ(Find<QPushButton>("cmdProfileDelete")->toolTip(), QStringLiteral("Delete profile"));
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->text(), QStringLiteral("Don't ask at startup"));
    EXPECT_EQ(Find<QCheckBox>("chkAutoStart")->toolTip(),
              QStringLiteral("Check this box to skip the profile manager at startup"));
    EXPECT_EQ(Find<QPushButton>("cmdGo")->text(), QStringLiteral("Start Varlo Pro"));
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
