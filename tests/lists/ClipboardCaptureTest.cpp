#include "lists/ClipboardCapture.h"

#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ClipboardCaptureTest : public test::ListsFixture {
protected:
    // Copies a text in some other program and lets the timer tick; the caption.
    QString Copy(const QString &text) {
        clipboard = text;
        return capture.Tick();
    }

    QString clipboard;
    ClipboardCapture capture{
        session, lists, {.Text = [this] { return clipboard; }, .Clear = [this] { clipboard.clear(); }}};
};

TEST_F(ClipboardCaptureTest, WhatWasCopiedBeforeIsDiscarded) {
    clipboard = QStringLiteral("ab@x.test");
    capture.Begin();
    EXPECT_EQ(capture.Tick(), QString());
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("E-mail address capture on")));
}

TEST_F(ClipboardCaptureTest, TheClipboardIsEmptyAfterTheEnd) {
    clipboard = QStringLiteral("ab@x.test");
    capture.End();
    EXPECT_EQ(clipboard, QString());
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("E-mail address capture off")));
}

TEST_F(ClipboardCaptureTest, AnAddressIsQueuedCountedAndTakenOffTheClipboard) {
    EXPECT_EQ(Copy(QStringLiteral(" Ab@x.test ")), QStringLiteral("1 e-mail addresses captured"));
    EXPECT_EQ(clipboard, QString());
    EXPECT_EQ(Pending(), Words("+Ab@x.test"));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 0);
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Added [Ab@x.test] to the pending list")));
}

TEST_F(ClipboardCaptureTest, TheCaptionCountsAllPendingEntries) {
    AddPending(Words("-old@x.test"));
    EXPECT_EQ(Copy(QStringLiteral("ab@x.test")), QStringLiteral("2 e-mail addresses captured"));
    EXPECT_EQ(ClipboardCapture::Caption(0), QStringLiteral("0 e-mail addresses captured"));
}

TEST_F(ClipboardCaptureTest, AnEmptyClipboardSaysNothing) {
    EXPECT_EQ(capture.Tick(), QString());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ClipboardCaptureTest, ALinkLosesItsPrefix) {
    Copy(QStringLiteral("mailto:ab@x.test"));
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
    Copy(QStringLiteral("MAILTO:ab@x.test"));
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
}

TEST_F(ClipboardCaptureTest, WhatIsNoAddressIsDroppedSilently) {
    const QStringList texts{QStringLiteral("A paragraph of text. It holds ab@x.test somewhere, too."),
                            QStringLiteral("<a href=\"mailto:ab@x.test\">ab@x.test</a>"),
                            QStringLiteral("<b>ab@x.test</b>"),
                            QStringLiteral("ab@x.test\r\ncd@x.test"),
                            QStringLiteral("ab@x.test\ncd@x.test"),
                            QStringLiteral("ab@x.test\tcd@x.test"),
                            QStringLiteral("ab@x.test\rcd"),
                            QStringLiteral("mailto:"),
                            QStringLiteral("   "),
                            QString(1000000, u'x')};
    for (const QString &text : texts) {
        EXPECT_EQ(Copy(text), QString());
        EXPECT_EQ(clipboard, QString());
    }
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

// Cells and lines are copied with their line end.
TEST_F(ClipboardCaptureTest, ALineEndBehindAnAddressIsNoPartOfIt) {
    Copy(QStringLiteral("ab@x.test\r\n"));
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
}

TEST_F(ClipboardCaptureTest, TheSameAddressTwiceIsQueuedTwice) {
    Copy(QStringLiteral("ab@x.test"));
    Copy(QStringLiteral("AB@x.test"));
    EXPECT_EQ(Pending(), Words("+ab@x.test +AB@x.test"));
}

TEST_F(ClipboardCaptureTest, ADuplicateIsToldEvenWhenItIsNoAddress) {
    AddPending(Words("nobody"));
    EXPECT_EQ(Copy(QStringLiteral("NOBODY")), QString());
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Duplicate address [NOBODY] ignored")));
    EXPECT_EQ(Pending(), Words("nobody"));
}

TEST_F(ClipboardCaptureTest, TwoHundredTextsInARowAreAllTaken) {
    const QStringList addresses = test::Addresses(200, QStringLiteral("user"));
    QStringList expected;
    for (const QString &address : addresses) {
        expected << u'+' + address;
        EXPECT_EQ(Copy(address), ClipboardCapture::Caption(static_cast<int>(expected.size())));
        EXPECT_EQ(capture.Tick(), QString());
    }
    EXPECT_EQ(Pending(), expected);
}

TEST_F(ClipboardCaptureTest, AFullPendingListIsReported) {
    AddPending(test::Addresses(EntryListModel::kMostEntries, QStringLiteral("+a")));
    EXPECT_EQ(Copy(QStringLiteral("more@x.test")), QString());
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("6 in Main.tmrCaptureEmail - Overflow")));
    EXPECT_EQ(lists.lstEmailList(kPending).Count(), EntryListModel::kMostEntries);
}

TEST_F(ClipboardCaptureTest, AStatusLogThatCannotBeWrittenLosesNoAddress) {
    BlockLog(QStringLiteral("StatusLog.txt"));
    Copy(QStringLiteral("ab@x.test"));
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("70 in Main.tmrCaptureEmail - Permission denied")));
}

} // namespace
} // namespace varlo
