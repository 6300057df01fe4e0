#include "history/frmHistory.h"

#include "core/Settings.h"
#include "history/HistoryFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

namespace varlo::test {
namespace {

class frmHistoryTest : public HistoryFixture {
protected:
    frmHistoryTest() {
        WriteList(Words("a@x.test"));
        Save(Words("a@x.test b@x.test"), u"Process Pending List"_s);
        Wait(60);
        Save(Words("b@x.test c@x.test d@x.test"), u"Edit"_s);
        WriteList(Words("o@x.test"), u"other"_s);
    }
    void Open(const QStringList &lists = {u"news"_s, u"other"_s}, const QString &current = u"news"_s) {
        window = std::make_unique<frmHistory>(session, lists, current);
        window->show();
    }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QTreeWidget *Table() const { return Find<QTreeWidget>("tblHistory"); }
    // A row as it is shown, without its time: "Edit|2|2|1".
    QStringList Rows() const {
        QStringList rows;
        for (int row = 0; row < Table()->topLevelItemCount(); ++row) {
            QStringList cells;
            for (int column = 1; column < 5; ++column)
                cells.append(Table()->topLevelItem(row)->text(column));
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
    void Select(const QList<int> &rows) const {
        Table()->clearSelection();
        for (const int row : rows)
            Table()->topLevelItem(row)->setSelected(true);
    }
    QStringList Shown() const {
        return Find<QPlainTextEdit>("txtHistoryDifference")->toPlainText().split(u'\n');
    }
    QString Caption() const { return Find<QLabel>("lblHistoryDifference")->text(); }
    void Choose(const QString &list) const {
        auto *chooser = Find<QComboBox>("cmbHistoryList");
        chooser->setCurrentIndex(chooser->findText(list));
        Q_EMIT chooser->activated(chooser->currentIndex());
    }
    bool CanBringBack() const { return Find<QPushButton>("cmdHistoryBringBack")->isEnabled(); }

    std::unique_ptr<frmHistory> window;
};

TEST_F(frmHistoryTest, ShowsTheVersionsTheNewestFirst) {
    Open();
    EXPECT_EQ(Rows(), (QStringList{u"The list as it is saved now|||"_s, u"Edit|2 entries|+2|-1"_s,
                                   u"Process Pending List|1 entry|+1|-0"_s}));
    EXPECT_EQ(Table()->topLevelItem(0)->text(0), u"Now"_s);
    EXPECT_EQ(Table()->topLevelItem(1)->text(0), u"Until "_s + History::TimeText(profile.Clock));
}

TEST_F(frmHistoryTest, OneVersionIsComparedWithNow) {
    Open();
    Select({2});
    EXPECT_EQ(Shown(), (QStringList{u"+ b@x.test"_s, u"+ c@x.test"_s, u"+ d@x.test"_s, u"- a@x.test"_s}));
    EXPECT_TRUE(Caption().endsWith(u" to now: 3 added, 1 removed"_s)) << Caption().toStdString();
    EXPECT_TRUE(CanBringBack());
}

TEST_F(frmHistoryTest, TwoVersionsAreComparedWithEachOther) {
    Open();
    Select({2, 1});
    EXPECT_EQ(Shown(), QStringList(u"+ b@x.test"_s));
    EXPECT_FALSE(CanBringBack());
}

TEST_F(frmHistoryTest, WhatIsThereNowCannotBeBroughtBack) {
    Open();
    Select({0});
    EXPECT_FALSE(CanBringBack());
    EXPECT_EQ(Shown(), QStringList(QString()));
}

TEST_F(frmHistoryTest, AListWithoutAHistorySaysSo) {
    Open();
    Choose(u"other"_s);
    EXPECT_EQ(Rows(), QStringList(u"The list as it is saved now|||"_s));
    EXPECT_TRUE(Caption().startsWith(u"Nothing is kept of this list yet."_s));
    EXPECT_FALSE(CanBringBack());
}

TEST_F(frmHistoryTest, WithoutAnyListThereIsNothingToDo) {
    QDir(profile.Path(u"history"_s)).removeRecursively();
    Open({}, {});
    EXPECT_EQ(Rows(), QStringList());
    EXPECT_FALSE(CanBringBack());
}

TEST_F(frmHistoryTest, DeletedListsStandBehindTheOthers) {
    DeleteFile(profile.Path(u"lists/news.vlo"_s));
    Open({u"other"_s}, u"other"_s);
    auto *chooser = Find<QComboBox>("cmbHistoryList");
    EXPECT_EQ(chooser->currentText(), u"other"_s);
    EXPECT_EQ(chooser->itemText(1), u"news (deleted)"_s);
    Choose(u"news (deleted)"_s);
    EXPECT_EQ(Rows(), (QStringList{u"Edit|2 entries|+2|-1"_s, u"Process Pending List|1 entry|+1|-0"_s}));
    QSignalSpy wanted(window.get(), &frmHistory::BringBackWanted);
    Select({0});
    Find<QPushButton>("cmdHistoryBringBack")->click();
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][0].toString(), u"news"_s);
}

TEST_F(frmHistoryTest, BringBackHandsOutTheVersionAndCloses) {
    Open();
    QSignalSpy wanted(window.get(), &frmHistory::BringBackWanted);
    Select({1});
    Find<QPushButton>("cmdHistoryBringBack")->click();
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][0].toString(), u"news"_s);
    EXPECT_EQ(wanted[0][1].toStringList(), Words("a@x.test b@x.test"));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(frmHistoryTest, AVersionThatCannotBeReadIsReportedAndTheWindowStays) {
    Open();
    profile.Write(u"history/news/"_s + Versions()[1].Row.Stem + u".vlo.z"_s, "damaged");
    DeleteFile(Versions()[1].Path);
    Choose(u"news"_s);
    QSignalSpy wanted(window.get(), &frmHistory::BringBackWanted);
    Select({1});
    Find<QPushButton>("cmdHistoryBringBack")->click();
    EXPECT_EQ(wanted.size(), 0);
    EXPECT_TRUE(window->isVisible());
    ASSERT_FALSE(profile.Boxes.Shown.empty());
    EXPECT_TRUE(profile.Boxes.Shown.back().Title.contains(u"57 in Main.mnuListsHistory"_s));
}

TEST_F(frmHistoryTest, FindsWhenAnAddressJoinedAndLeft) {
    Open();
    QTest::keyClicks(Find<QLineEdit>("txtHistoryFind"), u" A@X.test"_s);
    QTest::keyClick(Find<QLineEdit>("txtHistoryFind"), Qt::Key_Return);
    EXPECT_EQ(Caption(), u"[A@X.test] on [news]"_s);
    EXPECT_EQ(Shown(), (QStringList{u"In the oldest version, which was replaced on "_s +
                                        History::TimeText(profile.Clock.addSecs(-60)),
                                    u"Left on "_s + History::TimeText(profile.Clock) + u" - Edit"_s,
                                    u"Not on the list now."_s}));
    EXPECT_TRUE(window->isVisible()) << "Enter in the box closes nothing";
}

TEST_F(frmHistoryTest, TheCheckBoxTurnsTheHistoryOffAndOn) {
    Open();
    auto *box = Find<QCheckBox>("chkHistory");
    EXPECT_TRUE(box->isChecked());
    EXPECT_FALSE(QFile::exists(profile.Path(u"prefs.ini"_s)));
    box->click();
    EXPECT_FALSE(History::IsOn(session));
    EXPECT_TRUE(profile.Read(u"prefs.ini"_s).contains("[General]\r\nHistory=0\r\n"));
    Open();
    EXPECT_FALSE(Find<QCheckBox>("chkHistory")->isChecked());
    Find<QCheckBox>("chkHistory")->click();
    EXPECT_TRUE(History::IsOn(session));
}

TEST_F(frmHistoryTest, WhatAFileHoldsIsShownAsPlainText) {
    WriteList(Words("<b>x</b>@x.test"));
    Save(Words("y@x.test"), u"<i>Edit</i>"_s);
    Open();
    Select({1});
    EXPECT_EQ(Table()->topLevelItem(1)->text(1), u"<i>Edit</i>"_s);
    EXPECT_EQ(Shown(), (QStringList{u"+ y@x.test"_s, u"- <b>x</b>@x.test"_s}));
}

} // namespace
} // namespace varlo::test
