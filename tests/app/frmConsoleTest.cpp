#include "app/frmConsole.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "support/TestProfile.h"

#include <QPlainTextEdit>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class frmConsoleTest : public testing::Test {
protected:
    frmConsoleTest() {
        text_ = console_.findChild<QPlainTextEdit *>(u"txtConsole"_s);
        EXPECT_NE(text_, nullptr);
    }
    void Say(const char *message) { StatusMessage(profile_.session, QString::fromUtf8(message)); }
    bool WaitForText(const QString &text) {
        return QTest::qWaitFor([&] { return text_->toPlainText() == text; }, 5000);
    }
    bool CaretAtEnd() const {
        return text_->textCursor().position() == text_->document()->characterCount() - 1;
    }

    TestProfile profile_;
    QString time_ = TimeText(profile_.session);
    frmConsole console_{profile_.session};
    QPlainTextEdit *text_ = nullptr;
};

TEST_F(frmConsoleTest, IsAReadOnlyTranscript) {
    EXPECT_EQ(console_.objectName(), u"frmConsole"_s);
    EXPECT_EQ(console_.windowTitle(), u"Console"_s);
    EXPECT_TRUE(text_->isReadOnly());
    EXPECT_FALSE(console_.isVisible());
}

TEST_F(frmConsoleTest, ShowsEveryMessageSinceItWasMade) {
    Say("one");
    Say("two");
    console_.ShowAtEnd();
    EXPECT_EQ(text_->toPlainText(), time_ + u" | one\n"_s + time_ + u" | two\n"_s);
}

TEST_F(frmConsoleTest, MessagesAppearWhileItIsVisible) {
    console_.ShowAtEnd();
    Say("one");
    EXPECT_TRUE(WaitForText(time_ + u" | one\n"_s));
    Say("two");
    EXPECT_TRUE(WaitForText(time_ + u" | one\n"_s + time_ + u" | two\n"_s));
}

TEST_F(frmConsoleTest, HiddenWindowPutsNothingInItsTextBox) {
    QSignalSpy changes(text_, &QPlainTextEdit::textChanged);
    for (int i = 0; i < 1000; ++i)
        Say("line");
    const auto *timer = console_.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(timer, nullptr);
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(changes.count(), 0);
    console_.ShowAtEnd();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(text_->document()->blockCount(), 1001);
}

TEST_F(frmConsoleTest, VisibleWindowGathersTheLinesOfABurst) {
    console_.ShowAtEnd();
    QSignalSpy changes(text_, &QPlainTextEdit::textChanged);
    for (int i = 0; i < 1000; ++i)
        Say("line");
    EXPECT_TRUE(QTest::qWaitFor([&] { return text_->document()->blockCount() == 1001; }, 5000));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(frmConsoleTest, CaretStandsAtTheEndAfterEachChange) {
    for (int i = 0; i < 200; ++i)
        Say("line");
    console_.ShowAtEnd();
    EXPECT_TRUE(CaretAtEnd());
    text_->moveCursor(QTextCursor::Start);
    text_->moveCursor(QTextCursor::End, QTextCursor::KeepAnchor);
    Say("last");
    EXPECT_TRUE(QTest::qWaitFor([&] { return text_->document()->blockCount() == 202; }, 5000));
    EXPECT_TRUE(CaretAtEnd());
    EXPECT_FALSE(text_->textCursor().hasSelection());
    EXPECT_TRUE(text_->rect().contains(text_->cursorRect().center())) << "the newest line is in view";
}

TEST_F(frmConsoleTest, ShowingAgainPutsTheCaretAtTheEnd) {
    for (int i = 0; i < 200; ++i)
        Say("line");
    console_.ShowAtEnd();
    text_->moveCursor(QTextCursor::Start);
    console_.ShowAtEnd();
    EXPECT_TRUE(CaretAtEnd());
}

TEST_F(frmConsoleTest, CloseDuringTheRunHidesAndKeepsTheTranscript) {
    console_.ShowAtEnd();
    Say("one");
    EXPECT_FALSE(console_.close());
    EXPECT_FALSE(console_.isVisible());
    Say("two");
    console_.ShowAtEnd();
    EXPECT_EQ(text_->toPlainText(), time_ + u" | one\n"_s + time_ + u" | two\n"_s);
}

TEST_F(frmConsoleTest, EscAndCtrlWCloseIt) {
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_Escape, Qt::NoModifier), std::pair(Qt::Key_W, Qt::ControlModifier)}) {
        console_.ShowAtEnd();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&console_));
        QTest::keyClick(text_, key, modifiers);
        EXPECT_FALSE(console_.isVisible()) << key;
    }
}

TEST_F(frmConsoleTest, CloseWhileTheProgramEndsIsAccepted) {
    console_.ShowAtEnd();
    profile_.session.AppExiting = true;
    EXPECT_TRUE(console_.close());
    EXPECT_FALSE(console_.isVisible());
}

