#include "lists/PendingListFrame.h"

#include "core/Literals.h"
#include "lists/FramesFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

const QString kNews = u"news"_s;

class PendingListFrameTest : public test::FramesFixture {
protected:
    PendingListFrameTest() {
        OpenLists({{kNews, Words("mm@x.test")}});
        QObject::connect(&pending, &PendingListFrame::CaptionWanted, &host,
                         [this](const QString &caption) { captions << caption; });
        QGuiApplication::clipboard()->clear();
    }

    void Tick() {
        QMetaObject::invokeMethod(Find<QTimer>("tmrCaptureEmail"), "timeout", Qt::DirectConnection);
    }
    void Copy(const QString &text) {
        QGuiApplication::clipboard()->setText(text);
        Tick();
    }
    static QString Clipboard() { return QGuiApplication::clipboard()->text(); }
    QString Text() { return AddressBox()->text(); }

    QStringList captions;
};

TEST_F(PendingListFrameTest, ItsControlsHaveTheirNamesCaptionsAndToolTips) {
    const std::vector<std::pair<const char *, std::pair<QString, QString>>> buttons{
        {"cmdEmailAdd_0", {u"Add"_s, u"Add to list"_s}},
        {"cmdEmailAdd_1", {u"Remove"_s, u"Remove from list"_s}},
        {"cmdEmailValidate", {u"Validate"_s, u"Validate address"_s}},
        {"cmdCapture", {u"Clipboard"_s, u"Capture new e-mail addresses from the clipboard"_s}},
        {"cmdAutoAdd",
         {u"E-mail Account"_s, u"Automatic download of e-mail addresses from a POP3 account"_s}},
        {"cmdCapturesAdd", {u"<<< Process Pending List"_s, u"Add to current list and clear pending"_s}},
        {"cmdListEdit_1", {u"Edit"_s, u"Edit selected items"_s}},
        {"cmdListDelete_1", {u"Delete"_s, u"Delete selected items"_s}},
        {"cmdListSwap", {u"+/-"_s, u"Reverse +/- status of selected addresses"_s}},
        {"chkInstantAdd", {u"Bypass"_s, u"Check to automatically process the pending list"_s}}};
    for (const auto &[name, wording] : buttons)
        EXPECT_EQ(Wording(name), wording) << name;
    EXPECT_EQ(pending.objectName(), u"Frame3"_s);
    EXPECT_EQ(pending.title(), u"Pending List"_s);
    EXPECT_EQ(AddressBox()->toolTip(), u"Enter e-mail addresses here"_s);
    EXPECT_EQ(Find<QTimer>("tmrCaptureEmail")->interval(), 500);
}

TEST_F(PendingListFrameTest, AddAndRemoveQueueRequestsAndEmptyTheBox) {
    Type("aa@x.test");
    Click("cmdEmailAdd_0");
    EXPECT_EQ(Text(), QString());
    Type("bb@x.test");
    Click("cmdEmailAdd_1");
    EXPECT_EQ(Pending(), Words("+aa@x.test -bb@x.test"));
    EXPECT_FALSE(IsEnabled("cmdEmailAdd_0"));
    EXPECT_TRUE(IsEnabled("cmdCapturesAdd"));
}

TEST_F(PendingListFrameTest, EnterSubscribes) {
    Type("aa@x.test");
    QTest::keyClick(AddressBox(), Qt::Key_Return);
    Type("bb@x.test");
    QTest::keyClick(AddressBox(), Qt::Key_Enter);
    EXPECT_EQ(Pending(), Words("+aa@x.test +bb@x.test"));
    EXPECT_EQ(Text(), QString());
}

TEST_F(PendingListFrameTest, EnterInAnEmptyBoxDoesNothing) {
    QTest::keyClick(AddressBox(), Qt::Key_Return);
    EXPECT_EQ(Pending() + TakeStatus() + profile.Boxes.Texts(), QStringList());
}

