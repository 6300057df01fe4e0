#include "compose/MessageEdit.h"

#include "compose/WindowHelpers.h"
#include "core/Literals.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

class MessageEditTest : public testing::Test {
protected:
    MessageEditTest() { QGuiApplication::clipboard()->clear(); }

    void Select(int from, int to) {
        QTextCursor cursor = edit.textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        edit.setTextCursor(cursor);
    }
    void PutCaretAtEnd() { edit.moveCursor(QTextCursor::End); }
    static QClipboard *Clipboard() { return QGuiApplication::clipboard(); }

    MessageEdit edit;
};

TEST_F(MessageEditTest, TextsHaveCrLfOutsideTheWidget) {
    edit.SetText("a\r\n\r\nb\r\n");
    EXPECT_EQ(edit.Text(), "a\r\n\r\nb\r\n");
    EXPECT_EQ(edit.blockCount(), 4);
}

TEST_F(MessageEditTest, NoBreakSpacesAndTabsStayWhatTheyAre) {
    edit.SetText(u"a\u00A0b\tc"_s);
    EXPECT_EQ(edit.Text(), u"a\u00A0b\tc"_s);
}

TEST_F(MessageEditTest, IsWrittenInCourierNewOrAnotherFixedPitchFont) {
    EXPECT_EQ(edit.font().family(), "Courier New");
    EXPECT_EQ(edit.font().styleHint(), QFont::Monospace);
    EXPECT_TRUE(QFontInfo(edit.font()).fixedPitch());
}

TEST_F(MessageEditTest, HasNoUndoOfItsOwn) {
    QTest::keyClicks(&edit, "abc");
    edit.undo();
    EXPECT_EQ(edit.Text(), "abc");
    EXPECT_FALSE(edit.isUndoRedoEnabled());
}

TEST_F(MessageEditTest, TheCaretCountsWithCrLf) {
    edit.SetText("ab\r\ncd");
    edit.SetCaret(5);
    edit.insertPlainText("X");
    EXPECT_EQ(edit.Text(), "ab\r\ncXd");
}

TEST_F(MessageEditTest, ChangingTheTextTouchesOnlyWhatDiffers) {
    edit.SetText("one\r\ntwo\r\nthree");
    QSignalSpy changes(edit.document(), &QTextDocument::contentsChange);
    edit.ChangeText("one\r\n2\r\n\r\nthree");
    EXPECT_EQ(edit.Text(), "one\r\n2\r\n\r\nthree");
    ASSERT_GE(changes.size(), 1);
    EXPECT_EQ(changes.first().at(0).toInt(), 4);
    EXPECT_LE(changes.first().at(2).toInt(), 4);
}

TEST_F(MessageEditTest, ChangingToEveryOtherTextGivesExactlyIt) {
    const QStringList texts{"", "a", "a\r\n", "\r\na", "a\r\n\r\na", "\r\n\r\n", "a\tb", "aa\r\na"};
    for (const QString &from : texts)
        for (const QString &to : texts) {
            edit.SetText(from);
            edit.ChangeText(to);
            EXPECT_EQ(edit.Text(), to) << from.toStdString();
        }
}

TEST_F(MessageEditTest, InsertingGivesTheSelectionUpAndKeepsItsText) {
    edit.SetText("abcd");
    Select(1, 3);
    edit.InsertAtCaret("\r\nX");
    EXPECT_EQ(edit.Text(), "abc\r\nXd");
    EXPECT_FALSE(edit.textCursor().hasSelection());
}

TEST_F(MessageEditTest, CopyPutsTheSelectionOnTheClipboardAsPlainText) {
    edit.SetText("one\r\ntwo");
    Select(2, 5);
    edit.Copy();
    EXPECT_EQ(Clipboard()->text(), "e\nt");
    EXPECT_FALSE(Clipboard()->mimeData()->hasHtml());
    EXPECT_EQ(edit.Text(), "one\r\ntwo");
}

TEST_F(MessageEditTest, CopyWithoutASelectionLeavesTheClipboard) {
    Clipboard()->setText("before");
    edit.SetText("one");
    edit.Copy();
    edit.Cut();
    EXPECT_EQ(Clipboard()->text(), "before");
    EXPECT_EQ(edit.Text(), "one");
}

