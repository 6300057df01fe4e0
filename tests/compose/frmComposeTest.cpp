#include "compose/frmCompose.h"

#include "compose/ComposeFixture.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "core/Literals.h"

#include <QClipboard>
#include <QListWidget>
#include <QPushButton>

namespace varlo {
namespace {

class frmComposeTest : public test::ComposeFixture {
protected:
    // Opens the attachments by `how`, drops these files and presses the button.
    void Attach(const QStringList &paths, const char *button, const std::function<void()> &how) {
        const test::WhenDialog<frmAttach> answer([&](frmAttach &dialog) {
            QList<QUrl> urls;
            for (const QString &path : paths)
                urls << QUrl::fromLocalFile(path);
            QMimeData data;
            data.setUrls(urls);
            test::DropOn(test::Find<QListWidget>(&dialog, "lstAttachments")->viewport(), data);
            test::Find<QPushButton>(&dialog, button)->click();
        });
        how();
    }
    void Attach(const QStringList &paths, const char *button = "cmdOK") {
        Attach(paths, button, [this] { Choose("mnuMessageAttach"); });
    }
    QString File(const QString &name) const {
        profile.Write(name, QByteArray(1024, 'x'));
        return profile.Path(name);
    }
    int UndoAll() const {
        int steps = 0;
        for (QString before; before != Body()->Text(); ++steps) {
            before = Body()->Text();
            Choose("mnuEditUndo");
        }
        return steps - 1;
    }
};

// ---- Loading

TEST_F(frmComposeTest, OpensEmptyWithoutASignature) {
    Open();
    EXPECT_EQ(Subject()->text(), "");
    EXPECT_EQ(Body()->Text(), "");
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(Find<QLineEdit>("txtTo")->text(), "Mailing List");
    EXPECT_EQ(Label("lblStatus"), "Idle");
    EXPECT_TRUE(Indicator()->isHidden());
}

TEST_F(frmComposeTest, BeginsWithAnEmptyLineAboveTheSignature) {
    Ini("[Signature]\r\nText=Jo\\nHill\r\n");
    Open();
    EXPECT_EQ(Body()->Text(), "\r\nJo\r\nHill");
    EXPECT_EQ(Body()->textCursor().position(), 0);
}

TEST_F(frmComposeTest, LeavesTheSignatureOutWhenAutoAddIsOff) {
    Ini("[Signature]\r\nText=Jo\r\nAutoAdd=0\r\n");
    Open();
    EXPECT_EQ(Body()->Text(), "");
    Choose("mnuInsSignature");
    EXPECT_EQ(Body()->Text(), "\r\nJo");
}

TEST_F(frmComposeTest, ABrokenSettingIsReportedAndTheLoadGoesOn) {
    Ini("[Signature]\r\nText=Jo\r\nAutoAdd=maybe\r\n");
    List("news", "a@x.test\r\n");
    host.Current = "news";
    Open();
    ASSERT_EQ(profile.Log("ErrorLog.txt").size(), 1);
    EXPECT_TRUE(profile.Log("ErrorLog.txt")[0].endsWith(" Error 13 in Compose.Load - Type mismatch"));
    EXPECT_EQ(Recipients(), "1 Recipients");
}

TEST_F(frmComposeTest, ShowsTheAttachmentsThatAreStillSet) {
    host.Attachments = QStringList{File("a"), File("b")};
    Open();
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_EQ(Indicator()->toolTip(), "2 Files (2 KB)");
}

TEST_F(frmComposeTest, TellsOfAnAttachmentThatVanishedMeanwhile) {
    host.Attachments = QStringList{profile.Path("gone")};
    Open();
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_TRUE(profile.Log("ErrorLog.txt").value(0).endsWith(" Error 53 in Compose.Load - File not found"));
}

// ---- Signature, undo

TEST_F(frmComposeTest, InsertsTheSignatureAtTheCaretAndKeepsASelectionAsText) {
    Ini("[Signature]\r\nText=Jo\r\nAutoAdd=0\r\n");
    Open();
    Body()->SetText("one two");
    Body()->SetCaret(3);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    Choose("mnuInsSignature");
    EXPECT_EQ(Body()->Text(), "on\r\nJoe two");
}

TEST_F(frmComposeTest, UndoAndRedoStepThroughTheEdits) {
    Open();
    Type("abc");
    Press(Qt::Key_Z);
    Press(Qt::Key_Z);
    EXPECT_EQ(Body()->Text(), "a");
    Press(Qt::Key_Z);
    EXPECT_EQ(Body()->Text(), "a");
    Press(Qt::Key_Y);
    EXPECT_EQ(Body()->Text(), "ab");
    Choose("mnuEditRedo");
    Choose("mnuEditRedo");
    EXPECT_EQ(Body()->Text(), "abc");
}

TEST_F(frmComposeTest, TheSignatureOfTheStartIsNoEditToGoBackTo) {
    Ini("[Signature]\r\nText=Jo\r\n");
    Open();
    Type("ab");
    UndoAll();
    EXPECT_EQ(Body()->Text(), "a\r\nJo");
}

TEST_F(frmComposeTest, OneHundredFiftyEditsUndoNinetyNineSteps) {
    Open();
    Type(QString(150, u'x'));
    EXPECT_EQ(UndoAll(), 99);
    EXPECT_EQ(Body()->Text(), QString(51, u'x'));
}

TEST_F(frmComposeTest, TypingAfterTwoUndosEndsRedo) {
    Open();
    Type("abcd");
    Press(Qt::Key_Z);
    Press(Qt::Key_Z);
    Type("X");
    EXPECT_EQ(Body()->Text(), "abX");
    Press(Qt::Key_Y);
    EXPECT_EQ(Body()->Text(), "abX");
    Press(Qt::Key_Z);
    EXPECT_EQ(Body()->Text(), "ab");
}

TEST_F(frmComposeTest, UndoPutsTheCaretBeforeTheSignature) {
    Ini("[Signature]\r\nText=Jo\\nHill\r\n");
    Open();
    Type("ab");
    Press(Qt::Key_Z);
    EXPECT_EQ(Body()->Text(), "a\r\nJo\r\nHill");
    Type("X");
    EXPECT_EQ(Body()->Text(), "aX\r\nJo\r\nHill");
}

TEST_F(frmComposeTest, UndoPutsTheCaretAtTheEndWithoutASignature) {
    Open();
    Body()->SetText("one\r\ntwo");
    Body()->SetCaret(0);
    Type("ab");
    Press(Qt::Key_Z);
    Type("X");
    EXPECT_EQ(Body()->Text(), "aone\r\ntwoX");
}

TEST_F(frmComposeTest, UndoBringsTheTextBackThatClearAllTook) {
    Ini("[Signature]\r\nText=Jo\r\n");
    Open();
    Body()->SetText("Hello");
    Choose("mnuMessageClearAll");
    EXPECT_EQ(Body()->Text(), "\r\nJo");
    Choose("mnuEditUndo");
    EXPECT_EQ(Body()->Text(), "Hello");
    Choose("mnuEditRedo");
    EXPECT_EQ(Body()->Text(), "\r\nJo");
}

TEST_F(frmComposeTest, UndoBringsTheTextBackThatADraftReplaced) {
    profile.Write("draft.txt", "News\r\nfrom\r\nthe draft\r\n");
    Open();
    Body()->SetText("Hello");
    Choose("mnuMessageOpen");
    EXPECT_EQ(Body()->Text(), "from\r\nthe draft");
    Choose("mnuEditUndo");
    EXPECT_EQ(Body()->Text(), "Hello");
}

TEST_F(frmComposeTest, ATextSetAgainIsNoEdit) {
    Open();
    Type("ab");
    Body()->SetText("ab");
    Choose("mnuEditUndo");
    EXPECT_EQ(Body()->Text(), "a");
}

// ---- Drafts

TEST_F(frmComposeTest, SavesTheDraftByteForByte) {
    Open();
    Subject()->setText("News");
    Body()->SetText("Dear all,\r\n\r\nbye");
    Choose("mnuMessageSave");
    EXPECT_EQ(profile.Read("draft.txt"), "News\r\nDear all,\r\n\r\nbye\r\n");
    EXPECT_EQ(Label("lblStatus"), "Draft saved");
}

TEST_F(frmComposeTest, ADraftThatCannotBeSavedSaysSoAndStaysInTheWindow) {
    ASSERT_TRUE(QDir(profile.session.ProfilePath).mkpath("draft.txt/taken"));
    Open();
    Body()->SetText("Hello");
    Choose("mnuMessageSave");
    EXPECT_EQ(Body()->Text(), "Hello");
    EXPECT_EQ(Label("lblStatus"), "Idle");
    ASSERT_EQ(profile.Log("ErrorLog.txt").size(), 1);
    EXPECT_TRUE(profile.Log("ErrorLog.txt")[0].contains(" in Compose.mnuMessageSave - "));
}

TEST_F(frmComposeTest, OpensTheDraftAndGivesTheFocusToTheBody) {
    profile.Write("draft.txt", "News\r\nDear all,\r\n\r\nbye\r\n");
    Open();
    Subject()->setFocus();
    Choose("mnuMessageOpen");
    EXPECT_EQ(Subject()->text(), "News");
    EXPECT_EQ(Body()->Text(), "Dear all,\r\n\r\nbye");
    EXPECT_TRUE(Body()->hasFocus());
}

TEST_F(frmComposeTest, ADraftWithASubjectOnlyLeavesTheBodyEmpty) {
    profile.Write("draft.txt", "News\r\n");
    Open();
    Body()->SetText("Hello");
    Choose("mnuMessageOpen");
    EXPECT_EQ(Subject()->text(), "News");
    EXPECT_EQ(Body()->Text(), "");
}

TEST_F(frmComposeTest, WithoutADraftSaysSoAndChangesNothing) {
    Open();
    Subject()->setText("News");
    Body()->SetText("Hello");
    Choose("mnuMessageOpen");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList("No saved draft found."));
    EXPECT_EQ(Subject()->text(), "News");
    EXPECT_EQ(Body()->Text(), "Hello");
}

TEST_F(frmComposeTest, ADraftThatCannotBeReadChangesNothing) {
    ASSERT_TRUE(QDir(profile.session.ProfilePath).mkdir("draft.txt"));
    Open();
    Body()->SetText("Hello");
    Choose("mnuMessageOpen");
    EXPECT_EQ(Body()->Text(), "Hello");
    EXPECT_EQ(profile.Log("ErrorLog.txt").size(), 1);
}

TEST_F(frmComposeTest, AMegabyteDraftComesBackWhole) {
    Open();
    const QString body = u"0123456789abcd\r\n"_s.repeated(65536);
    Body()->SetText(body);
    Choose("mnuMessageSave");
    Choose("mnuMessageClearAll");
    Choose("mnuMessageOpen");
    EXPECT_TRUE(Body()->Text() == body);
}

// ---- Clear All

TEST_F(frmComposeTest, ClearAllReadsTheSignatureAgainWhateverAutoAddSays) {
    Ini("[Signature]\r\nText=Jo\r\nAutoAdd=0\r\n");
    Open();
    Subject()->setText("News");
    Ini("[Signature]\r\nText=Jo\\nHill\r\nAutoAdd=0\r\n");
    Choose("mnuMessageClearAll");
    EXPECT_EQ(Subject()->text(), "");
    EXPECT_EQ(Body()->Text(), "\r\nJo\r\nHill");
}

TEST_F(frmComposeTest, ClearAllHidesTheIndicatorAndKeepsTheArray) {
    host.Attachments = QStringList{File("a")};
    Open();
    Choose("mnuMessageClearAll");
    EXPECT_TRUE(Indicator()->isHidden());
    EXPECT_EQ(host.Attachments, QStringList({profile.Path("a")}));
}

// ---- Attachments

TEST_F(frmComposeTest, OkInTheAttachmentsShowsTheIndicatorWithTheSizeOfThatMoment) {
    Open();
    Attach({File("a"), File("b")});
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_EQ(Indicator()->toolTip(), "0 Files (0 KB)"); // a drop leaves the size as it was
    Attach({});
    EXPECT_EQ(Indicator()->toolTip(), "2 Files (2 KB)");
}

TEST_F(frmComposeTest, TheIndicatorOpensTheAttachments) {
    host.Attachments = QStringList{File("a")};
    Open();
    Attach({File("b")}, "cmdOK", [this] { Indicator()->click(); });
    EXPECT_EQ(host.Attachments, QStringList({profile.Path("a"), profile.Path("b")}));
}

TEST_F(frmComposeTest, CancelInTheAttachmentsLeavesArrayAndIndicator) {
    Open();
    Attach({File("a")}, "cmdCancel");
    EXPECT_TRUE(Indicator()->isHidden());
    EXPECT_EQ(host.Attachments, QStringList({""}));
}

TEST_F(frmComposeTest, OkOnAnEmptyListHidesTheIndicator) {
    host.Attachments = QStringList{File("a")};
    Open();
    const test::WhenDialog<frmAttach> answer([](frmAttach &dialog) {
        test::Find<QListWidget>(&dialog, "lstAttachments")->setCurrentRow(0);
        test::Find<QPushButton>(&dialog, "cmdRemoveFile")->click();
        test::Find<QPushButton>(&dialog, "cmdOK")->click();
    });
    Choose("mnuMessageAttach");
    EXPECT_TRUE(Indicator()->isHidden());
    EXPECT_EQ(host.Attachments, QStringList({""}));
}

TEST_F(frmComposeTest, ClosingTheWindowClosesItsDialogs) {
    Open();
    const test::WhenDialog<frmAttach> answer([this](frmAttach &) { window->close(); });
    Choose("mnuMessageAttach");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isNull(); }));
}

