#include "app/MainWindowFixture.h"
#include "core/StatusLabel.h"

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
    profile.Write(QStringLiteral("lists/alpha.vlo"), "a@x.test\r\n");
    profile.Write(QStringLiteral("lists/beta.vlo"), "c@x.test\r\nb@x.test\r\n");
    profile.Write(QStringLiteral("prefs.ini"), "[Main]\r\nListCurrent=1\r\nListSortBy=0\r\n");
    Load();
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), QStringLiteral("beta"));
    EXPECT_EQ(Rows("lstEmailList_0"), QStringList({QStringLiteral("c@x.test"), QStringLiteral("b@x.test")}));
    EXPECT_EQ(Rows("lstEmailList_1"), QStringList({QStringLiteral("b@x.test"), QStringLiteral("c@x.test")}));
    EXPECT_TRUE(Find<QListView>("lstEmailList_0")->isVisible());
    EXPECT_FALSE(Find<QListView>("lstEmailList_1")->isVisible());
    EXPECT_TRUE(Find<QAction>("mnuSortOrder_0")->isChecked());
    EXPECT_EQ(Find<QLabel>("lblStatusCurrent")->text(), QStringLiteral("2 Current"));
    EXPECT_EQ(profile.StatusTexts.last(), QStringLiteral("Loaded [beta]"));
}

