#include "core/WidgetDialogs.h"

#include "core/Literals.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProxyStyle>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTextDocument>
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
    EXPECT_EQ(Ask(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST_F(WidgetDialogsTest, AQuestionWithYesAndNoIsAnsweredByItsButtonsAlone) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_TRUE(box.isVisible());
        EXPECT_FALSE(box.close());
        EXPECT_TRUE(box.isVisible());
        EXPECT_FALSE(box.windowFlags() & Qt::WindowCloseButtonHint);
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_EQ(Ask(BoxButtons::YesNo), BoxAnswer::Yes);
}

TEST_F(WidgetDialogsTest, ABoxThatTheProgramEndsUnderAgreesToNothing) {
    const std::pair<BoxButtons, BoxAnswer> answers[] = {{BoxButtons::Ok, BoxAnswer::Ok},
                                                        {BoxButtons::OkCancel, BoxAnswer::Cancel},
                                                        {BoxButtons::YesNo, BoxAnswer::No},
                                                        {BoxButtons::YesNoCancel, BoxAnswer::Cancel}};
    for (const auto &[buttons, answer] : answers) {
        WhenOpen<QMessageBox>([](QMessageBox &box) { box.done(0); });
        EXPECT_EQ(Ask(buttons), answer);
    }
}

TEST_F(WidgetDialogsTest, EnterSaysNoWhereSomethingIsDestroyed) {
    const auto pressEnter = [this] {
        WhenOpen<QMessageBox>([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); });
    };
    pressEnter();
    EXPECT_EQ(boxes_.AskToDestroy(u"Delete?"_s, BoxIcon::Question, kApplicationTitle), BoxAnswer::No);
    pressEnter();
    EXPECT_EQ(Ask(BoxButtons::YesNo), BoxAnswer::Yes);
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(box.text(), u"Delete?"_s);
        EXPECT_EQ(box.windowTitle(), u"Confirm Delete"_s);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_EQ(boxes_.AskToDestroy(u"Delete?"_s, BoxIcon::Exclamation, u"Confirm Delete"_s), BoxAnswer::Yes);
}

// A toolkit that puts icons on the buttons of its boxes, as some desktops ask for.
class IconStyle : public QProxyStyle {
public:
    IconStyle() : QProxyStyle(u"fusion"_s) {}
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

QStringList ButtonsWithIcons(const QDialog &box) {
    QStringList captions;
    for (const QPushButton *button : box.findChildren<QPushButton *>())
        if (!button->icon().isNull())
            captions << button->text();
    return captions;
}

TEST_F(WidgetDialogsTest, ButtonsOfBoxesHaveNoIcons) {
    QApplication::setStyle(new IconStyle);
    QMessageBox plain(QMessageBox::Question, QString(), QString(), QMessageBox::Yes | QMessageBox::No);
    EXPECT_FALSE(ButtonsWithIcons(plain).isEmpty()) << "the style does what this test needs";
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(ButtonsWithIcons(box), QStringList());
        QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
    });
    Ask(BoxButtons::YesNo);
    WhenOpen<QInputDialog>([](QInputDialog &box) {
        EXPECT_EQ(ButtonsWithIcons(box), QStringList());
        box.reject();
    });
    boxes_.InputBox(u"Name:"_s, u"Rename"_s, QString());
    QApplication::setStyle(u"fusion"_s);
}

TEST_F(WidgetDialogsTest, ATextTallerThanTheScreenGetsAScrollBar) {
    QStringList lines;
    for (int i = 0; i < 10'000; ++i)
        lines << u"-ERR line "_s + QString::number(i);
    for (const QString &text : {lines.join(u"\r\n"_s), lines.first(60).join(u'\n'), QString(50'000, u'x')}) {
        WhenOpen<QMessageBox>([](QMessageBox &box) {
            const QSize screen = box.screen()->availableSize();
            EXPECT_LE(box.height(), screen.height());
            EXPECT_LE(box.width(), screen.width());
            EXPECT_TRUE(box.rect().contains(box.button(QMessageBox::Ok)->geometry().bottomRight()));
            const auto *area = box.findChild<QScrollArea *>();
            ASSERT_NE(area, nullptr);
            EXPECT_GT(area->widget()->height(), area->viewport()->height());
            EXPECT_LE(area->widget()->width(), area->viewport()->width());
            EXPECT_GT(area->viewport()->height(), 100);
            EXPECT_LE(box.text().size(), 20'600) << "20,000, and break places";
            box.accept();
        });
        boxes_.MsgBox(text, BoxButtons::Ok, BoxIcon::Critical, kErrorTitle);
    }
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.findChild<QScrollArea *>(), nullptr);
        box.accept();
    });
    boxes_.MsgBox(lines.first(8).join(u'\n'), BoxButtons::Ok, BoxIcon::None, kErrorTitle);
}

TEST_F(WidgetDialogsTest, ATallTextBeginsInTheUpperLeftCorner) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        const auto *area = box.findChild<QScrollArea *>();
        ASSERT_NE(area, nullptr);
        EXPECT_EQ(qobject_cast<QLabel *>(area->widget())->alignment(), Qt::AlignTop | Qt::AlignLeft);
        box.accept();
    });
    boxes_.MsgBox(QString(5'000, u'\n'), BoxButtons::Ok, BoxIcon::None, kErrorTitle);
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
    // What stands there is selected, so that typing replaces it.
    EXPECT_EQ(boxes_.InputBox(u"Name:"_s, u"Rename Profile"_s, u"old"_s), u"new"_s);
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

TEST_F(WidgetDialogsTest, APromptShowsAmpersandsAndDoubleBlanksAsTheyAre) {
    WhenOpen<QInputDialog>([](QInputDialog &box) {
        const auto *label = box.findChild<QLabel *>();
        EXPECT_EQ(label->buddy(), nullptr) << "a buddy makes a mnemonic of the ampersand";
        QTextDocument shown;
        shown.setHtml(label->text());
        EXPECT_EQ(shown.toPlainText(), u"the new name for [R&D  team]:"_s);
        EXPECT_EQ(label->sizeHint(), QLabel(label->text()).sizeHint()) << "nothing is missing on the screen";
        EXPECT_EQ(box.findChild<QLineEdit *>()->accessibleName(), u"the new name for [R&D  team]:"_s);
        box.reject();
    });
    boxes_.InputBox(u"the new name for [R&D  team]:"_s, u"Rename"_s, QString());
}

TEST_F(WidgetDialogsTest, TheLongestNameDoesNotWidenAPromptBeyondTheScreen) {
    WhenOpen<QInputDialog>([](QInputDialog &box) {
        EXPECT_LE(box.width(), box.screen()->availableSize().width());
        EXPECT_GT(box.findChild<QLabel *>()->height(), 3 * box.fontMetrics().height());
        box.reject();
    });
    boxes_.InputBox(u"["_s + QString(255, u'W') + u"]:"_s, u"Rename"_s, QString());
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