TEST_F(frmComposeTest, DestroyingTheWindowUnderItsDialogsIsSafe) {
    Open();
    {
        const test::WhenDialog<frmAttach> answer([this](frmAttach &) { delete window; });
        Choose("mnuMessageAttach");
    }
    Open();
    const test::WhenDialog<frmCompRecip> answer([this](frmCompRecip &) { delete window; });
    ChooseTo("Select Lists...");
    EXPECT_TRUE(window.isNull());
}

// ---- Keys and the clipboard

TEST_F(frmComposeTest, TheKeysOfTheBodyCutCopyPasteAndSelect) {
    Open();
    Type("one");
    Press(Qt::Key_A);
    Press(Qt::Key_C);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "one");
    Press(Qt::Key_X);
    EXPECT_EQ(Body()->Text(), "");
    Press(Qt::Key_V);
    Press(Qt::Key_V);
    EXPECT_EQ(Body()->Text(), "oneone");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Body()->Text(), "");
}

TEST_F(frmComposeTest, AKeyWithAnotherModifierIsNoCommand) {
    Open();
    Type("abc");
    Press(Qt::Key_Z);
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Press(Qt::Key_Y, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Body()->Text(), "ab");
}

TEST_F(frmComposeTest, TheMenuCommandsActOnTheBodyAndFocusIt) {
    Open();
    Body()->SetText("one two");
    Subject()->setFocus();
    Choose("mnuEditSelectAll");
    EXPECT_TRUE(Body()->hasFocus());
    Choose("mnuEditCut");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "one two");
    Subject()->setFocus();
    Choose("mnuEditPaste");
    EXPECT_TRUE(Body()->hasFocus());
    EXPECT_EQ(Body()->Text(), "one two");
    Choose("mnuEditSelectAll");
    Choose("mnuEditCopy");
    EXPECT_EQ(Body()->Text(), "one two");
}

TEST_F(frmComposeTest, TheKeysOfTheOtherMenusWorkInTheBody) {
    Open();
    Type("one");
    Press(Qt::Key_S);
    EXPECT_EQ(profile.Read("draft.txt"), "\r\none\r\n");
    Type("two");
    Press(Qt::Key_O);
    EXPECT_EQ(Body()->Text(), "one");
}

TEST_F(frmComposeTest, TheKeysKeepTheirMeaningInTheOtherFields) {
    Open();
    Body()->SetText("body");
    Subject()->setFocus();
    QTest::keyClicks(Subject(), "abc");
    QTest::keyClick(Subject(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(Subject(), Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(Subject(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Body()->Text(), "body");
    EXPECT_FALSE(Body()->textCursor().hasSelection());
    EXPECT_FALSE(Body()->hasFocus());
}

} // namespace
} // namespace varlo
