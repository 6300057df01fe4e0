#include "compose/frmAttach.h"

#include "compose/AttachmentBox.h"
#include "compose/WindowHelpers.h"
#include "core/Literals.h"
#include "support/TestProfile.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

const QString kToolTip = u"Add and remove files to be sent as attachments with your e-mail"_s;

class frmAttachTest : public testing::Test {
protected:
    void Open() { dialog = std::make_unique<frmAttach>(profile.session, attached); }
    void Open(const QStringList &attachments) {
        attached = attachments;
        Open();
    }
    AttachmentBox *List() const { return test::Find<AttachmentBox>(dialog.get(), "lstAttachments"); }
    QString SizeText() const { return test::Find<QLabel>(dialog.get(), "lblFilesize")->text(); }
    void Click(const char *button) const { test::Find<QPushButton>(dialog.get(), button)->click(); }
    void Add(const QString &path) {
        profile.Boxes.Files.push_back(path);
        Click("cmdAddFile");
    }
    void Drop(const QList<QUrl> &urls) const {
        QMimeData mime;
        mime.setUrls(urls);
        test::DropOn(List()->viewport(), mime);
    }
    QString File(const QString &name, int bytes) const {
        profile.Write(name, QByteArray(bytes, 'x'));
        return profile.Path(name);
    }

    test::TestProfile profile;
    QStringList attached{QString()};
    std::unique_ptr<frmAttach> dialog;
    const QString a = File("a.txt", 600);
    const QString b = File("b.txt", 600);
    const QString c = File("c.txt", 600);
};

TEST_F(frmAttachTest, WithoutAttachmentsShowsNoRowsAndNoKilobytes) {
    Open({""});
    EXPECT_EQ(List()->Rows(), QStringList());
    EXPECT_EQ(SizeText(), "0 Files (0 KB)");
    EXPECT_EQ(List()->toolTip(), kToolTip);
}

TEST_F(frmAttachTest, ItsControlsHaveTheirNamesAndCaptions) {
    Open();
    QStringList captions;
    for (const char *name : {"cmdAddFile", "cmdRemoveFile", "cmdOK", "cmdCancel"})
        captions << test::Find<QPushButton>(dialog.get(), name)->text().remove(u'&');
    EXPECT_EQ(captions, (QStringList{u"Add File..."_s, u"Remove File"_s, u"OK"_s, u"Cancel"_s}));
    EXPECT_EQ(dialog->windowTitle(), u"Attachments"_s);
}

TEST_F(frmAttachTest, LoadsTheArrayInItsOrder) {
    Open({c, a, b});
    EXPECT_EQ(List()->Rows(), QStringList({c, a, b}));
    EXPECT_EQ(SizeText(), "3 Files (3 KB)");
}

TEST_F(frmAttachTest, AddsTheChosenFile) {
    Open();
    Add(a);
    Add(b);
    EXPECT_EQ(List()->Rows(), QStringList({a, b}));
    EXPECT_EQ(SizeText(), "2 Files (2 KB)");
    const test::ScriptedDialogs::Input box{QString::fromLatin1("All Files\0*.*\0", 14),
                                           "Select file to attach", profile.session.ProgramFolder};
    EXPECT_EQ(profile.Boxes.FileBoxes.front(), box);
}

TEST_F(frmAttachTest, AddsTheSamePathTwice) {
    Open();
    Add(a);
    Add(a);
    EXPECT_EQ(List()->Rows(), QStringList({a, a}));
}

TEST_F(frmAttachTest, ACancelledFileBoxAddsNothing) {
    Open({a});
    Add("");
    EXPECT_EQ(List()->Rows(), QStringList({a}));
}

TEST_F(frmAttachTest, ADropAppendsItsFilesAndLeavesTheSize) {
    Open({a});
    Drop({QUrl::fromLocalFile(c), QUrl::fromLocalFile(b)});
    EXPECT_EQ(List()->Rows(), QStringList({a, c, b}));
    EXPECT_EQ(SizeText(), "1 Files (1 KB)");
}

TEST_F(frmAttachTest, TheSizeCatchesUpWithADropAtTheNextAdd) {
    Open();
    Drop({QUrl::fromLocalFile(a), QUrl::fromLocalFile(b)});
    EXPECT_EQ(SizeText(), "0 Files (0 KB)");
    Add(c);
    EXPECT_EQ(SizeText(), "3 Files (3 KB)");
}

