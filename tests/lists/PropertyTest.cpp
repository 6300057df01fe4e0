// Thousands of random operations on the real lists and frames, and on plain lists that do the same.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/AddressRules.h"
#include "lists/FramesFixture.h"
#include "lists/ManualAdd.h"
#include "lists/NaiveLists.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::NaiveBox;
using test::RandomBelow;

class PropertyTest : public test::FramesFixture {
protected:
    static constexpr unsigned kSeed = 20260304;

    PropertyTest() { session.Prefs.LogStatus = 0; }

    void Press(const char *button) { Find<QAbstractButton>(button)->click(); }
    bool Chance(int oneIn) { return RandomBelow(random, oneIn) == 0; }

    // Selects random rows of a box in both worlds.
    void Select(int box, NaiveBox &naiveBox) {
        QList<int> rows;
        const int oneIn = 1 + RandomBelow(random, 4);
        for (int row = 0; row < lists.lstEmailList(box).Count(); ++row)
            if (Chance(oneIn))
                rows.append(row);
        lists.SelectRows(box, rows);
        for (qsizetype row = 0; row < naiveBox.Entries.size(); ++row)
            naiveBox.Entries[row].Selected = rows.contains(static_cast<int>(row));
    }

    QString ChangeRequests();
    QString ChangeEntries();
    QString MoveEntries();
    QString ChangeFiles();
    // One random operation in both worlds; its name.
    QString Step();
    void KeepSmall();

    QList<NaiveBox::Entry> Real(int box) const {
        QList<NaiveBox::Entry> entries;
        for (const QString &text : lists.lstEmailList(box).Entries())
            entries.append({text, false});
        for (int row : lists.SelectedRows(box))
            entries[row].Selected = true;
        return entries;
    }
    QMap<QString, QStringList> RealFiles() const {
        QMap<QString, QStringList> files;
        for (const QString &file : ListFolder())
            files[file.chopped(4)] = SplitBytes(profile.Read(u"lists/"_s + file));
        return files;
    }
    static QStringList SplitBytes(const QByteArray &bytes) {
        QStringList lines = QString::fromUtf8(bytes).split(u"\r\n"_s);
        lines.removeLast(); // behind the last line end
        return lines;
    }
    void ExpectAgreement() {
        ASSERT_TRUE(Real(kChronological) == naive.Chronological.Entries)
            << Show(Current(), naive.Chronological);
        ASSERT_TRUE(Real(kAlphabetical) == naive.Alphabetical.Entries) << Show(Sorted(), naive.Alphabetical);
        ASSERT_TRUE(Real(kPending) == naive.Pending.Entries) << Show(Pending(), naive.Pending);
        ASSERT_EQ(lists.ListSaved, naive.Saved);
        ASSERT_EQ(lists.CurrentListName, naive.Open);
        ASSERT_EQ(Chosen(), naive.Open);
        ASSERT_EQ(RealFiles(), naive.Files);
        ASSERT_EQ(Names().size(), naive.Files.size());
        ASSERT_TRUE(profile.Boxes.Answers.empty() && profile.Boxes.Inputs.empty())
            << "a question was not asked";
    }
    static std::string Show(const QStringList &real, const NaiveBox &naiveBox) {
        return ("real: " + real.join(u' ') + "\nnaive: " + naiveBox.Texts().join(u' ') +
                "\nselected: " + naiveBox.SelectedTexts().join(u' '))
            .toStdString();
    }

    std::mt19937 random{kSeed};
    test::NaiveLists naive{profile.Boxes, random};
};

QString PropertyTest::ChangeRequests() {
    const QString address = naive.RandomAddress();
    switch (RandomBelow(random, 3)) {
    case 0:
        naive.Type(address, u'+');
        AddTypedAddress(session, lists, address, Request::Subscribe, nullptr);
        return u"subscribe "_s + address;
    case 1:
        naive.Type(address, u'-');
        AddTypedAddress(session, lists, address, Request::Unsubscribe, nullptr);
        return u"unsubscribe "_s + address;
    default:
        naive.Process();
        pending.ProcessPendingList();
        return u"process"_s;
    }
}

