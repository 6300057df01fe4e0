#include "lists/frmImport.h"

#include "lists/ImportText.h"
#include "lists/ListsFixture.h"
#include "lists/ReviewTable.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

namespace varlo::test {
namespace {

struct frmImportTest : ListsFixture {
    frmImportTest() {
        OpenList(u"news"_s, Words("anna@x.test"));
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template<typename Control> Control *Find(const char *name) {
        auto *control = window.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QString Counts() { return Find<QLabel>("lblImportCounts")->text(); }
    bool Shows(const QString &counts) {
        return WaitUntil([&] { return Counts() == counts && !IsBusy(); });
    }
    bool IsBusy() {
        for (const QTimer *timer : window.findChildren<QTimer *>())
            if (timer->isActive())
                return true;
        return false;
    }
    void PasteText(const QString &text) {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(Find<ImportText>("txtImport"), Qt::Key_V, Qt::ControlModifier);
    }
    bool IsShown(const char *name) { return Find<QWidget>(name)->isVisible(); }
    QString Cell(int row, int column) {
        return Find<QTableView>("tblImport")->model()->index(row, column).data().toString();
    }

    frmImport window{session, lists};
};

TEST_F(frmImportTest, BeginsWithNothing) {
    EXPECT_EQ(window.windowTitle(), u"Import Addresses"_s);
    EXPECT_EQ(Counts(), u"No addresses found"_s);
    EXPECT_FALSE(Find<QPushButton>("cmdOK")->isEnabled());
    EXPECT_EQ(Find<QComboBox>("cmbImportAs")->currentText(), u"\"+\", to be added"_s);
    EXPECT_TRUE(Find<ImportText>("txtImport")->hasFocus());
    for (const char *hidden :
         {"lstImportFiles", "cmdImportLeaveOut", "prgImport", "cmdImportStop", "barImport"})
        EXPECT_FALSE(IsShown(hidden)) << hidden;
}

TEST_F(frmImportTest, ShowsWhatIsFoundWhileItIsPastedAndEdited) {
    PasteText(u"ask anna@x.test or bo@x.test\n"_s);
    EXPECT_FALSE(Find<QPushButton>("cmdOK")->isEnabled()) << "before it was looked at";
    EXPECT_TRUE(Shows(u"1 new, 1 already on the list"_s));
    EXPECT_TRUE(Find<QPushButton>("cmdOK")->isEnabled());
    QTest::keyClicks(Find<ImportText>("txtImport"), u"cy@x.test"_s);
    EXPECT_TRUE(Shows(u"2 new, 1 already on the list"_s));
    EXPECT_EQ(Cell(2, 0), u"cy@x.test"_s);
    Find<ImportText>("txtImport")->clear();
    EXPECT_TRUE(Shows(u"No addresses found"_s));
}

TEST_F(frmImportTest, TouchesNothingUntilOk) {
    PasteText(u"bo@x.test cy@x.test"_s);
    ASSERT_TRUE(Shows(u"2 new"_s));
    EXPECT_EQ(Pending(), QStringList());
    QTest::mouseClick(Find<QPushButton>("cmdOK"), Qt::LeftButton);
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_EQ(Pending(), Words("+bo@x.test +cy@x.test"));
}

TEST_F(frmImportTest, EscapeTouchesNothing) {
    PasteText(u"bo@x.test"_s);
    ASSERT_TRUE(Shows(u"1 new"_s));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(frmImportTest, RemovesWhenTold) {
    PasteText(u"bo@x.test anna@x.test"_s);
    ASSERT_TRUE(Shows(u"1 new, 1 already on the list"_s));
    Find<QComboBox>("cmbImportAs")->setCurrentIndex(1);
    EXPECT_EQ(Counts(), u"1 to remove, 1 not on the list"_s);
    QTest::mouseClick(Find<QPushButton>("cmdOK"), Qt::LeftButton);
    EXPECT_EQ(Pending(), Words("-anna@x.test"));
}

TEST_F(frmImportTest, CorrectsByKeyboard) {
    PasteText(u"bo@x.test b+o@x.test"_s);
    ASSERT_TRUE(Shows(u"1 new, 1 unusable"_s));
    auto *table = Find<QTableView>("tblImport");
    table->setFocus();
    table->setCurrentIndex(table->model()->index(0, ImportReview::kResult));
    QTest::keyClick(table, Qt::Key_Return);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_TRUE(editor) << "Enter opens the address";
    editor->setText(u"cy@x.test"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(WaitUntil([&] { return Counts() == u"2 new"_s; }));
    EXPECT_TRUE(window.isVisible()) << "Enter did not press OK";
    EXPECT_EQ(table->currentIndex().row(), 0);
    table->setFocus();
    table->setCurrentIndex(table->model()->index(1, 0));
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "nor on a row that needs no correction";
}

TEST_F(frmImportTest, ShowsOneKindOfRows) {
    PasteText(u"bo@x.test anna@x.test b+o@x.test"_s);
    ASSERT_TRUE(Shows(u"1 new, 1 already on the list, 1 unusable"_s));
    auto *show = Find<QComboBox>("cmbImportShow");
    const auto rows = [&](const QString &kind) {
        show->setCurrentText(kind);
        QStringList shown;
        for (int row = 0; row < Find<QTableView>("tblImport")->model()->rowCount(); ++row)
            shown << Cell(row, 0);
        return shown;
    };
    EXPECT_EQ(rows(u"New"_s), Words("bo@x.test"));
    EXPECT_EQ(rows(u"Already on the list"_s), Words("anna@x.test"));
    EXPECT_EQ(rows(u"Unusable"_s), Words("b+o@x.test"));
    for (const char *none : {"Not on the list", "Already pending", "Repeated"})
        EXPECT_EQ(rows(QString::fromLatin1(none)), QStringList()) << none;
    EXPECT_EQ(rows(u"Everything"_s), Words("b+o@x.test bo@x.test anna@x.test"));
}

TEST_F(frmImportTest, OpensAFileAndLeavesItOutAgain) {
    profile.Write(u"members.csv"_s, "Name;E-mail\nBo;bo@x.test\n");
    profile.Boxes.Files = {profile.Path(u"members.csv"_s)};
    QTest::mouseClick(Find<QPushButton>("cmdImportFile"), Qt::LeftButton);
    ASSERT_TRUE(Shows(u"1 new"_s));
    EXPECT_EQ(Cell(0, 1), u"members.csv, line 2"_s);
    EXPECT_TRUE(IsShown("lstImportFiles"));
    QTest::mouseClick(Find<QPushButton>("cmdImportLeaveOut"), Qt::LeftButton);
    EXPECT_TRUE(Shows(u"No addresses found"_s));
    EXPECT_FALSE(IsShown("lstImportFiles"));
    EXPECT_TRUE(Find<ImportText>("txtImport")->hasFocus());
    profile.Boxes.Files = {QString()};
    QTest::mouseClick(Find<QPushButton>("cmdImportFile"), Qt::LeftButton);
    EXPECT_FALSE(IsShown("lstImportFiles")) << "cancelled";
}

TEST_F(frmImportTest, TellsOfAFileThatIsNoText) {
    profile.Write(u"members.xlsx"_s, "PK\x03\x04");
    window.Take({.Files = {profile.Path(u"members.xlsx"_s)}, .Text = {}});
    EXPECT_TRUE(IsShown("barImport"));
    EXPECT_EQ(Find<QLabel>("lblNotice")->text(),
              u"[members.xlsx] is not text. Save it as CSV or text first."_s);
    profile.Write(u"bo.txt"_s, "bo@x.test");
    window.Take({.Files = {profile.Path(u"bo.txt"_s)}, .Text = {}});
    EXPECT_FALSE(IsShown("barImport"));
    EXPECT_TRUE(Shows(u"1 new"_s));
}

TEST_F(frmImportTest, PastedFilesAreOpened) {
    profile.Write(u"bo.txt"_s, "bo@x.test");
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(profile.Path(u"bo.txt"_s))});
    QGuiApplication::clipboard()->setMimeData(data);
    QTest::keyClick(Find<ImportText>("txtImport"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(Shows(u"1 new"_s));
    EXPECT_EQ(Find<QListWidget>("lstImportFiles")->count(), 1);
}

TEST_F(frmImportTest, ALongTextIsLookedThroughWithoutBeingShown) {
    PasteText(u"bo@x.test "_s + QString(ImportText::kLongest, u'x'));
    EXPECT_TRUE(Shows(u"1 new"_s));
    EXPECT_EQ(Find<ImportText>("txtImport")->toPlainText(), QString());
    EXPECT_EQ(Cell(0, 1), u"Pasted text, line 1"_s);
}

TEST_F(frmImportTest, ALongSearchShowsItsProgressAndCanBeStoppedAndGoOn) {
    QString text;
    for (int i = 0; i < 600000; ++i)
        text += u"user%1@x.test, "_s.arg(i);
    window.Take({.Files = {}, .Text = text});
    ASSERT_TRUE(WaitUntil([&] { return IsShown("cmdImportStop"); }));
    EXPECT_TRUE(IsShown("prgImport"));
    EXPECT_EQ(Counts(), u"Looking for addresses..."_s);
    EXPECT_FALSE(Find<QPushButton>("cmdOK")->isEnabled());
    QTest::mouseClick(Find<QPushButton>("cmdImportStop"), Qt::LeftButton);
    EXPECT_FALSE(IsShown("prgImport"));
    EXPECT_TRUE(Counts().contains(u"(stopped at "_s)) << Counts().toStdString();
    EXPECT_TRUE(Find<QPushButton>("cmdOK")->isEnabled()) << "what was found can be taken";
    EXPECT_EQ(Find<QPushButton>("cmdImportStop")->text(), u"&Go On"_s);
    QTest::mouseClick(Find<QPushButton>("cmdImportStop"), Qt::LeftButton);
    EXPECT_TRUE(Shows(u"600000 new; the Pending list has room for 32767"_s)) << Counts().toStdString();
    EXPECT_FALSE(IsShown("cmdImportStop"));
}

TEST_F(frmImportTest, FollowsThePendingList) {
    PasteText(u"bo@x.test cy@x.test"_s);
    ASSERT_TRUE(Shows(u"2 new"_s));
    lists.Pending.Offer({RequestKind::Subscribe, u"bo@x.test"_s, RequestOrigin::Mailbox});
    EXPECT_TRUE(Shows(u"1 new, 1 already pending"_s));
}

TEST_F(frmImportTest, TakesWhatIsDroppedOnIt) {
    QMimeData data;
    data.setText(u"bo@x.test"_s);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    EXPECT_TRUE(Shows(u"1 new"_s));
    EXPECT_EQ(Find<ImportText>("txtImport")->toPlainText(), u"bo@x.test"_s);
}

} // namespace
} // namespace varlo::test