TEST_F(PendingListFrameTest, AnInvalidAddressStaysForCorrection) {
    Type("nobody");
    Click("cmdEmailAdd_1");
    EXPECT_EQ(Text(), u"nobody"_s);
    EXPECT_EQ(TakeStatus(), QStringList(u"The e-mail address [nobody] is invalid"_s));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingListFrameTest, ValidateOnlyTells) {
    Type("aa@x.test");
    Click("cmdEmailValidate");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(u"The e-mail address [aa@x.test] appears to be valid"_s));
    EXPECT_EQ(Text(), u"aa@x.test"_s);
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingListFrameTest, TypedBlanksAndALinkPrefixVanish) {
    Type(" aa@x. test ");
    EXPECT_EQ(Text(), u"aa@x.test"_s);
    AddressBox()->clear();
    Type("mailto:a@b.com");
    EXPECT_EQ(Text(), u"a@b.com"_s);
}

TEST_F(PendingListFrameTest, APastedLinkArrivesBare) {
    for (const char *text : {"mailto:a@b.com", "  mailto:a@b.com  ", "mailto: a@b.com"}) {
        AddressBox()->clear();
        QGuiApplication::clipboard()->setText(QString::fromLatin1(text));
        AddressBox()->paste();
        EXPECT_EQ(Text(), u"a@b.com"_s);
    }
}

TEST_F(PendingListFrameTest, AnUpperCaseLinkIsKeptAndRefused) {
    Type("MAILTO:a@b.com");
    EXPECT_EQ(Text(), u"MAILTO:a@b.com"_s);
    Click("cmdEmailAdd_0");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(u"The e-mail address [MAILTO:a@b.com] is invalid"_s));
}

TEST_F(PendingListFrameTest, PastedLinesAreNoAddress) {
    QGuiApplication::clipboard()->setText(u"aa@x.test\nbb@x.test"_s);
    AddressBox()->paste();
    Click("cmdEmailAdd_0");
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
}

TEST_F(PendingListFrameTest, TheAddButtonsFollowTheText) {
    const auto enabled = [this] {
        return std::vector<bool>{IsEnabled("cmdEmailAdd_0"), IsEnabled("cmdEmailAdd_1"),
                                 IsEnabled("cmdEmailValidate")};
    };
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false}));
    Type("a");
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true}));
    QTest::keyClick(AddressBox(), Qt::Key_Backspace);
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false}));
    Type(" ");
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false}));
}

TEST_F(PendingListFrameTest, BypassProcessesEachAddAtOnce) {
    pending.SetBypass(true);
    EXPECT_TRUE(Find<QCheckBox>("chkInstantAdd")->isChecked());
    Type("aa@x.test");
    Click("cmdEmailAdd_0");
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("mm@x.test aa@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    Type("MM@x.test");
    Click("cmdEmailAdd_1");
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Added [aa@x.test] to the pending list"_s, u"Processing pending list"_s,
                           u"Processing pending list (1/1)"_s, u"Pending list processing complete (+1)"_s,
                           u"Added [MM@x.test] to the pending list"_s, u"Processing pending list"_s,
                           u"Processing pending list (1/1)"_s, u"Pending list processing complete (-1)"_s}));
}

TEST_F(PendingListFrameTest, AnInvalidAddressIsNotFollowedByProcessing) {
    pending.SetBypass(true);
    AddPending(Words("+aa@x.test"));
    Type("nobody");
    Click("cmdEmailAdd_0");
    EXPECT_EQ(Pending(), Words("+aa@x.test"));
}

TEST_F(PendingListFrameTest, TheProcessButtonProcesses) {
    AddPending(Words("+aa@x.test -mm@x.test"));
    Click("cmdCapturesAdd");
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_FALSE(IsEnabled("cmdCapturesAdd"));
}

TEST_F(PendingListFrameTest, EditDeleteAndSwapWorkOnTheSelection) {
    AddPending(Words("+aa@x.test -bb@x.test +cc@x.test"));
    ClickRow(kPending, 1);
    profile.Boxes.Inputs = {u"zz@x.test"_s};
    Click("cmdListEdit_1");
    ClickRow(kPending, 0, Qt::ControlModifier);
    Click("cmdListSwap");
    EXPECT_EQ(Pending(), Words("-aa@x.test +zz@x.test +cc@x.test"));
    Click("cmdListDelete_1");
    EXPECT_EQ(Pending(), Words("+cc@x.test"));
    EXPECT_FALSE(IsEnabled("cmdListDelete_1"));
    EXPECT_TRUE(TakeStatus().contains(u"Selected 2 addresses"_s));
}

TEST_F(PendingListFrameTest, TheMailButtonAsksForAMailCheck) {
    const QSignalSpy wanted(&pending, &PendingListFrame::MailCheckWanted);
    Click("cmdAutoAdd");
    EXPECT_EQ(wanted.count(), 1);
}

