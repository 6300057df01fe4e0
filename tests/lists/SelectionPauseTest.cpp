#include "lists/SelectionPause.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"
#include "lists/PendingProcessing.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::Words;

class SelectionPauseTest : public test::ListsFixture {
protected:
    // Selects every other of so many entries, which are as many ranges.
    void SelectEveryOther(int count) {
        OpenList(u"news"_s, Addresses(count));
        QList<int> rows;
        for (int row = 0; row < count; row += 2)
            rows.append(row);
        for (int box : {kChronological, kAlphabetical})
            lists.SelectRows(box, rows);
    }
};

TEST_F(SelectionPauseTest, WhatIsStillThereIsSelectedAgain) {
    SelectEveryOther(200);
    for (int box : {kChronological, kAlphabetical}) {
        QStringList expected = lists.SelectedEntries(box);
        EntryListModel &model = lists.Box(box).Model();
        {
            const SelectionPause pause(lists, box);
            EXPECT_EQ(lists.SelectedCount(box), 0);
            expected.removeOne(model.Entry(2));
            model.Remove(2);
            model.Add(u"a10x@x.test"_s);
        }
        EXPECT_EQ(lists.SelectedEntries(box), expected);
    }
}

TEST_F(SelectionPauseTest, OfEqualEntriesTheSelectedOnesAreSelectedAgain) {
    OpenList(u"news"_s, QStringList(200, u"same@x.test"_s));
    QList<int> rows;
    for (int row = 1; row < 200; row += 2)
        rows.append(row);
    lists.SelectRows(kAlphabetical, rows);
    { const SelectionPause pause(lists, kAlphabetical); }
    EXPECT_EQ(lists.SelectedRows(kAlphabetical), rows);
}

TEST_F(SelectionPauseTest, AnEmptiedListIsLeftWithoutASelection) {
    SelectEveryOther(200);
    {
        const SelectionPause pause(lists, kChronological);
        lists.Box(kChronological).Model().SetEntries({});
    }
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
}

TEST_F(SelectionPauseTest, FewRangesAreLeftAlone) {
    OpenList(u"news"_s, Words("a b c d"));
    lists.SelectRows(kChronological, {0, 2});
    const SelectionPause pause(lists, kChronological);
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{0, 2}));
}

TEST_F(SelectionPauseTest, ProcessingKeepsAScatteredSelection) {
    SelectEveryOther(400);
    QStringList expected = lists.SelectedEntries(kAlphabetical);
    const QString leaving = expected.takeFirst();
    AddPending({u'-' + leaving, u"+new@x.test"_s});
    PendingProcessing processing(session, lists, mailers.Maker());
    processing.Run();
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), expected);
}

TEST_F(SelectionPauseTest, CopyingToTheCurrentListKeepsAScatteredSelection) {
    SelectEveryOther(400);
    const QStringList expected = lists.SelectedEntries(kAlphabetical);
    AddPending(Words("+a1b@x.test +a3b@x.test"));
    editing.SelectAll(kPending);
    editing.PendingToCurrent(ListEditing::Transfer::Copy);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), expected);
    EXPECT_EQ(lists.lstEmailList(kAlphabetical).Count(), 402);
}

} // namespace
} // namespace varlo
