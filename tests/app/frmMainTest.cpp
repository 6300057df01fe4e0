#include "app/MainWindowFixture.h"
#include "core/Literals.h"
#include "core/Settings.h"
#include "core/StatusLabel.h"
#include "support/KnownSettings.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST_F(frmMainTest, OpensTheListLastUsed) {
    profile.Write(u"lists/alpha.vlo"_s, "a@x.test\r\n");
    profile.Write(u"lists/beta.vlo"_s, "c@x.test\r\nb@x.test\r\n");
    profile.Write(u"prefs.ini"_s, "[Main]\r\nListCurrent=1\r\nListSortBy=0\r\n");
    Load();
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), u"beta"_s);
    EXPECT_EQ(Rows("lstEmailList_0"), QStringList({u"c@x.test"_s, u"b@x.test"_s}));
    EXPECT_EQ(Rows("lstEmailList_1"), QStringList({u"b@x.test"_s, u"c@x.test"_s}));
    EXPECT_TRUE(Find<QListView>("lstEmailList_0")->isVisible());
    EXPECT_FALSE(Find<QListView>("lstEmailList_1")->isVisible());
    EXPECT_TRUE(Find<QAction>("mnuSortOrder_0")->isChecked());
    EXPECT_EQ(Find<QLabel>("lblStatusCurrent")->text(), u"2 Current"_s);
    EXPECT_EQ(profile.StatusTexts.last(), u"Loaded [beta]"_s);
}

TEST_F(frmMainTest, AListNumberBeyondTheListsOpensTheFirst) {
    profile.Write(u"lists/alpha.vlo"_s, "a@x.test\r\n");
    profile.Write(u"prefs.ini"_s, "[Main]\r\nListCurrent=7\r\n");
    Load();
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), u"alpha"_s);
    EXPECT_TRUE(Find<QListView>("lstEmailList_1")->isVisible()) << "alphabetical unless set otherwise";
}

