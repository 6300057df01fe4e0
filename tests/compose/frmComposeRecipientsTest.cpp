// The recipients that the compose window assembles from a choice in cmbTo.

#include "compose/ComposeFixture.h"
#include "compose/frmCompRecip.h"

#include <QListWidget>
#include <QPushButton>

namespace varlo {
namespace {

const QString kSeparator = QString(61, u'-');

class frmComposeRecipientsTest : public test::ComposeFixture {
protected:
    QStringList Entries() const {
        QStringList entries;
        for (int i = 0; i < To()->count(); ++i)
            entries << To()->itemText(i);
        return entries;
    }
    // Chooses "Select Lists..." and answers the dialog: selects these rows and presses OK, or closes it.
    void SelectLists(const QList<int> &rows, bool ok = true) {
        const test::WhenDialog<frmCompRecip> answer([&](frmCompRecip &dialog) {
            for (int row : rows)
                test::Find<QListWidget>(&dialog, "lstRecipients")->item(row)->setSelected(true);
            if (ok)
                test::Find<QPushButton>(&dialog, "cmdOK")->click();
            else
                dialog.close();
        });
        ChooseTo("Select Lists...");
    }
    void TwoLists() {
        List("a", "one@x.test\r\nTWO@x.test\r\n");
        List("b", "two@x.test\r\nthree@x.test\r\nfour@x.test\r\n");
    }
};

TEST_F(frmComposeRecipientsTest, TheSourcesFollowTheLists) {
    List("news", "");
    List("alpha", "");
    Open();
    EXPECT_EQ(Entries(), QStringList({"news", "alpha", kSeparator, "All Mailing Lists", "Select Lists..."}));
    EXPECT_EQ(To()->currentIndex(), -1);
    EXPECT_EQ(Recipients(), "0 Recipients");
}

TEST_F(frmComposeRecipientsTest, CurrentSelectionIsThereWhenTheMainWindowHasOne) {
    host.Selected = QStringList{"x@x.test"};
    Open();
    EXPECT_EQ(Entries(),
              QStringList({kSeparator, "All Mailing Lists", "Select Lists...", "Current Selection"}));
}

TEST_F(frmComposeRecipientsTest, TheCurrentListIsChosenWhenTheWindowOpens) {
    TwoLists();
    host.Current = "b";
    Open();
    EXPECT_EQ(To()->currentText(), "b");
    EXPECT_EQ(Recipients(), "3 Recipients");
    EXPECT_EQ(To()->toolTip(), "b");
}

TEST_F(frmComposeRecipientsTest, OneListIsLoadedWhenItIsChosen) {
    TwoLists();
    Open();
    ChooseTo("a");
    EXPECT_EQ(Recipients(), "2 Recipients");
    EXPECT_EQ(To()->toolTip(), "a");
    EXPECT_EQ(Label("lblStatus"), "Recipients loaded");
    ASSERT_EQ(profile.ConsoleLines.size(), 2);
    EXPECT_TRUE(profile.ConsoleLines[0].endsWith(" | Loading recipients..."));
    EXPECT_TRUE(profile.ConsoleLines[1].endsWith(" | Recipients loaded"));
    EXPECT_EQ(profile.StatusTexts, QStringList());
}

TEST_F(frmComposeRecipientsTest, ChangesOfTheFileAreSeenWhenTheListIsChosenAgain) {
    TwoLists();
    Open();
    ChooseTo("a");
    profile.Write("lists/a.vlo", "one@x.test\r\n");
    EXPECT_EQ(Recipients(), "2 Recipients");
    ChooseTo("a");
    EXPECT_EQ(Recipients(), "1 Recipients");
}

TEST_F(frmComposeRecipientsTest, AllListsAreLoadedOneBehindTheOther) {
    TwoLists();
    Open();
    ChooseTo("All Mailing Lists");
    EXPECT_EQ(Recipients(), "5 Recipients");
    EXPECT_EQ(To()->toolTip(), "a, b");
}

TEST_F(frmComposeRecipientsTest, AllListsOfNoneAreNoRecipients) {
    Open();
    ChooseTo("All Mailing Lists");
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(To()->toolTip(), "");
}

TEST_F(frmComposeRecipientsTest, TheSeparatorLoadsNothing) {
    TwoLists();
    host.Current = "a";
    Open();
    ChooseTo(kSeparator);
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(To()->toolTip(), "");
}

TEST_F(frmComposeRecipientsTest, AnEmptyFileAddsNothingAndABlankLineCounts) {
    List("empty", "");
    List("blank", "\r\na@x.test\r\n\r\n");
    Open();
    ChooseTo("empty");
    EXPECT_EQ(Recipients(), "0 Recipients");
    ChooseTo("blank");
    EXPECT_EQ(Recipients(), "3 Recipients");
}

TEST_F(frmComposeRecipientsTest, SelectedListsAreLoadedInTheirOrder) {
    TwoLists();
    List("c", "five@x.test\r\n");
    Open();
    SelectLists({2, 0});
    EXPECT_EQ(Recipients(), "3 Recipients");
    EXPECT_EQ(To()->toolTip(), "a, c");
}

TEST_F(frmComposeRecipientsTest, NoSelectedListIsNoRecipient) {
    TwoLists();
    host.Current = "a";
    Open();
    SelectLists({});
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(To()->toolTip(), "");
}

TEST_F(frmComposeRecipientsTest, ADialogClosedWithoutOkSelectsNothing) {
    TwoLists();
    host.Current = "a";
    Open();
    SelectLists({0, 1}, false);
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(To()->toolTip(), "");
}

TEST_F(frmComposeRecipientsTest, CurrentSelectionIsTakenFromTheMainWindow) {
    TwoLists();
    host.Current = "b";
    host.Selected = QStringList{"four@x.test", "two@x.test"};
    Open();
    ChooseTo("Current Selection");
    EXPECT_EQ(Recipients(), "2 Recipients");
    EXPECT_EQ(To()->toolTip(), "b (Selected addresses only)");
}

TEST_F(frmComposeRecipientsTest, AListThatIsGoneIsReportedAndTheOnesBeforeItStay) {
    TwoLists();
    host.Names << "gone";
    Open();
    ChooseTo("All Mailing Lists");
    EXPECT_EQ(Recipients(), "5 Recipients");
    ASSERT_EQ(profile.Log("ErrorLog.txt").size(), 1);
    EXPECT_TRUE(profile.Log("ErrorLog.txt")[0].endsWith(" Error 53 in Compose.cmbTo - File not found"));
    EXPECT_EQ(Label("lblStatus"), "Recipients loaded");
}

TEST_F(frmComposeRecipientsTest, ListsMadeOrDeletedMeanwhileMoveNoRow) {
    TwoLists();
    Open();
    host.Names.clear();
    List("0new", "new@x.test\r\n");
    List("b", "two@x.test\r\n");
    ASSERT_TRUE(QFile::remove(profile.Path("lists/a.vlo")));
    ChooseTo(1);
    EXPECT_EQ(To()->toolTip(), "b");
    EXPECT_EQ(Recipients(), "1 Recipients");
    EXPECT_EQ(profile.Log("ErrorLog.txt"), QStringList());
    ChooseTo("All Mailing Lists");
    EXPECT_EQ(To()->toolTip(), "a, b");
    EXPECT_EQ(Recipients(), "1 Recipients");
    EXPECT_EQ(profile.Log("ErrorLog.txt").size(), 1) << "a is gone";
    SelectLists({1});
    EXPECT_EQ(To()->toolTip(), "b");
}

TEST_F(frmComposeRecipientsTest, TheArrowKeysChooseAndTheWheelDoesNot) {
    TwoLists();
    host.Current = "a";
    Open();
    QWheelEvent wheel(QPointF(5, 5), To()->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(To(), &wheel);
    EXPECT_EQ(To()->currentText(), "a");
    QTest::keyClick(To(), Qt::Key_Down);
    EXPECT_EQ(To()->currentText(), "b");
    EXPECT_EQ(Recipients(), "3 Recipients");
}

TEST_F(frmComposeRecipientsTest, AListNameIsNeverMarkup) {
    List("a<b>c<br>", "");
    Open();
    ChooseTo(0);
    EXPECT_EQ(To()->toolTip(), "<html>a&lt;b&gt;c&lt;br&gt;");
}

} // namespace
} // namespace varlo
