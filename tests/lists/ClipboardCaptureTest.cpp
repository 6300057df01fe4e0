#include "lists/ClipboardCapture.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"

#include <QCoreApplication>
#include <QSignalSpy>
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
    clipboard = u"ab@x.test"_s;
    capture.Begin();
    EXPECT_EQ(capture.Tick(), QString());
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(TakeStatus(), QStringList(u"E-mail address capture on"_s));
}

TEST_F(ClipboardCaptureTest, TheClipboardIsEmptyAfterTheEnd) {
    clipboard = u"ab@x.test"_s;
    capture.End();
    EXPECT_EQ(clipboard, QString());
    EXPECT_EQ(TakeStatus(), QStringList(u"E-mail address capture off"_s));
}

TEST_F(ClipboardCaptureTest, AnAddressIsQueuedCountedAndTakenOffTheClipboard) {
    EXPECT_EQ(Copy(u" Ab@x.test "_s), u"1 e-mail addresses captured"_s);
    EXPECT_EQ(clipboard, QString());
    EXPECT_EQ(Pending(), Words("+Ab@x.test"));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 0);
    EXPECT_EQ(TakeStatus(), QStringList(u"Added [Ab@x.test] to the pending list"_s));
}

TEST_F(ClipboardCaptureTest, TheCaptionCountsAllPendingEntries) {
    AddPending(Words("-old@x.test"));
    EXPECT_EQ(Copy(u"ab@x.test"_s), u"2 e-mail addresses captured"_s);
    EXPECT_EQ(ClipboardCapture::Caption(0), u"0 e-mail addresses captured"_s);
}

TEST_F(ClipboardCaptureTest, AnEmptyClipboardSaysNothing) {
    EXPECT_EQ(capture.Tick(), QString());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ClipboardCaptureTest, ALinkLosesItsPrefix) {
    Copy(u"mailto:ab@x.test"_s);
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
    Copy(u"MAILTO:ab@x.test"_s);
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
}

TEST_F(ClipboardCaptureTest, WhatIsNoAddressIsDroppedSilently) {
    const QStringList texts{u"A paragraph of text. It holds ab@x.test somewhere, too."_s,
                            u"<a href=\"mailto:ab@x.test\">ab@x.test</a>"_s,
                            u"<b>ab@x.test</b>"_s,
                            u"ab@x.test\r\ncd@x.test"_s,
                            u"ab@x.test\ncd@x.test"_s,
                            u"ab@x.test\tcd@x.test"_s,
                            u"ab@x.test\rcd"_s,
                            u"mailto:"_s,
                            u"   "_s,
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
    Copy(u"ab@x.test\r\n"_s);
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
}

TEST_F(ClipboardCaptureTest, TheSameAddressTwiceIsQueuedTwice) {
    Copy(u"ab@x.test"_s);
    Copy(u"AB@x.test"_s);
    EXPECT_EQ(Pending(), Words("+ab@x.test +AB@x.test"));
}

TEST_F(ClipboardCaptureTest, ADuplicateIsToldEvenWhenItIsNoAddress) {
    AddPending(Words("nobody"));
    EXPECT_EQ(Copy(u"NOBODY"_s), QString());
    EXPECT_EQ(TakeStatus(), QStringList(u"Duplicate address [NOBODY] ignored"_s));
    EXPECT_EQ(Pending(), Words("nobody"));
}

TEST_F(ClipboardCaptureTest, TwoHundredTextsInARowAreAllTaken) {
    const QStringList addresses = test::Addresses(200, u"user"_s);
    QStringList expected;
    for (const QString &address : addresses) {
        expected << u'+' + address;
        EXPECT_EQ(Copy(address), ClipboardCapture::Caption(static_cast<int>(expected.size())));
        EXPECT_EQ(capture.Tick(), QString());
    }
    EXPECT_EQ(Pending(), expected);
}

TEST_F(ClipboardCaptureTest, AFullPendingListIsReported) {
    AddPending(test::Addresses(EntryListModel::kMostEntries, u"+a"_s));
    EXPECT_EQ(Copy(u"more@x.test"_s), QString());
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.tmrCaptureEmail - Overflow"_s));
    EXPECT_EQ(lists.lstEmailList(kPending).Count(), EntryListModel::kMostEntries);
}

TEST_F(ClipboardCaptureTest, AStatusLogThatCannotBeWrittenLosesNoAddress) {
    BlockLog(u"StatusLog.txt"_s);
    const QSignalSpy changes(&lists.Pending, &PendingList::Changed);
    EXPECT_EQ(Copy(u"ab@x.test"_s), ClipboardCapture::Caption(1));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(changes.count(), 1) << "counts and buttons would be those of before";
    EXPECT_EQ(Pending(), Words("+ab@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.tmrCaptureEmail - Permission denied"_s));
}

} // namespace
} // namespace varlo