TEST_F(frmConsoleTest, TextBoxFillsTheWindow) {
    console_.ShowAtEnd();
    console_.resize(500, 300);
    QCoreApplication::processEvents();
    EXPECT_EQ(text_->geometry(), QRect(0, 0, 500, 300));
}

TEST_F(frmConsoleTest, SmallSizesAreIgnored) {
    console_.ShowAtEnd();
    console_.resize(500, 300);
    QCoreApplication::processEvents();
    console_.resize(500, 10);
    QCoreApplication::processEvents();
    EXPECT_EQ(text_->geometry(), QRect(0, 0, 500, 300));
    console_.resize(11, 11);
    QCoreApplication::processEvents();
    EXPECT_EQ(text_->geometry(), QRect(0, 0, 11, 11));
}

TEST_F(frmConsoleTest, MarkupIsShownAsItStands) {
    Say("<b>[x]</b> &amp;");
    console_.ShowAtEnd();
    EXPECT_EQ(text_->toPlainText(), time_ + u" | <b>[x]</b> &amp;\n"_s);
}

TEST_F(frmConsoleTest, MessageKeptFromTheLogDoesNotReachTheConsole) {
    StatusMessage(profile_.session, u"quiet"_s, true);
    console_.ShowAtEnd();
    EXPECT_EQ(text_->toPlainText(), QString());
}

TEST_F(frmConsoleTest, HoldsTheLastHundredThousandLines) {
    constexpr int kLines = 3 * frmConsole::kMostLines - 1;
    for (int i = 1; i <= kLines; ++i)
        Q_EMIT profile_.session.Status.ConsoleLine(u"05:06:07 | Sent message to [%1]"_s.arg(i));
    console_.ShowAtEnd();
    EXPECT_EQ(text_->document()->blockCount(), frmConsole::kMostLines + 1);
    EXPECT_EQ(text_->document()->firstBlock().text(),
              u"05:06:07 | Sent message to [%1]"_s.arg(kLines - frmConsole::kMostLines + 1));
    EXPECT_EQ(text_->document()->lastBlock().previous().text(),
              u"05:06:07 | Sent message to [%1]"_s.arg(kLines));
    EXPECT_TRUE(CaretAtEnd());
}

TEST_F(frmConsoleTest, HoldsTheLastHundredThousandLinesWhileItIsVisible) {
    console_.ShowAtEnd();
    for (int i = 1; i <= frmConsole::kMostLines; ++i)
        Q_EMIT profile_.session.Status.ConsoleLine(QString::number(i));
    EXPECT_TRUE(QTest::qWaitFor([&] { return text_->document()->blockCount() > 1; }, 5000));
    Q_EMIT profile_.session.Status.ConsoleLine(u"last"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return text_->document()->firstBlock().text() == u"2"_s; }, 5000));
    EXPECT_EQ(text_->document()->lastBlock().previous().text(), u"last"_s);
    EXPECT_EQ(text_->document()->blockCount(), frmConsole::kMostLines + 1);
}

TEST_F(frmConsoleTest, LongLinesAreForgottenBeforeTheyAreTooMany) {
    const QString chunk(64 * 1024 - 1, u'+');
    const auto say = [&](qsizetype chunks) {
        for (; chunks > 0; --chunks)
            Q_EMIT profile_.session.Status.ConsoleLine(chunk);
    };
    const qsizetype most = frmConsole::kMostText / (chunk.size() + 1);
    say(most);
    console_.ShowAtEnd();
    EXPECT_EQ(text_->document()->blockCount(), most + 1);
    say(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return text_->document()->blockCount() == most / 2 + 1; }, 20000));
    console_.hide();
    say(3 * most);
    Q_EMIT profile_.session.Status.ConsoleLine(u"last"_s);
    console_.ShowAtEnd();
    EXPECT_EQ(text_->document()->lastBlock().previous().text(), u"last"_s);
    EXPECT_LE(text_->document()->characterCount(), frmConsole::kMostText + 1);
}

// Chunks of a message are long and are many lines each; what is kept while nobody looks is bounded, too.
TEST_F(frmConsoleTest, LinesWithinAMessageCount) {
    const QString chunk = u"+\n"_s.repeated(frmConsole::kMostLines);
    for (int i = 0; i < 5; ++i)
        Q_EMIT profile_.session.Status.ConsoleLine(chunk);
    Q_EMIT profile_.session.Status.ConsoleLine(u"last"_s);
    console_.ShowAtEnd();
    EXPECT_EQ(text_->document()->blockCount(), frmConsole::kMostLines + 1);
    EXPECT_EQ(text_->document()->lastBlock().previous().text(), u"last"_s);
}

} // namespace
} // namespace varlo::test
