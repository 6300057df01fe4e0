#include "core/WidgetDialogs.h"

#include "core/Literals.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QMessageBox>
#include <QTextDocumentFragment>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class WidgetDialogsTest : public testing::Test {
protected:
    ~WidgetDialogsTest() override {
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
    }
    // Runs `look` on the box as soon as one is open.
    template<typename Box> void WhenOpen(std::function<void(Box &)> look) {
        QTimer::singleShot(0, &context_, [look] {
            auto *box = qobject_cast<Box *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            look(*box);
        });
    }
    void Press(QMessageBox::StandardButton button) {
        WhenOpen<QMessageBox>([button](QMessageBox &box) {
            ASSERT_NE(box.button(button), nullptr);
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }
    void PressEscape() {
        WhenOpen<QMessageBox>([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    }
    BoxAnswer Ask(BoxButtons buttons) {
        return boxes_.MsgBox(u"Go on?"_s, buttons, BoxIcon::Question, kApplicationTitle);
    }

    QObject context_;
    WidgetDialogs boxes_;
};

TEST_F(WidgetDialogsTest, BoxShowsTextTitleAndIcon) {
    const std::pair<BoxIcon, QMessageBox::Icon> icons[] = {{BoxIcon::None, QMessageBox::NoIcon},
                                                           {BoxIcon::Information, QMessageBox::Information},
                                                           {BoxIcon::Exclamation, QMessageBox::Warning},
                                                           {BoxIcon::Critical, QMessageBox::Critical},
                                                           {BoxIcon::Question, QMessageBox::Question}};
    for (const auto &[icon, shown] : icons) {
        WhenOpen<QMessageBox>([expected = shown](QMessageBox &box) {
            EXPECT_EQ(box.text(), u"one\ntwo\nthree"_s);
            EXPECT_EQ(box.windowTitle(), u"Varlo Pro Error"_s);
            EXPECT_EQ(box.icon(), expected);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            box.accept();
        });
        EXPECT_EQ(boxes_.MsgBox(u"one\r\ntwo\rthree"_s, BoxButtons::Ok, icon, kErrorTitle), BoxAnswer::Ok);
    }
}

TEST_F(WidgetDialogsTest, MarkupInABoxIsShownAsItStands) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        box.accept();
    });
    boxes_.MsgBox(u"<img src=\"http://example.test/\">"_s, BoxButtons::Ok, BoxIcon::None, kApplicationTitle);
}

TEST_F(WidgetDialogsTest, EachButtonGivesItsAnswer) {
    Press(QMessageBox::Ok);
    EXPECT_EQ(Ask(BoxButtons::Ok), BoxAnswer::Ok);
    Press(QMessageBox::Ok);
    EXPECT_EQ(Ask(BoxButtons::OkCancel), BoxAnswer::Ok);
    Press(QMessageBox::Cancel);
    EXPECT_EQ(Ask(BoxButtons::OkCancel), BoxAnswer::Cancel);
    Press(QMessageBox::Yes);
    EXPECT_EQ(Ask(BoxButtons::YesNo), BoxAnswer::Yes);
    Press(QMessageBox::No);
    EXPECT_EQ(Ask(BoxButtons::YesNo), BoxAnswer::No);
    Press(QMessageBox::Yes);
    EXPECT_EQ(Ask(BoxButtons::YesNoCancel), BoxAnswer::Yes);
    Press(QMessageBox::No);
    EXPECT_EQ(Ask(BoxButtons::YesNoCancel), BoxAnswer::No);
    Press(QMessageBox::Cancel);
    EXPECT_EQ(Ask(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST_F(WidgetDialogsTest, ClosedBoxNeverSaysYes) {
    PressEscape();
    EXPECT_EQ(Ask(BoxButtons::Ok), BoxAnswer::Ok);
    PressEscape();
    EXPECT_EQ(Ask(BoxButtons::OkCancel), BoxAnswer::Cancel);
    PressEscape();
    EXPECT_EQ(Ask(BoxButtons::YesNo), BoxAnswer::No);
    PressEscape();
    EXPECT_EQ(Ask(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST_F(WidgetDialogsTest, HourglassIsAwayWhileABoxWaits) {
    boxes_.SetHourglass(true);
    boxes_.SetHourglass(true);
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        box.accept();
    });
    Ask(BoxButtons::Ok);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    boxes_.SetHourglass(false);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(WidgetDialogsTest, InputBoxGivesTheTypedText) {
    WhenOpen<QInputDialog>([](QInputDialog &box) {
        EXPECT_EQ(box.windowTitle(), u"Rename Profile"_s);
        EXPECT_EQ(box.textValue(), u"old"_s);
        QTest::keyClicks(box.findChild<QLineEdit *>(), u"new"_s);
        box.accept();
    });
    EXPECT_EQ(boxes_.InputBox(u"Name:"_s, u"Rename Profile"_s, u"old"_s),
              u"new"_s); // what stands there is selected, so that typing replaces it
}

TEST_F(WidgetDialogsTest, CancelledInputBoxGivesNothing) {
    WhenOpen<QInputDialog>([](QInputDialog &box) { box.reject(); });
    EXPECT_EQ(boxes_.InputBox(u"Name:"_s, u"Rename"_s, u"old"_s), QString());
}

TEST_F(WidgetDialogsTest, MarkupInAPromptIsShownAsItStands) {
    WhenOpen<QInputDialog>([](QInputDialog &box) {
        EXPECT_EQ(QTextDocumentFragment::fromHtml(box.labelText()).toPlainText(),
                  u"[<b>x</b> &amp;]:\ntwo"_s);
        box.reject();
    });
    boxes_.InputBox(u"[<b>x</b> &amp;]:\r\ntwo"_s, u"Rename"_s, QString());
}

TEST_F(WidgetDialogsTest, FileBoxesOpenInTheirFolderWithTheirFilters) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile(folder.filePath(u"a.txt"_s)).open(QIODevice::WriteOnly));
    const QString filter =
        u"Text Files"_s + QChar(0) + u"*.txt"_s + QChar(0) + u"All Files"_s + QChar(0) + u"*.*"_s + QChar(0);
    WhenOpen<QFileDialog>([&](QFileDialog &box) {
        EXPECT_EQ(box.windowTitle(), u"Open"_s);
        EXPECT_EQ(box.directory().path(), folder.path());
        EXPECT_EQ(box.nameFilters(), (QStringList{u"Text Files (*.txt)"_s, u"All Files (*)"_s}));
        box.reject();
    });
    EXPECT_EQ(boxes_.OpenFileBox(filter, folder.path(), u"Open"_s), QString());
    WhenOpen<QFileDialog>([&](QFileDialog &box) {
        EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptSave);
        box.reject();
    });
    EXPECT_EQ(boxes_.SaveFileBox(filter, folder.path(), u"Save"_s), QString());
    WhenOpen<QFileDialog>([&](QFileDialog &box) {
        EXPECT_EQ(box.fileMode(), QFileDialog::Directory);
        box.reject();
    });
    EXPECT_EQ(boxes_.FolderBox(folder.path(), u"Folder"_s), QString());
}

} // namespace
} // namespace varlo::test