TEST_F(PendingListFrameTest, CaptureBeginsWithAnEmptyClipboard) {
    QGuiApplication::clipboard()->setText(u"old@x.test"_s);
    Click("cmdCapture");
    EXPECT_EQ(Clipboard(), QString());
    EXPECT_TRUE(pending.IsCapturing());
    EXPECT_EQ(Wording("cmdCapture").first, u"End Capture"_s);
    EXPECT_EQ(captions, QStringList(u"0 e-mail addresses captured"_s));
    EXPECT_EQ(TakeStatus(), QStringList(u"E-mail address capture on"_s));
    Tick();
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingListFrameTest, CaptureEndsWithAnEmptyClipboard) {
    Click("cmdCapture");
    QGuiApplication::clipboard()->setText(u"late@x.test"_s);
    Click("cmdCapture");
    EXPECT_EQ(Clipboard(), QString());
    EXPECT_FALSE(pending.IsCapturing());
    EXPECT_EQ(Wording("cmdCapture").first, u"Clipboard"_s);
    EXPECT_EQ(captions.last(), QString());
    EXPECT_EQ(TakeStatus().last(), u"E-mail address capture off"_s);
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingListFrameTest, TwoHundredCopiedTextsAreCaptured) {
    Click("cmdCapture");
    QStringList expected;
    for (const QString &address : test::Addresses(200, u"user"_s)) {
        Copy(address);
        expected << u'+' + address;
    }
    EXPECT_EQ(Pending(), expected);
    EXPECT_EQ(captions.size(), 201);
    EXPECT_EQ(captions.last(), u"200 e-mail addresses captured"_s);
    EXPECT_EQ(Clipboard(), QString());
    EXPECT_TRUE(IsEnabled("cmdCapturesAdd"));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 199);
}

TEST_F(PendingListFrameTest, WhatIsNoAddressLeavesTheCaption) {
    Click("cmdCapture");
    Copy(u"a paragraph with ab@x.test in it"_s);
    Copy(u"<b>ab@x.test</b>"_s);
    EXPECT_EQ(captions.size(), 1);
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingListFrameTest, TheTimerItselfTakesACopiedText) {
    Click("cmdCapture");
    QGuiApplication::clipboard()->setText(u"mailto:ab@x.test"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Pending() == Words("+ab@x.test"); }));
    Click("cmdCapture");
}

TEST_F(PendingListFrameTest, WithBypassTheEndOfCaptureProcessesAll) {
    pending.SetBypass(true);
    Click("cmdCapture");
    Copy(u"aa@x.test"_s);
    Copy(u"bb@x.test"_s);
    EXPECT_EQ(Pending(), Words("+aa@x.test +bb@x.test"));
    Click("cmdCapture");
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("mm@x.test aa@x.test bb@x.test"));
}

TEST_F(PendingListFrameTest, CaptureEndsWithTheLastList) {
    OpenLists({{u"news"_s, Words("aa@x.test")}});
    Click("cmdCapture");
    ASSERT_TRUE(pending.IsCapturing());
    const QSignalSpy wanted(&pending, &PendingListFrame::CaptionWanted);
    TakeStatus();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdFileDelete");
    EXPECT_FALSE(pending.IsCapturing());
    EXPECT_EQ(Wording("cmdCapture").first, u"Clipboard"_s);
    EXPECT_EQ(TakeStatus().last(), u"E-mail address capture off"_s);
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toString(), QString());
}

TEST_F(PendingListFrameTest, TheRightButtonAsksForTheMenu) {
    AddPending(Words("+aa@x.test"));
    const QSignalSpy wanted(&pending, &PendingListFrame::ContextMenuWanted);
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(3, 3), QPoint(70, 80));
    QApplication::sendEvent(View(kPending)->viewport(), &press);
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toPoint(), QPoint(70, 80));
}