TEST_F(frmMainTest, WithoutListsNoListIsOpened) {
    Load();
    EXPECT_EQ(Find<QComboBox>("cmbMList")->count(), 0);
    EXPECT_FALSE(Find<QComboBox>("cmbMList")->isEnabled());
    EXPECT_FALSE(Find<QLineEdit>("txtAddEmail")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("cmdFileRename")->isEnabled());
    EXPECT_TRUE(Find<QPushButton>("cmdFileNew")->isEnabled());
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(frmMainTest, AlwaysOnTopIsTakenUpAtTheStart) {
    profile.Write(u"prefs.ini"_s, "[Main]\r\nAlwaysOnTop=true\r\n");
    Load();
    EXPECT_TRUE(window_->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(Find<QAction>("mnuMainOnTop")->isChecked());
    EXPECT_EQ(Ini("Main", "AlwaysOnTop"), u"True"_s);
    Find<QAction>("mnuMainOnTop")->trigger();
    EXPECT_FALSE(window_->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(Ini("Main", "AlwaysOnTop"), u"False"_s);
}

TEST_F(frmMainTest, StatusLoggingAtTheStartFollowsTheMainSection) {
    profile.Write(u"prefs.ini"_s, "[General]\r\nLogStatus=0\r\n");
    Load();
    EXPECT_EQ(profile.session.Prefs.LogStatus, 1);
    Discard();
    profile.session.AppExiting = false;
    profile.Write(u"prefs.ini"_s, "[General]\r\nLogStatus=1\r\n[Main]\r\nLogStatus=0\r\n");
    Load();
    EXPECT_EQ(profile.session.Prefs.LogStatus, 0);
}

// One file for each setting, so that no other can stand in for it. What is read at its use is not loaded.
TEST_F(frmMainTest, TheStartLoadsEverySettingThatIsHeld) {
    profile.Write(u"lists/alpha.vlo"_s, "a@x.test\r\n");
    profile.Write(u"lists/beta.vlo"_s, "b@x.test\r\n");
    for (const Setting &setting : Settings::Table()) {
        const auto known = std::find_if(KnownSettings().begin(), KnownSettings().end(), [&](const auto &row) {
            return !qstrcmp(row.Section, setting.Section) && !qstrcmp(row.Key, setting.Key);
        });
        ASSERT_NE(known, KnownSettings().end()) << setting.Key;
        if (qstrcmp(known->How, "held") != 0 && qstrcmp(known->Section, "Main") != 0)
            continue;
        profile.session.AppExiting = false;
        profile.session.Prefs = Settings::Defaults();
        profile.Write(u"prefs.ini"_s,
                      QByteArray("[") + known->Section + "]\r\n" + known->Key + "=" + known->Sample + "\r\n");
        Load();
        EXPECT_EQ(TextOf(profile.session.Prefs, setting), QString::fromUtf8(known->Sample)) << known->Key;
        Discard();
    }
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(frmMainTest, BypassIsTickedAsItWasLeft) {
    profile.Write(u"prefs.ini"_s, "[Main]\r\nBypassPending=1\r\n");
    Load();
    EXPECT_TRUE(Find<QCheckBox>("chkInstantAdd")->isChecked());
    Discard();
    profile.session.AppExiting = false;
    profile.Write(u"prefs.ini"_s, "[Main]\r\nBypassPending=0\r\n");
    Load();
    EXPECT_FALSE(Find<QCheckBox>("chkInstantAdd")->isChecked());
}

TEST_F(frmMainTest, ABadSettingIsReportedAndTheLoadCarriesOn) {
    profile.Write(u"lists/alpha.vlo"_s, "a@x.test\r\n");
    profile.Write(u"prefs.ini"_s, "[Main]\r\nListCurrent=first\r\n");
    Load();
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Main.Load"_s);
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), u"alpha"_s);
}

TEST_F(frmMainTest, EachLogGetsOneHeaderAndOneFooter) {
    Load();
    EXPECT_TRUE(window_->close());
    for (const char *log : {"ErrorLog.txt", "PendingLog.txt", "StatusLog.txt"}) {
        const QStringList lines = profile.Log(QString::fromLatin1(log));
        ASSERT_EQ(lines.size(), 4) << log;
        EXPECT_TRUE(lines[0].endsWith(u" SESSION STARTED"_s)) << log;
        EXPECT_TRUE(lines[2].endsWith(u" SESSION ENDED"_s)) << log;
    }
}

TEST_F(frmMainTest, AProfileThatIsAnEmptyFolderGetsItsFoldersBeforeTheMarkers) {
    QDir(profile.session.ProfilePath).removeRecursively();
    Load();
    EXPECT_TRUE(profile.Boxes.Shown.empty());
    for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
        EXPECT_TRUE(profile.Log(QString::fromLatin1(log)).value(0).endsWith(u" SESSION STARTED"_s)) << log;
    EXPECT_FALSE(QFile::exists(profile.Folder.filePath(u"profiles/ErrorLog.txt"_s)));
}

TEST_F(frmMainTest, ClosingStoresTheListTheOrderAndBypass) {
    profile.Write(u"lists/alpha.vlo"_s, "");
    profile.Write(u"lists/beta.vlo"_s, "b@x.test\r\n");
    Load();
    Find<QComboBox>("cmbMList")->setCurrentIndex(1);
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    Find<QAction>("mnuSortOrder_0")->trigger();
    EXPECT_TRUE(window_->close());
    EXPECT_TRUE(profile.session.AppExiting);
    EXPECT_EQ(Ini("Main", "ListCurrent"), u"1"_s);
    EXPECT_EQ(Ini("Main", "ListSortBy"), u"0"_s);
    EXPECT_EQ(Ini("Main", "BypassPending"), u"1"_s);
}

class frmMainUnsavedTest : public frmMainTest {
protected:
    frmMainUnsavedTest() {
        profile.Write(u"lists/news.vlo"_s, "a@x.test\r\n");
        Load();
        TypeAddress(u"b@x.test"_s);
        Click("cmdCapturesAdd");
    }
    const QString kQuestion = u"The changes to list [news] have not been saved, save now?"_s;
};

TEST_F(frmMainUnsavedTest, CancelKeepsTheWindowAndWritesNothing) {
    const QStringList log = profile.Log(u"StatusLog.txt"_s);
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(kQuestion));
    EXPECT_EQ(profile.Boxes.Shown[0].Buttons, BoxButtons::YesNoCancel);
    EXPECT_FALSE(QFile::exists(profile.Path(u"prefs.ini"_s))) << "no setting was written before";
    EXPECT_EQ(profile.Log(u"StatusLog.txt"_s), log);
}

TEST_F(frmMainUnsavedTest, YesSavesAndCloses) {
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\nb@x.test\r\n"));
}

TEST_F(frmMainUnsavedTest, NoClosesAndLeavesTheFile) {
    profile.Boxes.Answers = {BoxAnswer::No};
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\n"));
}

TEST_F(frmMainUnsavedTest, ASaveThatFailsKeepsTheWindow) {
    QDir(profile.Path(u"lists"_s)).removeRecursively();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_FALSE(window_->close());
    EXPECT_EQ(profile.Boxes.Shown.back().Title, u"varlo-pro Error 76 in Main.WriteList"_s);
    EXPECT_EQ(Rows("lstEmailList_0"), QStringList({u"a@x.test"_s, u"b@x.test"_s}));
}

TEST_F(frmMainUnsavedTest, CtrlSSavesTheOpenList) {
    QTest::keySequence(window_.get(), QKeySequence::Save);
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\nb@x.test\r\n"));
    EXPECT_EQ(profile.StatusTexts.last(), u"Saved [news]"_s);
}

TEST_F(frmMainTest, ClosingWithPendingEntriesAsksAndNoKeepsTheWindow) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    TypeAddress(u"b@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_FALSE(window_->close());
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList(u"There are unprocessed e-mail addresses on the pending list, exit anyway?"_s));
    EXPECT_EQ(profile.Boxes.Destroying, profile.Boxes.Texts()) << "Enter alone throws no request away";
    EXPECT_EQ(Rows("lstEmailList_2"), QStringList(u"+b@x.test"_s));
    EXPECT_TRUE(window_->close());
}

