// The ways to the windows that take addresses in and out.
#include "lists/BulkWindows.h"

#include "core/Literals.h"
#include "lists/FramesFixture.h"
#include "lists/frmImport.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>
#include <QtTest>

namespace varlo {
namespace {

using test::Words;

class BulkWindowsTest : public test::FramesFixture {
protected:
    BulkWindowsTest() {
        // Answers the window that is opened next, as soon as it stands.
        visitor.setInterval(10);
        QObject::connect(&visitor, &QTimer::timeout, &visitor, [this] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            visited << dialog->objectName();
            if (const auto *text = dialog->findChild<QPlainTextEdit *>(u"txtImport"_s))
                found = text->toPlainText();
            auto *ok = dialog->findChild<QPushButton *>(u"cmdOK"_s);
            if (accepts && !ok->isEnabled())
                return visited.removeLast();
            accepts ? ok->click() : dialog->reject();
        });
        visitor.start();
    }
    void OpenNews() { OpenLists({{u"news"_s, Words("aa@x.test")}}); }
    static void Copy(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    bool Drop(const QMimeData &data) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(&owner.page, &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::NoModifier);
        QApplication::sendEvent(&owner.page, &drop);
        QTest::qWait(30);
        return enter.isAccepted();
    }
    void Trigger(const char *entry) {
        Turn();
        Find<QAction>(entry)->trigger();
    }

    QTimer visitor;
    bool accepts = false;
    QStringList visited;
    QString found;
};

TEST_F(BulkWindowsTest, TheMenuOpensTheImport) {
    OpenNews();
    Trigger("mnuListsImport");
    EXPECT_EQ(visited, Words("frmImport"));
    EXPECT_EQ(found, QString());
}

TEST_F(BulkWindowsTest, TheMenuOpensExportAndComparison) {
    EXPECT_FALSE(IsEnabled("mnuListsExport"));
    EXPECT_FALSE(IsEnabled("mnuListsCompare"));
    OpenNews();
    Trigger("mnuListsExport");
    Trigger("mnuListsCompare");
    EXPECT_EQ(visited, Words("frmExport frmCompare"));
}

TEST_F(BulkWindowsTest, RequestsAloneCanBeExported) {
    OpenLists({{u"news"_s, {}}});
    EXPECT_FALSE(IsEnabled("mnuListsExport"));
    AddPending(Words("+bo@x.test"));
    Turn();
    EXPECT_TRUE(IsEnabled("mnuListsExport"));
}

TEST_F(BulkWindowsTest, AListMadeOfAComparisonIsOffered) {
    OpenNews();
    WriteListFile(u"more"_s, "");
    Q_EMIT owner.page.findChild<BulkWindows *>()->ListMade();
    EXPECT_EQ(Names(), Words("more news"));
    EXPECT_EQ(Chosen(), u"news"_s);
    EXPECT_EQ(lists.Open.Name(), u"news"_s);
}

TEST_F(BulkWindowsTest, WithoutAnOpenListNothingIsImported) {
    EXPECT_FALSE(IsEnabled("mnuListsImport"));
    QMimeData data;
    data.setText(u"bo@x.test"_s);
    EXPECT_FALSE(Drop(data));
    EXPECT_EQ(visited, QStringList());
    OpenNews();
    EXPECT_TRUE(IsEnabled("mnuListsImport"));
}

TEST_F(BulkWindowsTest, APasteInAListBoxOpensTheImport) {
    OpenNews();
    AddPending(Words("+zz@x.test"));
    Copy(u"bo@x.test"_s);
    for (const int box : {lists.VisibleBox(), static_cast<int>(kPending)}) {
        found.clear();
        QTest::keyClick(View(box), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(found, u"bo@x.test"_s) << box;
    }
    EXPECT_EQ(visited, Words("frmImport frmImport"));
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(View(kPending), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(visited.size(), 2) << "nothing to paste";
}

TEST_F(BulkWindowsTest, WhatIsDroppedOnTheListsOpensTheImport) {
    OpenNews();
    profile.Write(u"in.txt"_s, "bo@x.test");
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(profile.Path(u"in.txt"_s))});
    accepts = true;
    EXPECT_TRUE(Drop(files));
    ASSERT_TRUE(QTest::qWaitFor([&] { return visited.size() == 1; }));
    EXPECT_EQ(Pending(), Words("+bo@x.test"));
    QMimeData nothing;
    nothing.setData(u"application/x-color"_s, "x");
    EXPECT_FALSE(Drop(nothing));
}

TEST_F(BulkWindowsTest, WhileTheListsAreLockedNothingIsTaken) {
    OpenNews();
    owner.page.findChild<BulkWindows *>()->SetLocked(true);
    QMimeData data;
    data.setText(u"bo@x.test"_s);
    EXPECT_FALSE(Drop(data));
    EXPECT_EQ(visited, QStringList());
}

TEST_F(BulkWindowsTest, SeveralAddressesInTheAddressBoxOfferTheImport) {
    OpenNews();
    auto *hint = Find<QLabel>("lblImportHint");
    AddressBox()->setFocus();
    Copy(u"bo@x.test, cy@x.test;\ndan@x.test"_s);
    QTest::keyClick(AddressBox(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), u"These are 3 addresses: import them"_s);
    QTest::keyClick(hint, Qt::Key_Return);
    EXPECT_EQ(visited, Words("frmImport"));
    EXPECT_EQ(found, u"bo@x.test, cy@x.test;\ndan@x.test"_s);
    EXPECT_FALSE(AddressBox()->text().isEmpty()) << "refused: the text stays";
    accepts = true;
    QTest::mouseClick(hint, Qt::LeftButton);
    EXPECT_EQ(Pending(), Words("+bo@x.test +cy@x.test +dan@x.test"));
    EXPECT_EQ(AddressBox()->text(), QString());
    EXPECT_FALSE(hint->isVisible());
}

TEST_F(BulkWindowsTest, OneAddressOffersNothingAndAddAnswersAsEver) {
    OpenNews();
    auto *hint = Find<QLabel>("lblImportHint");
    Type("bo@x.test");
    EXPECT_FALSE(hint->isVisible());
    Type(",cy@x.test");
    EXPECT_TRUE(hint->isVisible());
    Click("cmdEmailAdd_0");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList{u"The e-mail address [bo@x.test,cy@x.test] is invalid"_s});
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(BulkWindowsTest, WhatTheAddressBoxHasCutOffIsImportedToo) {
    OpenNews();
    AddressBox()->setFocus();
    Copy(u"bo@x.test, cy@x.test, "_s + u"x "_s.repeated(20000) + u"dan@x.test"_s);
    QTest::keyClick(AddressBox(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(Find<QLabel>("lblImportHint"), Qt::Key_Return);
    EXPECT_TRUE(found.endsWith(u"dan@x.test"_s));
}

} // namespace
} // namespace varlo