TEST_F(PendingListFrameTest, TheRightButtonOnAnEmptyListDoesNothing) {
    const QSignalSpy wanted(&pending, &PendingListFrame::ContextMenuWanted);
    QTest::mouseClick(View(kPending)->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(wanted.count(), 0);
    EXPECT_EQ(Pending() + TakeStatus(), QStringList());
}

TEST_F(PendingListFrameTest, EachNewRequestIsScrolledIntoView) {
    AddPending(test::Addresses(500, u"+a"_s));
    Type("last@x.test");
    Click("cmdEmailAdd_0");
    const QRect row = View(kPending)->visualRect(lists.lstEmailList(kPending).index(500));
    EXPECT_TRUE(View(kPending)->viewport()->rect().contains(row));
}

TEST_F(PendingListFrameTest, ABlankTypedInFrontLeavesCaretAndUndo) {
    Type("aa@x.test");
    AddressBox()->setCursorPosition(0);
    QTest::keyClick(AddressBox(), Qt::Key_Space);
    EXPECT_EQ(AddressBox()->cursorPosition(), 0);
    Type("b ");
    EXPECT_EQ(Text(), u"b aa@x.test"_s) << "a blank within is an entry's own";
    EXPECT_EQ(AddressBox()->cursorPosition(), 2);
    QTest::keySequence(AddressBox(), QKeySequence::Undo);
    EXPECT_EQ(Text(), u"aa@x.test"_s);
    QTest::keySequence(AddressBox(), QKeySequence::Undo);
    EXPECT_EQ(Text(), QString());
}

TEST_F(PendingListFrameTest, ABlankTypedOverASelectionAtTheEndTakesItsPlace) {
    Type("aa@x.test");
    AddressBox()->setSelection(0, 1);
    QTest::keyClick(AddressBox(), Qt::Key_Space);
    EXPECT_EQ(Text(), u"a@x.test"_s);
    AddressBox()->setSelection(6, 2);
    QTest::keyClick(AddressBox(), Qt::Key_Space);
    EXPECT_EQ(Text(), u"a@x.te"_s);
    QTest::keySequence(AddressBox(), QKeySequence::Undo);
    EXPECT_EQ(Text(), u"a@x.test"_s);
}

TEST_F(PendingListFrameTest, WhatIsCutOffKeepsTheCaretInItsPlace) {
    Type("aa@x.test");
    AddressBox()->setCursorPosition(2);
    AddressBox()->insert(u" "_s);
    AddressBox()->setSelection(0, 2);
    AddressBox()->del();
    EXPECT_EQ(Text(), u"@x.test"_s);
    EXPECT_EQ(AddressBox()->cursorPosition(), 0);
    AddressBox()->insert(u"mailto:ann"_s);
    EXPECT_EQ(Text(), u"ann@x.test"_s);
    EXPECT_EQ(AddressBox()->cursorPosition(), 3);
}

TEST_F(PendingListFrameTest, ThePlaceholderCanBeReadInDarkAndLightColors) {
    for (const QColor back : {QColor(Qt::white), QColor(30, 30, 30)}) {
        QPalette colors = host.palette();
        colors.setColor(QPalette::Base, back);
        colors.setColor(QPalette::Text, back.lightness() > 128 ? Qt::black : Qt::white);
        host.setPalette(colors);
        const QColor hint = AddressBox()->palette().color(QPalette::PlaceholderText);
        EXPECT_EQ(hint.rgb(), colors.color(QPalette::Text).rgb());
        EXPECT_GE(hint.alpha(), 150);
        EXPECT_LT(hint.alpha(), 255) << "it is no entry";
    }
}

TEST_F(PendingListFrameTest, TheCaptureButtonLooksPressedWhileCapturing) {
    auto *capture = Find<QAbstractButton>("cmdCapture");
    EXPECT_FALSE(capture->isChecked());
    Click("cmdCapture");
    EXPECT_TRUE(capture->isChecked());
    Click("cmdCapture");
    EXPECT_FALSE(capture->isChecked());
    Click("cmdCapture");
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdFileDelete");
    EXPECT_FALSE(capture->isChecked()) << "the last list has gone, capture has ended";
}

TEST_F(PendingListFrameTest, TheTimerGoesOnAfterATickThatFailed) {
    Click("cmdCapture");
    BlockLog(u"StatusLog.txt"_s);
    Copy(u"aa@x.test"_s);
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.tmrCaptureEmail - Permission denied"_s));
    EXPECT_TRUE(pending.IsCapturing());
    EXPECT_TRUE(IsEnabled("cmdCapturesAdd")) << "what was taken is there";
    QGuiApplication::clipboard()->setText(u"bb@x.test"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Pending() == Words("+aa@x.test +bb@x.test"); }));
}

} // namespace
} // namespace varlo