QString PropertyTest::ChangeEntries() {
    const bool ofPending = Chance(2);
    const int box = ofPending ? int(kPending) : lists.VisibleBox();
    switch (RandomBelow(random, 6)) {
    case 0:
    case 1:
        Select(box, ofPending ? naive.Pending : naive.Visible());
        return u"select"_s;
    case 2:
        naive.Edit(ofPending);
        editing.EditSelected(box);
        return u"edit"_s;
    case 3:
        naive.Delete(ofPending);
        editing.DeleteSelected(box);
        return u"delete"_s;
    case 4:
        naive.Swap();
        editing.SwapSigns();
        return u"swap"_s;
    default:
        naive.Search();
        editing.Search();
        return u"search"_s;
    }
}

QString PropertyTest::MoveEntries() {
    const bool move = Chance(2);
    const auto transfer = move ? ListEditing::Transfer::Move : ListEditing::Transfer::Copy;
    switch (RandomBelow(random, 3)) {
    case 0:
        naive.CurrentToPending(move);
        editing.CurrentToPending(transfer);
        return move ? u"move to pending"_s : u"copy to pending"_s;
    case 1:
        naive.PendingToCurrent(move);
        editing.PendingToCurrent(transfer);
        return move ? u"move to current"_s : u"copy to current"_s;
    default:
        naive.ShowOrder(move);
        editing.ChangeSortOrder(move ? 1 : 0);
        return u"sort order"_s;
    }
}

QString PropertyTest::ChangeFiles() {
    switch (RandomBelow(random, 6)) {
    case 0:
    case 1:
        naive.Save();
        Press("cmdFileSave");
        return u"save"_s;
    case 2:
        naive.New();
        Press("cmdFileNew");
        return u"new"_s;
    case 3:
        naive.Rename();
        Press("cmdFileRename");
        return u"rename"_s;
    case 4:
        naive.Remove();
        Press("cmdFileDelete");
        return u"remove"_s;
    default:
        if (naive.Files.isEmpty())
            return u"nothing"_s;
        const int index = RandomBelow(random, static_cast<int>(naive.Files.size()));
        naive.Choose(Names()[index]);
        current.ChooseList(index);
        return u"choose"_s;
    }
}

QString PropertyTest::Step() {
    switch (RandomBelow(random, 8)) {
    case 0:
    case 1:
        return ChangeRequests();
    case 2:
    case 3:
    case 4:
        return ChangeEntries();
    case 5:
    case 6:
        return MoveEntries();
    default:
        return ChangeFiles();
    }
}

// Lists that have grown long are emptied, so that entries meet each other often.
void PropertyTest::KeepSmall() {
    if (naive.Pending.Entries.size() > 25) {
        naive.Pending.SelectAll();
        naive.Delete(true);
        editing.SelectAll(kPending);
        editing.DeleteSelected(kPending);
    }
    if (naive.Visible().Entries.size() > 25) {
        naive.Visible().SelectAll();
        naive.Delete(false);
        editing.SelectAll(lists.VisibleBox());
        editing.DeleteSelected(lists.VisibleBox());
    }
}

TEST_F(PropertyTest, RandomOperationsAgreeWithPlainLists) {
    constexpr int kSteps = 10000;
    QStringList done;
    QMap<QString, int> counts;
    for (int step = 0; step < kSteps; ++step) {
        done << Step();
        ++counts[done.last().section(u' ', 0, 0)];
        KeepSmall();
        ASSERT_NO_FATAL_FAILURE(ExpectAgreement())
            << "seed " << kSeed << ", step " << step
            << ", the last ones: " << done.mid(step - 12).join(u", "_s).toStdString();
        profile.Boxes.Shown.clear();
    }
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), naive.Log);
    EXPECT_GE(counts.size(), 15) << "some operations never came up";
}

} // namespace
} // namespace varlo
