#include "lists/frmExport.h"

#include "lists/ListsFixture.h"
#include "support/Printers.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QtTest>

namespace varlo::test {
namespace {

struct frmExportTest : ListsFixture {
    frmExportTest() { OpenList(u"news"_s, Words("cc@x.test aa@x.test bb@x.test")); }
    void Show() {
        window = std::make_unique<frmExport>(session, lists);
        window->show();
    }
    template<typename Control> Control *Find(const char *name) const {
        return window->findChild<Control *>(QString::fromLatin1(name));
    }
    QStringList Choices() const {
        QStringList choices;
        for (int i = 0; i < Find<QComboBox>("cmbExportWhat")->count(); ++i)
            choices << Find<QComboBox>("cmbExportWhat")->itemText(i);
        return choices;
    }
    QString Copied(const QString &what, int form) {
        Show();
        auto *choice = Find<QComboBox>("cmbExportWhat");
        choice->setCurrentIndex(choice->findText(what, Qt::MatchStartsWith));
        Find<QComboBox>("cmbExportForm")->setCurrentIndex(form);
        QTest::mouseClick(Find<QPushButton>("cmdExportCopy"), Qt::LeftButton);
        EXPECT_EQ(window->result(), QDialog::Accepted);
        return QGuiApplication::clipboard()->text();
    }

    std::unique_ptr<frmExport> window;
};

TEST_F(frmExportTest, OffersWhatThereIs) {
    Show();
    EXPECT_EQ(Choices(), QStringList{u"The current list (3)"_s});
    AddPending(Words("+dd@x.test"));
    lists.SelectRows(lists.VisibleBox(), {0, 1});
    Show();
    EXPECT_EQ(Choices(), (QStringList{u"What is selected of the current list (2)"_s,
                                      u"The current list (3)"_s, u"The Pending list (1)"_s}));
    EXPECT_EQ(Find<QComboBox>("cmbExportWhat")->currentIndex(), 0);
}

TEST_F(frmExportTest, CopiesTheListInItsOrder) {
    EXPECT_EQ(Copied(u"The current list"_s, 0), u"cc@x.test\r\naa@x.test\r\nbb@x.test\r\n"_s);
    EXPECT_EQ(TakeStatus(), QStringList{u"Copied 3 addresses"_s});
}

TEST_F(frmExportTest, CopiesTheSelectionAndThePendingList) {
    lists.SelectRows(lists.VisibleBox(), {1});
    lists.Pending.Offer({RequestKind::Unsubscribe, u"dd@x.test"_s, RequestOrigin::Mailbox});
    EXPECT_EQ(Copied(u"What is selected"_s, 1),
              u"E-mail\r\n"_s + lists.SelectedEntries(lists.VisibleBox())[0] + u"\r\n"_s);
    EXPECT_EQ(Copied(u"The Pending list"_s, 0), u"-dd@x.test\tmailbox\r\n"_s);
}

TEST_F(frmExportTest, SavesAFile) {
    Show();
    profile.Boxes.Files = {profile.Path(u"out.txt"_s)};
    QTest::mouseClick(Find<QPushButton>("cmdExportSave"), Qt::LeftButton);
    EXPECT_EQ(profile.Read(u"out.txt"_s), "cc@x.test\r\naa@x.test\r\nbb@x.test\r\n");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(frmExportTest, StaysForAnotherTryAfterAFailure) {
    Show();
    profile.Boxes.Files = {profile.Path(u"nowhere/out.txt"_s), QString()};
    QTest::mouseClick(Find<QPushButton>("cmdExportSave"), Qt::LeftButton);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Errors(), QStringList{u"76 in Export.cmdExportSave - Path not found"_s});
    QTest::mouseClick(Find<QPushButton>("cmdExportSave"), Qt::LeftButton);
    EXPECT_TRUE(window->isVisible()) << "the chooser was left";
}

} // namespace
} // namespace varlo::test