TEST_F(MessageEditTest, CutCopiesAndRemovesInOneChange) {
    edit.SetText("one two");
    Select(3, 7);
    QSignalSpy changes(&edit, &MessageEdit::textChanged);
    edit.Cut();
    EXPECT_EQ(Clipboard()->text(), " two");
    EXPECT_EQ(edit.Text(), "one");
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(MessageEditTest, PasteReplacesTheSelectionInOneChange) {
    Clipboard()->setText("x\ny");
    edit.SetText("one two");
    Select(0, 3);
    QSignalSpy changes(&edit, &MessageEdit::textChanged);
    edit.Paste();
    EXPECT_EQ(edit.Text(), "x\r\ny two");
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(MessageEditTest, PasteOfAClipboardWithoutTextDoesNothing) {
    edit.SetText("one");
    edit.selectAll();
    auto *image = new QMimeData;
    image->setImageData(QImage(4, 4, QImage::Format_RGB32));
    Clipboard()->setMimeData(image);
    edit.Paste();
    EXPECT_EQ(edit.Text(), "one");
    auto *files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile("/etc/hostname")});
    Clipboard()->setMimeData(files);
    edit.Paste();
    EXPECT_EQ(edit.Text(), "one");
    auto *html = new QMimeData;
    html->setHtml("<b>two</b>");
    Clipboard()->setMimeData(html);
    edit.Paste();
    EXPECT_EQ(edit.Text(), "one");
    Clipboard()->clear();
    edit.Paste();
    EXPECT_EQ(edit.Text(), "one");
}

TEST_F(MessageEditTest, RichTextIsPastedPlain) {
    auto *both = new QMimeData;
    both->setHtml("<b>two</b>");
    both->setText("<i>two</i>");
    Clipboard()->setMimeData(both);
    edit.Paste();
    EXPECT_EQ(edit.Text(), "<i>two</i>");
}

TEST_F(MessageEditTest, RichTextIsDroppedPlainAndFilesAreRefused) {
    QMimeData rich;
    rich.setHtml("<b>two</b>");
    rich.setText("two");
    test::DropOn(edit.viewport(), rich);
    EXPECT_EQ(edit.Text(), "two");
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/etc/hostname")});
    EXPECT_EQ(test::DropOn(edit.viewport(), files), Qt::IgnoreAction);
    EXPECT_EQ(edit.Text(), "two");
}

TEST_F(MessageEditTest, SelectEverythingSelectsFromStartToEnd) {
    edit.SetText("one\r\ntwo");
    edit.SelectEverything();
    EXPECT_EQ(edit.textCursor().selectionStart(), 0);
    EXPECT_EQ(edit.textCursor().selectionEnd(), 7);
}

TEST_F(MessageEditTest, DeleteWordAtTheStartOfTheTextDoesNothing) {
    edit.SetText("one");
    edit.DeleteWord();
    EXPECT_EQ(edit.Text(), "one");
}

TEST_F(MessageEditTest, DeleteWordTakesTheBlanksBehindTheWord) {
    edit.SetText("one two  ");
    PutCaretAtEnd();
    edit.DeleteWord();
    EXPECT_EQ(edit.Text(), "one ");
}

TEST_F(MessageEditTest, DeleteWordBehindALineBreakTakesTheBreakOnly) {
    edit.SetText("one\r\n");
    PutCaretAtEnd();
    edit.DeleteWord();
    EXPECT_EQ(edit.Text(), "one");
}

TEST_F(MessageEditTest, DeleteWordInsideALineLeavesTheRest) {
    edit.SetText("zero\r\none two three");
    edit.SetCaret(13);
    edit.DeleteWord();
    EXPECT_EQ(edit.Text(), "zero\r\none  three");
}

TEST_F(MessageEditTest, DeleteWordWithASelectionTakesTheSelectionOnly) {
    edit.SetText("one two");
    Select(5, 6);
    edit.DeleteWord();
    EXPECT_EQ(edit.Text(), "one to");
}

TEST_F(MessageEditTest, KeysWithCtrlAloneAreOfferedFirst) {
    QList<int> keys;
    QObject::connect(&edit, &MessageEdit::ControlKey, &edit, [&keys](int key, bool *taken) {
        if (key != Qt::Key_Control)
            keys << key;
        *taken = true;
    });
    edit.SetText("one");
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&edit, Qt::Key_B);
    EXPECT_EQ(keys, QList<int>{Qt::Key_A});
    EXPECT_FALSE(edit.textCursor().hasSelection());
    EXPECT_EQ(edit.Text(), "bone");
}

TEST_F(MessageEditTest, TheMenuIsWantedWhereTheMouseIsOrAtTheCaret) {
    QList<QPoint> places;
    QObject::connect(&edit, &MessageEdit::MenuWanted, &edit, [&](const QPoint &at) { places << at; });
    edit.resize(300, 200);
    edit.show();
    edit.SetText("one\r\ntwo");
    edit.SetCaret(7);
    const QPoint caret = edit.viewport()->mapToGlobal(edit.cursorRect().bottomLeft());
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(105, 205));
    QCoreApplication::sendEvent(edit.viewport(), &mouse);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(105, 205));
    QCoreApplication::sendEvent(&edit, &menuKey);
    QTest::keyClick(&edit, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(places, (QList<QPoint>{QPoint(105, 205), caret, caret}));
    QTest::keyClick(&edit, Qt::Key_F10);
    EXPECT_EQ(places.size(), 3) << "F10 alone is the menu bar's";
}

TEST_F(MessageEditTest, AKeyThatIsNotTakenKeepsItsMeaning) {
    edit.SetText("one two");
    QTest::keyClick(&edit, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(edit.textCursor().position(), 7);
}

} // namespace
} // namespace varlo
