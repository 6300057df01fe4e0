#include "app/ActionStart.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "support/TestProfile.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class ActionStartTest : public testing::Test {
protected:
    ActionStartTest() {
        qApp->installEventFilter(&start_);
        QDir(profile_.Path(u"logs"_s)).removeRecursively();
    }
    // What a routine does that reports every line by itself.
    void WriteThreeLines() {
        ErrorTrap trap(profile_.session, u"Main.Test"_s);
        for (int i = 0; i < 3; ++i)
            trap([this] { StatusMessage(profile_.session, u"line"_s); });
    }

    TestProfile profile_;
    ActionStart start_{profile_.session};
    QWidget window_;
};

TEST_F(ActionStartTest, TroubleWithTheLogsIsToldOnceForAnAction) {
    window_.show();
    WriteThreeLines();
    EXPECT_EQ(profile_.Boxes.Shown.size(), 1U);
    WriteThreeLines();
    EXPECT_EQ(profile_.Boxes.Shown.size(), 1U) << "still the same action";
    QTest::mouseClick(&window_, Qt::LeftButton);
    WriteThreeLines();
    EXPECT_EQ(profile_.Boxes.Shown.size(), 2U);
    QTest::keyClick(&window_, Qt::Key_A);
    WriteThreeLines();
    EXPECT_EQ(profile_.Boxes.Shown.size(), 3U);
    EXPECT_EQ(profile_.ConsoleLines.size(), 12) << "every line reaches the console";
}

TEST_F(ActionStartTest, TheAnswerToABoxBeginsNoAction) {
    window_.show();
    WriteThreeLines();
    QMessageBox box(QMessageBox::Information, QString(), u"Log?"_s, QMessageBox::Ok);
    box.setModal(true);
    box.show();
    QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    WriteThreeLines();
    EXPECT_EQ(profile_.Boxes.Shown.size(), 1U);
}

} // namespace
} // namespace varlo::test
