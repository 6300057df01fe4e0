#include "core/NoticeBar.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class NoticeBarTest : public testing::Test {
protected:
    NoticeBarTest() {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&bar);
        column->addStretch();
        window.resize(400, 300);
        window.show();
    }
    QWidget window;
    NoticeBar bar{"barTest", &window};
    QPushButton *restore = bar.AddButton("cmdRestore", u"&Restore"_s, u"Take it up"_s);
    QPushButton *discard = bar.AddButton("cmdDiscard", u"&Discard"_s);
    QToolButton *cross = bar.findChild<QToolButton *>(u"cmdNoticeClose"_s);
};

TEST_F(NoticeBarTest, IsHiddenUntilThereIsSomethingToSay) {
    EXPECT_EQ(bar.objectName(), u"barTest"_s);
    EXPECT_FALSE(bar.isVisible());
    bar.Say(u"Changes to [<b>R&D  team] were kept."_s);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.Sentence(), u"Changes to [<b>R&D  team] were kept."_s);
    EXPECT_EQ(bar.findChild<QLabel *>()->textFormat(), Qt::PlainText);
    EXPECT_EQ(bar.accessibleName(), bar.Sentence());
}

TEST_F(NoticeBarTest, ButtonsStandInTheirOrderBeforeTheCross) {
    bar.Say(u"An offer."_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(restore->objectName(), u"cmdRestore"_s);
    EXPECT_EQ(restore->toolTip(), u"Take it up"_s);
    EXPECT_LT(restore->x(), discard->x());
    EXPECT_LT(discard->x(), cross->x());
}

TEST_F(NoticeBarTest, TheCrossClosesAndIsNoRefusal) {
    QSignalSpy closed(&bar, &NoticeBar::Closed);
    QSignalSpy refused(discard, &QPushButton::clicked);
    bar.Say(u"An offer."_s);
    cross->click();
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(refused.count(), 0);
    EXPECT_EQ(cross->accessibleName(), u"Close"_s);
}

TEST_F(NoticeBarTest, AButtonLeavesTheBarToItsOwner) {
    bar.Say(u"An offer."_s);
    restore->click();
    EXPECT_TRUE(bar.isVisible());
}

TEST_F(NoticeBarTest, ALongSentenceHasItsWholeInATooltipAndWidensNoWindow) {
    bar.Say(u"word "_s.repeated(50).trimmed());
    QCoreApplication::processEvents();
    EXPECT_EQ(window.width(), 400);
    EXPECT_LE(window.minimumSizeHint().width(), 400);
    EXPECT_LT(bar.height(), 3 * bar.fontMetrics().height());
    EXPECT_EQ(bar.findChild<QLabel *>()->toolTip(), u"<html>"_s + bar.Sentence());
}

TEST_F(NoticeBarTest, IsThinAboveAWindowThatWouldShareItsRoom) {
    QWidget other;
    auto *column = new QVBoxLayout(&other);
    NoticeBar thin("barThin");
    column->addWidget(&thin);
    column->addWidget(new QSplitter);
    thin.Say(u"An offer."_s);
    other.resize(400, 600);
    other.show();
    QCoreApplication::processEvents();
    EXPECT_LT(thin.height(), 3 * thin.fontMetrics().height());
    column->removeWidget(&thin);
    thin.setParent(nullptr);
}

TEST_F(NoticeBarTest, TabReachesButtonsAndCross) {
    bar.Say(u"An offer."_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    restore->setFocus();
    QTest::keyClick(restore, Qt::Key_Tab);
    EXPECT_TRUE(discard->hasFocus());
    QTest::keyClick(discard, Qt::Key_Tab);
    EXPECT_TRUE(cross->hasFocus());
}

} // namespace
} // namespace varlo::test
