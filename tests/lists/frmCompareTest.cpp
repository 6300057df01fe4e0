#include "lists/frmCompare.h"

#include "lists/ListsFixture.h"
#include "support/Printers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace varlo::test {
namespace {

struct frmCompareTest : ListsFixture {
    frmCompareTest() {
        WriteListFile(u"members"_s, FileBytes(Words("bb@x.test cc@x.test dd@x.test bad")));
        OpenList(u"news"_s, Words("aa@x.test BB@x.test"));
        lists.Open.Add(u"cc@x.test"_s); // not saved
        window = std::make_unique<frmCompare>(session, lists);
        window->show();
        TakeStatus();
    }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void Want(bool first, bool both, bool second) {
        Find<QCheckBox>("chkCompare_0")->setChecked(first);
        Find<QCheckBox>("chkCompare_1")->setChecked(both);
        Find<QCheckBox>("chkCompare_2")->setChecked(second);
    }
    void Click(const char *button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    QString Notice() const { return Find<QLabel>("lblNotice")->text(); }
    QString Part(int part) const {
        const auto *view = Find<QListView>((u"lstCompare_%1"_s.arg(part)).toLatin1().constData());
        QStringList rows;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            rows << view->model()->index(row, 0).data().toString();
        return Find<QCheckBox>((u"chkCompare_%1"_s.arg(part)).toLatin1().constData())->text() + u": "_s +
               rows.join(u' ');
    }

    std::unique_ptr<frmCompare> window;
};

TEST_F(frmCompareTest, SetsTheOpenListAsItStandsBesideAnother) {
    EXPECT_EQ(Find<QComboBox>("cmbCompareList_0")->currentText(), u"news"_s);
    EXPECT_EQ(Find<QComboBox>("cmbCompareList_1")->currentText(), u"members"_s);
    EXPECT_EQ(Part(0), u"Only in f&irst (1): aa@x.test"_s);
    EXPECT_EQ(Part(1), u"In &both (2): BB@x.test cc@x.test"_s);
    EXPECT_EQ(Part(2), u"Only in sec&ond (2): dd@x.test bad"_s);
    EXPECT_EQ(Find<QLabel>("lblCompareChosen")->text(), u"1 address chosen"_s);
}

TEST_F(frmCompareTest, AnotherChoiceIsComparedAtOnce) {
    Find<QComboBox>("cmbCompareList_1")->setCurrentText(u"news"_s);
    EXPECT_EQ(Part(1), u"In &both (3): aa@x.test BB@x.test cc@x.test"_s);
    EXPECT_EQ(Part(0), u"Only in f&irst (0): "_s);
    EXPECT_FALSE(Find<QPushButton>("cmdCompareSelect")->isEnabled()) << "nothing is chosen";
}

TEST_F(frmCompareTest, AListThatCannotBeReadIsReported) {
    ReplaceByFolder(session.ProfileFile(u"lists"_s, u"members.vlo"_s));
    Find<QComboBox>("cmbCompareList_0")->setCurrentText(u"members"_s);
    EXPECT_EQ(Errors().value(0).section(u" - "_s, 0, 0).section(u" in "_s, 1), u"Compare.Load"_s);
}

TEST_F(frmCompareTest, SelectsInTheOpenList) {
    Want(false, true, true);
    Click("cmdCompareSelect");
    QStringList selected = lists.SelectedEntries(lists.VisibleBox());
    selected.sort();
    EXPECT_EQ(selected, Words("BB@x.test cc@x.test"));
    EXPECT_EQ(Notice(), u"Selected 2 addresses in [news]."_s);
}

TEST_F(frmCompareTest, PutsOnThePendingListWhatHasAnEffectAsOneStep) {
    Want(false, true, true);
    Click("cmdComparePending");
    EXPECT_EQ(Pending(), Words("+dd@x.test"));
    EXPECT_EQ(Notice(), u"Put 1 address on the Pending list (1 new, 2 already on the list, 1 unusable)."_s);
    Find<QComboBox>("cmbCompareAs")->setCurrentIndex(1);
    Click("cmdComparePending");
    EXPECT_EQ(Pending(), Words("+dd@x.test -BB@x.test -cc@x.test"));
    lists.Undo.Undo();
    EXPECT_EQ(Pending(), Words("+dd@x.test"));
}

TEST_F(frmCompareTest, MakesAListOfTheUnion) {
    QSignalSpy made(window.get(), &frmCompare::ListMade);
    Want(true, true, true);
    EXPECT_FALSE(Find<QPushButton>("cmdCompareMake")->isEnabled()) << "without a name";
    Find<QLineEdit>("txtCompareName")->setText(u"a/b"_s);
    QTest::keyClick(Find<QLineEdit>("txtCompareName"), Qt::Key_Return);
    EXPECT_EQ(ReadListFile(u"a b"_s), FileBytes(Words("aa@x.test BB@x.test cc@x.test dd@x.test bad")));
    EXPECT_EQ(made.count(), 1);
    EXPECT_EQ(Notice(), u"List [a b] has 5 addresses."_s);
    EXPECT_EQ(TakeStatus(), QStringList{u"Created mailing list [a b]"_s});
    EXPECT_EQ(Find<QComboBox>("cmbCompareList_0")->findText(u"a b"_s), 2) << "it can be compared at once";
    EXPECT_EQ(Find<QLineEdit>("txtCompareName")->text(), QString());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(frmCompareTest, AListThatIsThereIsNotReplaced) {
    Find<QLineEdit>("txtCompareName")->setText(u"members"_s);
    Click("cmdCompareMake");
    EXPECT_EQ(Notice(), u"There is a list [members] already."_s);
    EXPECT_EQ(ReadListFile(u"members"_s), FileBytes(Words("bb@x.test cc@x.test dd@x.test bad")));
}

TEST_F(frmCompareTest, AListThatCannotBeMadeIsReported) {
    QDir(session.ProfileFile(u"lists"_s)).removeRecursively();
    Find<QLineEdit>("txtCompareName")->setText(u"next"_s);
    Click("cmdCompareMake");
    EXPECT_EQ(Errors(), QStringList{u"76 in Compare.cmdCompareMake - Path not found"_s});
    EXPECT_EQ(Find<QLineEdit>("txtCompareName")->text(), u"next"_s) << "for another try";
}

TEST_F(frmCompareTest, NoListIsMadeLongerThanAListCanBe) {
    WriteListFile(u"long"_s, FileBytes(Addresses(EntryListModel::kMostEntries, u"z"_s)));
    window = std::make_unique<frmCompare>(session, lists);
    Find<QComboBox>("cmbCompareList_1")->setCurrentText(u"long"_s);
    Want(true, true, true);
    Find<QLineEdit>("txtCompareName")->setText(u"next"_s);
    Find<QPushButton>("cmdCompareMake")->click();
    EXPECT_EQ(Notice(), u"A list holds no more than 32767 addresses."_s);
    EXPECT_EQ(ListFolder(), (QStringList{u"long.vlo"_s, u"members.vlo"_s, u"news.vlo"_s}));
}

} // namespace
} // namespace varlo::test
