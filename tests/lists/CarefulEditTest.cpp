// Editing entries in careful mode, and beside it the same without.
#include "core/Literals.h"
#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class CarefulEditTest : public test::ListsFixture {
protected:
    CarefulEditTest() { lists.Open.SetSortOrder(0); }
    void Careful() const { profile.Write(u"prefs.ini"_s, "[General]\r\nCareful=1\r\n"); }
    void Edit(int box, int row, const QStringList &answers) {
        profile.Boxes.Inputs.assign(answers.begin(), answers.end());
        lists.SelectRows(box, {row});
        editing.EditSelected(box);
        EXPECT_TRUE(profile.Boxes.Inputs.empty()) << "everything was asked for";
    }
    QStringList Offered() const {
        QStringList offered;
        for (const auto &box : profile.Boxes.Asked)
            offered << box.Default;
        return offered;
    }
};

TEST_F(CarefulEditTest, LetterCaseAloneMayBeChanged) {
    Careful();
    OpenList(u"news"_s, Words("ann@x.test bob@x.test"));
    Edit(kChronological, 0, Words("Ann@X.test"));
    EXPECT_EQ(Current(), Words("Ann@X.test bob@x.test"));
    EXPECT_EQ(Sorted(), Words("Ann@X.test bob@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(CarefulEditTest, WithoutCarefulModeItIsADuplicate) {
    OpenList(u"news"_s, Words("ann@x.test"));
    Edit(kChronological, 0, Words("Ann@X.test"));
    EXPECT_EQ(Current(), Words("ann@x.test"));
    EXPECT_EQ(Offered(), Words("ann@x.test")) << "asked once";
}

TEST_F(CarefulEditTest, WhatIsRefusedIsAskedForAgainWithWhatWasTyped) {
    Careful();
    OpenList(u"news"_s, Words("ann@x.test bob@x.test"));
    Edit(kChronological, 0, Words("bob@x.test cy@ cy@x.test"));
    EXPECT_EQ(Offered(), Words("ann@x.test bob@x.test cy@"));
    EXPECT_EQ(Current(), Words("cy@x.test bob@x.test"));
    EXPECT_EQ(TakeStatus().at(0), u"Duplicate address [bob@x.test] ignored"_s);
}

TEST_F(CarefulEditTest, CancelEndsTheAsking) {
    Careful();
    OpenList(u"news"_s, Words("ann@x.test bob@x.test"));
    Edit(kChronological, 0, {u"bob@x.test"_s, QString()});
    EXPECT_EQ(Current(), Words("ann@x.test bob@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(CarefulEditTest, TheSameAddressAgainChangesNothing) {
    Careful();
    OpenList(u"news"_s, Words("ann@x.test"));
    Edit(kChronological, 0, Words("ann@x.test"));
    EXPECT_EQ(Offered(), Words("ann@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(CarefulEditTest, ARequestKeepsItsSign) {
    Careful();
    AddPending(Words("-ann@x.test"));
    Edit(kPending, 0, Words("Ann@x.test"));
    EXPECT_EQ(Pending(), Words("-Ann@x.test"));
}

} // namespace
} // namespace varlo
