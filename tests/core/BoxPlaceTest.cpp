#include "core/BoxPlace.h"

#include "core/Literals.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class BoxPlaceTest : public testing::Test {
protected:
    // Another program is active: none of the windows here is.
    static void LeaveTheProgram() {
        QApplication::setActiveWindow(nullptr);
        ASSERT_EQ(QApplication::activeWindow(), nullptr);
    }
    static void Activate(QWidget &window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QMainWindow main_;
    QWidget console_{nullptr, Qt::Window};
};

TEST_F(BoxPlaceTest, TheActiveWindowIsTheParent) {
    main_.show();
    Activate(console_);
    EXPECT_EQ(BoxParent(), &console_);
    Activate(main_);
    EXPECT_EQ(BoxParent(), &main_);
}

TEST_F(BoxPlaceTest, WhileAnotherProgramIsActiveTheMainWindowIs) {
    console_.show();
    main_.show();
    LeaveTheProgram();
    EXPECT_EQ(BoxParent(), &main_);
}

TEST_F(BoxPlaceTest, WhileAnotherProgramIsActiveTheWindowOnTopIs) {
    main_.show();
    QMainWindow onTop;
    onTop.setWindowFlag(Qt::WindowStaysOnTopHint);
    onTop.show();
    LeaveTheProgram();
    EXPECT_EQ(BoxParent(), &onTop);
    console_.setWindowFlag(Qt::WindowStaysOnTopHint);
    onTop.hide();
    console_.show();
    LeaveTheProgram();
    EXPECT_EQ(BoxParent(), &console_) << "what is on top hides the others";
}

TEST_F(BoxPlaceTest, AModalWindowIsTheParentOfWhatIsAskedFromIt) {
    main_.show();
    QDialog preferences(&main_);
    preferences.setModal(true);
    preferences.show();
    LeaveTheProgram();
    EXPECT_EQ(BoxParent(), &preferences);
}

TEST_F(BoxPlaceTest, AWindowThatIsMinimisedOrHiddenIsNoParent) {
    EXPECT_EQ(BoxParent(), nullptr);
    main_.showMinimized();
    EXPECT_EQ(BoxParent(), nullptr) << "a minimised window takes its boxes with it";
    console_.show();
    LeaveTheProgram();
    EXPECT_EQ(BoxParent(), &console_);
}

TEST_F(BoxPlaceTest, ABoxIsAboveAWindowOnTopWhoeverItsParentIs) {
    main_.setWindowFlag(Qt::WindowStaysOnTopHint);
    main_.show();
    Activate(console_);
    QDialog box(BoxParent());
    KeepAbove(box);
    EXPECT_TRUE(box.windowFlags() & Qt::WindowStaysOnTopHint);
    main_.hide();
    QDialog next(BoxParent());
    KeepAbove(next);
    EXPECT_FALSE(next.windowFlags() & Qt::WindowStaysOnTopHint) << "nothing to rise above";
}

} // namespace
} // namespace varlo::test
