#include "lists/ImportReview.h"

#include "lists/ListsFixture.h"
#include "support/Printers.h"

#include <QSignalSpy>

namespace varlo {

void PrintTo(const ImportCounts &counts, std::ostream *out) {
    *out << counts.New << " new, " << counts.OnList << " on the list, " << counts.Absent << " absent, "
         << counts.Pending << " pending, " << counts.Repeated << " repeated, " << counts.Unusable
         << " unusable";
}

namespace test {
namespace {

struct ImportReviewTest : ListsFixture {
    void Find(const QString &text) {
        ImportSearch search;
        search.SetText(text);
        while (!search.Step(100)) {
        }
        review.SetItems(search.Items());
    }
    QString Cell(int row, int column) const { return review.index(row, column).data().toString(); }
    // "address | where | result" for each row that is shown.
    QStringList Rows() const {
        QStringList rows;
        for (int row = 0; row < review.rowCount(); ++row)
            rows << Cell(row, 0) + u" | "_s + Cell(row, 1) + u" | "_s + Cell(row, 2);
        return rows;
    }
    int Apply() { return ApplyImport(session, lists, review.NewAddresses(), review.Kind()); }

    ImportReview review{lists};
};

const QString kText = u"anna@x.test, bo@x.test\ncy@x.test cy@x.test\na+b@x.test\ndan@x.test"_s;

TEST_F(ImportReviewTest, CountsWhatAnImportWouldDo) {
    OpenList(u"news"_s, Words("ANNA@x.test"));
    AddPending(Words("+bo@x.test -dan@x.test"));
    Find(kText);
    EXPECT_EQ(review.Counts(),
              (ImportCounts{.New = 2, .OnList = 1, .Pending = 1, .Repeated = 1, .Unusable = 1}));
    EXPECT_EQ(review.CountsText(),
              u"2 new, 1 already on the list, 1 already pending, 1 repeated, 1 unusable"_s);
    EXPECT_EQ(Rows(),
              (QStringList{u"a+b@x.test | line 3 | There is a \"+\" in it."_s,
                           u"anna@x.test | line 1 | Already on the list"_s,
                           u"bo@x.test | line 1 | Already pending"_s,
                           u"cy@x.test | line 2 | New (2 times here)"_s, u"dan@x.test | line 4 | New"_s}));
    EXPECT_EQ(review.NewAddresses(), Words("cy@x.test dan@x.test"));
}

TEST_F(ImportReviewTest, ForRemovalCountsWhatIsOnTheList) {
    OpenList(u"news"_s, Words("anna@x.test dan@x.test"));
    AddPending(Words("+bo@x.test -dan@x.test"));
    Find(kText);
    review.SetKind(RequestKind::Unsubscribe);
    EXPECT_EQ(review.Counts(),
              (ImportCounts{.New = 1, .Absent = 2, .Pending = 1, .Repeated = 1, .Unusable = 1}));
    EXPECT_EQ(review.CountsText(),
              u"1 to remove, 2 not on the list, 1 already pending, 1 repeated, 1 unusable"_s);
    EXPECT_EQ(Cell(1, ImportReview::kResult), u"To remove"_s);
}

TEST_F(ImportReviewTest, NothingFoundIsSaid) {
    Find(QString());
    EXPECT_EQ(review.CountsText(), u"No addresses found"_s);
    EXPECT_EQ(review.rowCount(), 0);
}

TEST_F(ImportReviewTest, ShowsRowsOfOneKind) {
    OpenList(u"news"_s, Words("anna@x.test"));
    Find(kText);
    review.SetFilter(ImportState::OnList);
    EXPECT_EQ(Rows(), QStringList{u"anna@x.test | line 1 | Already on the list"_s});
    review.SetFilter(ImportState::Repeated);
    EXPECT_EQ(Rows(), QStringList{u"cy@x.test | line 2 | New (2 times here)"_s});
    review.SetFilter(std::nullopt);
    EXPECT_EQ(review.rowCount(), 5);
}

TEST_F(ImportReviewTest, AnUnusableAddressIsCorrectedInItsPlace) {
    OpenList(u"news"_s, Words("anna@x.test"));
    Find(kText);
    const QModelIndex faulty = review.index(0, ImportReview::kAddress);
    EXPECT_TRUE(faulty.flags() & Qt::ItemIsEditable);
    EXPECT_TRUE(review.setData(faulty, u" mailto:ab@x.test "_s));
    EXPECT_EQ(Rows()[0], u"ab@x.test | line 3 | New"_s);
    EXPECT_EQ(review.Counts().Unusable, 0);
    EXPECT_EQ(review.NewAddresses(), Words("bo@x.test cy@x.test ab@x.test dan@x.test"))
        << "in the order of the text";
    Find(kText + u", eve@x.test"_s);
    EXPECT_EQ(Rows()[0], u"ab@x.test | line 3 | New"_s) << "when the text goes on, too";
}

TEST_F(ImportReviewTest, ACorrectionIsJudgedLikeAnyAddress) {
    OpenList(u"news"_s, Words("eve@x.test"));
    Find(kText);
    const QModelIndex faulty = review.index(0, ImportReview::kAddress);
    review.setData(faulty, u"a b@x.test"_s);
    EXPECT_EQ(Cell(0, ImportReview::kResult), u"There is a blank in it."_s);
    review.setData(faulty, u"eve@x.test"_s);
    EXPECT_EQ(Cell(0, ImportReview::kResult), u"Already on the list"_s);
    review.setData(faulty, u"ANNA@x.test"_s);
    EXPECT_EQ(Cell(0, ImportReview::kResult), u"Repeated"_s);
    EXPECT_EQ(review.Counts(), (ImportCounts{.New = 4, .Repeated = 2}));
}

TEST_F(ImportReviewTest, OnlyWhatIsUnusableCanBeCorrected) {
    Find(kText);
    EXPECT_FALSE(review.setData(review.index(1, ImportReview::kAddress), u"zoe@x.test"_s));
    EXPECT_FALSE(review.setData(review.index(0, ImportReview::kResult), u"zoe@x.test"_s));
    EXPECT_FALSE(review.setData(review.index(0, ImportReview::kAddress), u"  "_s));
    EXPECT_EQ(Cell(0, 0), u"a+b@x.test"_s);
}

TEST_F(ImportReviewTest, ACorrectionUnderAFilterMovesOn) {
    Find(kText);
    review.SetFilter(ImportState::Unusable);
    ASSERT_EQ(review.rowCount(), 1);
    review.setData(review.index(0, ImportReview::kAddress), u"ab@x.test"_s);
    EXPECT_EQ(review.rowCount(), 0);
}

TEST_F(ImportReviewTest, PutsWhatIsNewOnThePendingListAsOneStep) {
    OpenList(u"news"_s, Words("anna@x.test"));
    AddPending(Words("-zoe@x.test"));
    Find(kText);
    TakeStatus();
    EXPECT_EQ(Apply(), 3);
    EXPECT_EQ(Pending(), Words("-zoe@x.test +bo@x.test +cy@x.test +dan@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList{u"Imported 3 addresses to the pending list"_s});
    EXPECT_EQ(Current(), Words("anna@x.test")) << "the list itself waits for the processing";
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 3);
    EXPECT_EQ(lists.Undo.UndoText(), u"Import 3 Addresses"_s);
    lists.Undo.Undo();
    EXPECT_EQ(Pending(), Words("-zoe@x.test"));
    lists.Undo.Redo();
    EXPECT_EQ(Pending(), Words("-zoe@x.test +bo@x.test +cy@x.test +dan@x.test"));
}

TEST_F(ImportReviewTest, PutsRemovalsOnThePendingList) {
    OpenList(u"news"_s, Words("anna@x.test bo@x.test"));
    Find(kText);
    review.SetKind(RequestKind::Unsubscribe);
    EXPECT_EQ(Apply(), 2);
    EXPECT_EQ(Pending(), Words("-anna@x.test -bo@x.test"));
}

TEST_F(ImportReviewTest, WhatTheListsHaveByNowIsNotPutOnThemAgain) {
    Find(u"anna@x.test bo@x.test"_s);
    const QStringList addresses = review.NewAddresses();
    AddPending(Words("+anna@x.test"));
    EXPECT_EQ(ApplyImport(session, lists, addresses, RequestKind::Subscribe), 1);
    EXPECT_EQ(Pending(), Words("+anna@x.test +bo@x.test"));
}

TEST_F(ImportReviewTest, AFullPendingListTakesWhatItCan) {
    AddPending(Addresses(EntryListModel::kMostEntries - 2, u"+p"_s));
    Find(u"aa@x.test bb@x.test cc@x.test"_s);
    EXPECT_EQ(Apply(), 2);
    EXPECT_EQ(lists.Pending.Count(), EntryListModel::kMostEntries);
    EXPECT_EQ(Errors(), QStringList());
    EXPECT_EQ(Apply(), 0);
}

TEST_F(ImportReviewTest, NothingElseThanTheRowsTellsOfACorrection) {
    Find(kText);
    QSignalSpy resets(&review, &QAbstractItemModel::modelReset);
    QSignalSpy counts(&review, &ImportReview::CountsChanged);
    review.setData(review.index(0, ImportReview::kAddress), u"ab@x.test"_s);
    EXPECT_EQ(resets.count(), 0) << "the operator stays where he is";
    EXPECT_EQ(counts.count(), 1);
}

TEST_F(ImportReviewTest, NamesItsColumns) {
    QStringList names;
    for (int column = 0; column < review.columnCount(); ++column)
        names << review.headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(names, QString(u"Address Where Result"_s).split(u' '));
}

// Any text: each find is in one state, and what comes of the import is what was counted.
TEST_F(ImportReviewTest, CountsAddUpForAnyText) {
    std::mt19937 random(4711);
    const QStringList bits{u"aa@x.test"_s, u"AA@x.test"_s,   u"bb@x.test"_s, u"c+c@x.test"_s,     u"dd@x"_s,
                           u"ee@x.test"_s, u"<ff@x.test>"_s, u"word"_s,      u"\"g, g\"@x.test"_s};
    for (int round = 0; round < 300; ++round) {
        OpenList(u"news"_s, RandomBelow(random, 2) == 0 ? Words("aa@x.test") : Words("bb@x.test ee@x.test"));
        lists.Pending.RemoveFirst(lists.Pending.Count());
        AddPending(RandomBelow(random, 2) == 0 ? QStringList() : Words("+ee@x.test -bb@x.test"));
        QString text;
        for (int i = RandomBelow(random, 12); i > 0; --i)
            text += bits[RandomBelow(random, static_cast<int>(bits.size()))] +
                    (RandomBelow(random, 3) == 0 ? u"\n"_s : u" "_s);
        Find(text);
        review.SetKind(RandomBelow(random, 2) == 0 ? RequestKind::Subscribe : RequestKind::Unsubscribe);
        const ImportCounts counts = review.Counts();
        const int states = counts.New + counts.OnList + counts.Absent + counts.Pending + counts.Unusable;
        EXPECT_EQ(states, review.rowCount()) << text.toStdString();
        const QStringList before = Pending();
        EXPECT_EQ(Apply(), counts.New) << text.toStdString();
        EXPECT_EQ(lists.Pending.Count(), before.size() + counts.New);
        review.Judge();
        EXPECT_EQ(review.Counts().New, 0) << "a second import brings nothing";
        if (counts.New > 0)
            lists.Undo.Undo();
        EXPECT_EQ(Pending(), before);
    }
}

} // namespace
} // namespace test
} // namespace varlo