TEST_F(frmMainUnsavedTest, TheListIsAskedAboutFirstAndThenTheRequests) {
    TypeAddress(u"c@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_TRUE(window_->close());
    const std::vector<ShownBox> expected{
        {u"Varlo Pro"_s, kQuestion, BoxButtons::YesNoCancel, BoxIcon::Question},
        {u"Varlo Pro"_s, u"There are unprocessed e-mail addresses on the pending list, exit anyway?"_s,
         BoxButtons::YesNo, BoxIcon::Question}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
}

TEST_F(frmMainTest, AClickOnTheStatusShowsTheConsoleWithAllThatWasSaid) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    QTest::mouseClick(Find<StatusLabel>("lblStatus"), Qt::LeftButton);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto console = std::find_if(windows.begin(), windows.end(),
                                      [](QWidget *w) { return w->objectName() == u"frmConsole"_s; });
    ASSERT_NE(console, windows.end());
    EXPECT_TRUE((*console)->isVisible());
    const QString text = (*console)->findChild<QPlainTextEdit *>()->toPlainText();
    EXPECT_TRUE(text.contains(u"Loading [news]..."_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Loaded [news]"_s));
}

TEST_F(frmMainTest, SizesAndSplitterAreRemembered) {
    Load();
    window_->resize(901, 555);
    EXPECT_TRUE(window_->close());
    profile.session.AppExiting = false;
    Load();
    EXPECT_EQ(window_->size(), QSize(901, 555));
}

} // namespace
} // namespace varlo::test