TEST_F(frmMainTest, AListNumberBeyondTheListsOpensTheFirst) {
    profile.Write(QStringLiteral("lists/alpha.vlo"), "a@x.test\r\n");
    profile.Write(QStringLiteral("prefs.ini"), "[Main]\r\nListCurrent=7\r\n");
    Load();
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), QStringLiteral("alpha"));
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
    profile.Write(QStringLiteral("prefs.ini"), "[Main]\r\nAlwaysOnTop=true\r\n");
    Load();
    EXPECT_TRUE(window_->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(Find<QAction>("mnuMainOnTop")->isChecked());
    EXPECT_EQ(Ini("Main", "AlwaysOnTop"), QStringLiteral("True"));
    Find<QAction>("mnuMainOnTop")->trigger();
    EXPECT_FALSE(window_->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(Ini("Main", "AlwaysOnTop"), QStringLiteral("False"));
}

TEST_F(frmMainTest, StatusLoggingAtTheStartFollowsTheMainSection) {
    profile.Write(QStringLiteral("prefs.ini"), "[General]\r\nLogStatus=0\r\n");
    Load();
    EXPECT_EQ(profile.session.Prefs.LogStatus, 1);
    Discard();
    profile.session.AppExiting = false;
    profile.Write(QStringLiteral("prefs.ini"), "[General]\r\nLogStatus=1\r\n[Main]\r\nLogStatus=0\r\n");
    Load();
    EXPECT_EQ(profile.session.Prefs.LogStatus, 0);
}

TEST_F(frmMainTest, ABadSettingIsReportedAndTheLoadCarriesOn) {
    profile.Write(QStringLiteral("lists/alpha.vlo"), "a@x.test\r\n");
    profile.Write(QStringLiteral("prefs.ini"), "[Main]\r\nListCurrent=first\r\n");
    Load();
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(profile.Boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 13 in Main.Load"));
    EXPECT_EQ(Find<QComboBox>("cmbMList")->currentText(), QStringLiteral("alpha"));
}

TEST_F(frmMainTest, EachLogGetsOneHeaderAndOneFooter) {
    Load();
    EXPECT_TRUE(window_->close());
    for (const char *log : {"ErrorLog.txt", "PendingLog.txt"}) {
        const QStringList lines = profile.Log(QString::fromLatin1(log));
        ASSERT_EQ(lines.size(), 4) << log;
        EXPECT_TRUE(lines[0].endsWith(QStringLiteral(" SESSION STARTED"))) << log;
        EXPECT_TRUE(lines[2].endsWith(QStringLiteral(" SESSION ENDED"))) << log;
    }
}

TEST_F(frmMainTest, ClosingStoresTheListTheOrderAndBypass) {
    profile.Write(QStringLiteral("lists/alpha.vlo"), "");
    profile.Write(QStringLiteral("lists/beta.vlo"), "b@x.test\r\n");
    Load();
    Find<QComboBox>("cmbMList")->setCurrentIndex(1);
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    Find<QAction>("mnuSortOrder_0")->trigger();
    EXPECT_TRUE(window_->close());
    EXPECT_TRUE(profile.session.AppExiting);
    EXPECT_EQ(Ini("Main", "ListCurrent"), QStringLiteral("1"));
    EXPECT_EQ(Ini("Main", "ListSortBy"), QStringLiteral("0"));
    EXPECT_EQ(Ini("Main", "BypassPending"), QStringLiteral("1"));
}

class frmMainUnsavedTest : public frmMainTest {
protected:
    frmMainUnsavedTest() {
        profile.Write(QStringLiteral("lists/news.vlo"), "a@x.test\r\n");
        Load();
        TypeAddress(QStringLiteral("b@x.test"));
        Click("cmdCapturesAdd");
    }
    const QString kQuestion = QStringLiteral("The changes to list [news] have not been saved, save now?");
};

TEST_F(frmMainUnsavedTest, CancelKeepsTheWindowAndWritesNothing) {
    const QStringList log = profile.Log(QStringLiteral("StatusLog.txt"));
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(kQuestion));
    EXPECT_EQ(profile.Boxes.Shown[0].Buttons, BoxButtons::YesNoCancel);
    EXPECT_FALSE(QFile::exists(profile.Path(QStringLiteral("prefs.ini")))) << "no setting was written before";
    EXPECT_EQ(profile.Log(QStringLiteral("StatusLog.txt")), log);
}

TEST_F(frmMainUnsavedTest, YesSavesAndCloses) {
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo")), QByteArray("a@x.test\r\nb@x.test\r\n"));
}

TEST_F(frmMainUnsavedTest, NoClosesAndLeavesTheFile) {
    profile.Boxes.Answers = {BoxAnswer::No};
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo")), QByteArray("a@x.test\r\n"));
}

TEST_F(frmMainUnsavedTest, ASaveThatFailsKeepsTheWindow) {
    QDir(profile.Path(QStringLiteral("lists"))).removeRecursively();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_FALSE(window_->close());
    EXPECT_EQ(profile.Boxes.Shown.back().Title, QStringLiteral("varlo-pro Error 76 in Main.WriteList"));
    EXPECT_EQ(Rows("lstEmailList_0"), QStringList({QStringLiteral("a@x.test"), QStringLiteral("b@x.test")}));
}

TEST_F(frmMainUnsavedTest, CtrlSSavesTheOpenList) {
    QTest::keySequence(window_.get(), QKeySequence::Save);
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo")), QByteArray("a@x.test\r\nb@x.test\r\n"));
    EXPECT_EQ(profile.StatusTexts.last(), QStringLiteral("Saved [news]"));
}

TEST_F(frmMainTest, ClosingWithPendingEntriesAsksAndNoKeepsTheWindow) {
    profile.Write(QStringLiteral("lists/news.vlo"), "");
    Load();
    TypeAddress(QStringLiteral("b@x.test"));
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_FALSE(window_->close());
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList(QStringLiteral(
                  "There are unprocessed e-mail addresses on the pending list, exit anyway?")));
    EXPECT_EQ(Rows("lstEmailList_2"), QStringList(QStringLiteral("+b@x.test")));
    EXPECT_TRUE(window_->close());
}

TEST_F(frmMainTest, AClickOnTheStatusShowsTheConsoleWithAllThatWasSaid) {
    profile.Write(QStringLiteral("lists/news.vlo"), "");
    Load();
    QTest::mouseClick(Find<StatusLabel>("lblStatus"), Qt::LeftButton);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto console = std::find_if(windows.begin(), windows.end(), [](QWidget *w) {
        return w->objectName() == QStringLiteral("frmConsole");
    });
    ASSERT_NE(console, windows.end());
    EXPECT_TRUE((*console)->isVisible());
    const QString text = (*console)->findChild<QPlainTextEdit *>()->toPlainText();
    EXPECT_TRUE(text.contains(QStringLiteral("Loading [news]..."))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Loaded [news]")));
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