TEST_F(frmAttachTest, ADroppedFolderIsIgnored) {
    Open();
    Drop({QUrl::fromLocalFile(profile.session.ProfilePath), QUrl::fromLocalFile(a)});
    EXPECT_EQ(List()->Rows(), QStringList({a}));
}

TEST_F(frmAttachTest, ADroppedFileThatIsGoneIsToldOfByTheNextSummary) {
    Open();
    const QString gone = profile.Path("gone.txt");
    Drop({QUrl::fromLocalFile(gone)});
    EXPECT_EQ(List()->Rows(), QStringList({gone}));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    Add(a);
    EXPECT_EQ(SizeText(), "0 Files (0 KB)");
    ASSERT_EQ(profile.Log("ErrorLog.txt").size(), 1);
    EXPECT_TRUE(profile.Log("ErrorLog.txt")[0].endsWith(" Error 53 in Attach.RefreshFiles - File not found"));
}

TEST_F(frmAttachTest, FiveHundredDroppedFilesStandInTheirOrder) {
    Open();
    QList<QUrl> urls;
    QStringList paths;
    for (int i = 500; i > 0; --i) {
        paths << profile.Path(QString::number(i));
        urls << QUrl::fromLocalFile(paths.last());
    }
    Drop(urls);
    EXPECT_EQ(List()->Rows(), paths);
    EXPECT_EQ(SizeText(), "0 Files (0 KB)");
}

TEST_F(frmAttachTest, RemovingSelectsTheRowThatTakesThePlace) {
    Open({a, b, c});
    List()->setCurrentRow(1);
    Click("cmdRemoveFile");
    EXPECT_EQ(List()->Rows(), QStringList({a, c}));
    EXPECT_EQ(List()->currentRow(), 1);
    EXPECT_EQ(SizeText(), "2 Files (2 KB)");
}

TEST_F(frmAttachTest, RepeatedClicksRemoveEverything) {
    Open({a, b, c});
    List()->setCurrentRow(2);
    for (int i = 0; i < 3; ++i)
        Click("cmdRemoveFile");
    EXPECT_EQ(List()->Rows(), QStringList());
    EXPECT_EQ(SizeText(), "0 Files (0 KB)");
}

TEST_F(frmAttachTest, RemovingWithoutASelectionDoesNothing) {
    Open({a, b});
    EXPECT_FALSE(test::Find<QPushButton>(dialog.get(), "cmdRemoveFile")->isEnabled());
    Click("cmdRemoveFile");
    EXPECT_EQ(List()->Rows(), QStringList({a, b}));
}

TEST_F(frmAttachTest, TheDeleteKeyRemovesTheSelectedRow) {
    Open({a, b});
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    List()->setFocus();
    List()->setCurrentRow(0);
    QTest::keyClick(List(), Qt::Key_Delete);
    EXPECT_EQ(List()->Rows(), QStringList({b}));
}

TEST_F(frmAttachTest, ClickingARowNamesItInTheToolTip) {
    Open({a, b});
    dialog->show();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->visualItemRect(List()->item(1)).center());
    EXPECT_EQ(List()->toolTip(), "Current selection [" + b + "]");
}

TEST_F(frmAttachTest, TheFocusAloneLeavesTheToolTip) {
    Open({a});
    dialog->show();
    List()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(List()->toolTip(), kToolTip);
}

TEST_F(frmAttachTest, OkSetsTheArray) {
    Open();
    Drop({QUrl::fromLocalFile(b), QUrl::fromLocalFile(a)});
    Click("cmdOK");
    EXPECT_EQ(attached, QStringList({b, a}));
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(frmAttachTest, OkOnAnEmptyListLeavesOneEmptyElement) {
    Open({a});
    List()->setCurrentRow(0);
    Click("cmdRemoveFile");
    Click("cmdOK");
    EXPECT_EQ(attached, QStringList({""}));
}

TEST_F(frmAttachTest, CancelLeavesTheArray) {
    Open({a});
    Add(b);
    Click("cmdCancel");
    EXPECT_EQ(attached, QStringList({a}));
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}

} // namespace
} // namespace varlo
