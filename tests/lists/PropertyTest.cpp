// Thousands of random operations on the lists and frames; after each, what always has to hold.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/TextFile.h"
#include "history/Versions.h"
#include "lists/FramesFixture.h"
#include "lists/ImportReview.h"
#include "lists/ManualAdd.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::RandomBelow;
using test::Words;

class PropertyTest : public test::FramesFixture {
protected:
    static constexpr unsigned kSeed = 20260304;

    PropertyTest() {
        session.Prefs.LogStatus = 0;
        OpenLists({{u"news"_s, Words("aa@x.test bb@x.test")}, {u"other"_s, Words("bb@x.test oo@x.test")}});
    }

    bool Chance(int oneIn) { return RandomBelow(random, oneIn) == 0; }
    QString RandomAddress() {
        return QString(u"abcdeABCDE"[RandomBelow(random, 10)]) + QString::number(RandomBelow(random, 4)) +
               u"@x.test"_s;
    }
    QString RandomName() { return QString(u"lmn"[RandomBelow(random, 3)]); }
    // The steps that can be undone; looks at each and comes back.
    int CountSteps() {
        int count = 0;
        for (; !lists.Undo.UndoText().isEmpty(); ++count)
            lists.Undo.Undo();
        for (int i = 0; i < count; ++i)
            lists.Undo.Redo();
        return count;
    }
    static QStringList Split(const QByteArray &file) { return SplitLines(DecodeText(file)); }
    void Press(const char *button) {
        Turn();
        Find<QAbstractButton>(button)->click();
    }

    void Select(int box);
    QString ChangeRequests();
    QString Import();
    QString ChangeEntries();
    QString MoveEntries();
    QString ChangeFiles();
    QString GoBack();
    QString Step();
    void Answer();
    void KeepSmall();

    static QStringList Ordered(QStringList entries) {
        std::sort(entries.begin(), entries.end());
        return entries;
    }
    void ExpectSameEntries() {
        if (!isOneBoxAhead_) {
            ASSERT_EQ(Ordered(Current()), Ordered(Sorted())) << "the boxes differ";
        }
        QStringList lowered;
        for (const QString &entry : Sorted())
            lowered << entry.toLower();
        ASSERT_TRUE(std::is_sorted(lowered.begin(), lowered.end()));
    }
    // A list that counts as saved is what its file holds, unless something was added to one box alone.
    void ExpectSavedLaw() {
        if (lists.Open.Name().isEmpty()) {
            ASSERT_TRUE(lists.Open.IsSaved());
        } else if (lists.Open.IsSaved() && !isOneBoxAhead_) {
            ASSERT_EQ(ReadListFile(lists.Open.Name()), test::FileBytes(Current()));
        }
        ASSERT_EQ(Chosen(), lists.Open.Name());
        ASSERT_EQ(Names().size(), ListFolder().size());
    }
    void ExpectControls() {
        Turn();
        const bool hasSelection = lists.SelectedCount(lists.VisibleBox()) > 0;
        ASSERT_EQ(IsEnabled("cmdListDelete_0"), hasSelection);
        ASSERT_EQ(IsEnabled("cmdListFind"), !Current().isEmpty());
        ASSERT_EQ(IsEnabled("cmdCapturesAdd"), !Pending().isEmpty());
        ASSERT_EQ(IsEnabled("cmdListSwap"), lists.SelectedCount(kPending) > 0);
        ASSERT_EQ(IsEnabled("cmdFileRename"), !lists.Open.Name().isEmpty());
        for (int box : {kChronological, kAlphabetical})
            ASSERT_EQ(View(box)->isVisible(), box == lists.VisibleBox());
        ASSERT_EQ(counts_, (std::pair<qsizetype, qsizetype>(Current().size(), Pending().size())));
    }
    void ExpectSigns() {
        for (const QString &entry : Pending())
            ASSERT_TRUE(entry.startsWith(u'+') || entry.startsWith(u'-')) << entry.toStdString();
    }
    void ExpectInvariants() {
        ASSERT_NO_FATAL_FAILURE(ExpectSameEntries());
        ASSERT_NO_FATAL_FAILURE(ExpectSavedLaw());
        ASSERT_NO_FATAL_FAILURE(ExpectControls());
        ASSERT_NO_FATAL_FAILURE(ExpectSigns());
    }
    // Runs an operation on a box that changes its number of entries by `change` for each selected one.
    template<typename Operation> void ExpectCount(int box, qsizetype change, Operation &&operation) {
        const qsizetype before = lists.lstEmailList(box).Count();
        operation();
        EXPECT_EQ(lists.lstEmailList(box).Count(), before + change);
    }

    std::mt19937 random{kSeed};
    bool isOneBoxAhead_ = false; // entries were copied to the visible box only
    std::pair<qsizetype, qsizetype> counts_;
};

void PropertyTest::Select(int box) {
    QList<int> rows;
    const int oneIn = 1 + RandomBelow(random, 4);
    for (int row = 0; row < lists.lstEmailList(box).Count(); ++row)
        if (Chance(oneIn))
            rows.append(row);
    lists.SelectRows(box, rows);
}

QString PropertyTest::ChangeRequests() {
    const auto kind = Chance(2) ? RequestKind::Subscribe : RequestKind::Unsubscribe;
    if (!Chance(3)) {
        const QString address = RandomAddress();
        ExpectCount(kPending, 1, [&] { AddTypedAddress(lists, address, kind, nullptr); });
        return u"type"_s;
    }
    if (Chance(2))
        return Import();
    const QList<PendingRequest> requests = [&] {
        QList<PendingRequest> all;
        for (int row = 0; row < lists.Pending.Count(); ++row)
            all << lists.Pending.Request(row);
        return all;
    }();
    const QStringList before = Current();
    pending.ProcessPendingList();
    if (lists.Open.Name().isEmpty())
        return u"process nothing"_s;
    EXPECT_EQ(Pending(), QStringList());
    // What was asked for last has happened, unless the address stood there more than once.
    if (!requests.isEmpty() && before.filter(requests.last().Address, Qt::CaseInsensitive).size() <= 1) {
        const bool isThere = lists.lstEmailList(kChronological).FindFirst(requests.last().Address) >= 0;
        EXPECT_EQ(isThere, requests.last().Kind == RequestKind::Subscribe);
    }
    return u"process"_s;
}

// One step, however many come of it; what waits already comes no second time.
QString PropertyTest::Import() {
    QStringList addresses;
    for (int i = RandomBelow(random, 6); i >= 0; --i)
        addresses << RandomAddress();
    Turn();
    const int steps = CountSteps();
    const qsizetype before = Pending().size();
    const auto kind = Chance(2) ? RequestKind::Subscribe : RequestKind::Unsubscribe;
    const int added = ApplyImport(session, lists, addresses, kind);
    EXPECT_EQ(Pending().size(), before + added);
    EXPECT_EQ(CountSteps(), std::min(steps + (added > 0 ? 1 : 0), int(ListUndo::kMostSteps)));
    return u"import"_s;
}

QString PropertyTest::ChangeEntries() {
    const int box = Chance(2) ? int(kPending) : lists.VisibleBox();
    const int selected = lists.SelectedCount(box);
    switch (RandomBelow(random, 6)) {
    case 0:
    case 1:
        Select(box);
        return u"select"_s;
    case 2:
        for (int i = 0; i < selected; ++i)
            profile.Boxes.Inputs.push_back(RandomAddress());
        ExpectCount(box, 0, [&] { editing.EditSelected(box); });
        return u"edit"_s;
    case 3:
        ExpectCount(box, -selected, [&] { editing.DeleteSelected(box); });
        return u"delete"_s;
    case 4: {
        const QStringList before = Pending();
        editing.SwapSigns();
        EXPECT_EQ(lists.SelectedCount(kPending) == 0, before == Pending());
        return u"swap"_s;
    }
    default:
        profile.Boxes.Inputs.push_back(QString(u"abcde"[RandomBelow(random, 5)]));
        editing.Search();
        return u"search"_s;
    }
}

QString PropertyTest::MoveEntries() {
    const auto transfer = Chance(2) ? ListEditing::Transfer::Move : ListEditing::Transfer::Copy;
    const int visible = lists.VisibleBox();
    switch (RandomBelow(random, 3)) {
    case 0:
        ExpectCount(kPending, lists.SelectedCount(visible), [&] { editing.CurrentToPending(transfer); });
        return u"to pending"_s;
    case 1: {
        const int copied = lists.SelectedCount(kPending);
        const bool wasSaved = lists.Open.IsSaved();
        isOneBoxAhead_ = isOneBoxAhead_ || copied > 0;
        ExpectCount(visible, copied, [&] { editing.PendingToCurrent(transfer); });
        EXPECT_EQ(lists.Open.IsSaved(), wasSaved);
        return u"to current"_s;
    }
    default: {
        const QStringList selected = Ordered(lists.SelectedEntries(visible));
        editing.ChangeSortOrder(RandomBelow(random, 2));
        if (!isOneBoxAhead_) {
            EXPECT_EQ(Ordered(lists.SelectedEntries(lists.VisibleBox())), selected);
        }
        return u"sort order"_s;
    }
    }
}

// Every question of one operation is answered the same way.
void PropertyTest::Answer() {
    profile.Boxes.Answers.assign(3, Chance(3) ? BoxAnswer::No : BoxAnswer::Yes);
}

QString PropertyTest::ChangeFiles() {
    const QString name = lists.Open.Name();
    Answer();
    switch (RandomBelow(random, 5)) {
    case 0:
        Press("cmdFileSave");
        EXPECT_TRUE(lists.Open.IsSaved());
        return u"save"_s;
    case 1:
        profile.Boxes.Inputs.push_back(RandomName());
        Press("cmdFileNew");
        isOneBoxAhead_ = false;
        return u"new"_s;
    case 2:
        profile.Boxes.Inputs.push_back(RandomName());
        Press("cmdFileRename");
        isOneBoxAhead_ = isOneBoxAhead_ && lists.Open.Name() == name;
        return u"rename"_s;
    case 3:
        Press("cmdFileDelete");
        isOneBoxAhead_ = isOneBoxAhead_ || lists.Open.Name().isEmpty();
        isOneBoxAhead_ = isOneBoxAhead_ && (lists.Open.Name() == name || lists.Open.Name().isEmpty());
        return u"remove"_s;
    default:
        if (!Names().isEmpty()) {
            current.ChooseList(RandomBelow(random, static_cast<int>(Names().size())));
            isOneBoxAhead_ = false;
        }
        return u"choose"_s;
    }
}

// Undone to the start and redone, everything is as it was.
QString PropertyTest::GoBack() {
    const auto contents = [this] { return std::tuple(Current(), Sorted(), Pending(), lists.Open.IsSaved()); };
    Turn();
    if (Chance(3)) {
        const bool undoes = Chance(2);
        undoes ? lists.Undo.Undo() : lists.Undo.Redo();
        return undoes ? u"undo"_s : u"redo"_s;
    }
    const auto before = contents();
    std::vector<decltype(contents())> passed;
    while (!lists.Undo.UndoText().isEmpty()) {
        passed.push_back(contents());
        lists.Undo.Undo();
    }
    for (; !passed.empty(); passed.pop_back()) {
        lists.Undo.Redo();
        EXPECT_TRUE(contents() == passed.back());
    }
    EXPECT_TRUE(contents() == before);
    return u"there and back"_s;
}

QString PropertyTest::Step() {
    switch (RandomBelow(random, 9)) {
    case 8:
        return GoBack();
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
    for (int box : {lists.VisibleBox(), int(kPending)})
        if (lists.lstEmailList(box).Count() > 25) {
            editing.SelectAll(box);
            editing.DeleteSelected(box);
        }
}

TEST_F(PropertyTest, RandomOperationsKeepWhatAlwaysHolds) {
    constexpr int kSteps = 3000;
    QObject::connect(&owner.page, &ListsPage::CountsChanged, &host,
                     [this](int currentCount, int pendingCount) {
                         counts_ = {currentCount, pendingCount};
                     });
    owner.page.UpdateControls();
    QStringList done;
    QMap<QString, int> counts;
    for (int step = 0; step < kSteps; ++step) {
        done << Step();
        ++counts[done.last()];
        KeepSmall();
        profile.Boxes.Answers.clear();
        profile.Boxes.Inputs.clear();
        ASSERT_NO_FATAL_FAILURE(ExpectInvariants())
            << "seed " << kSeed << ", step " << step
            << ", the last ones: " << done.mid(step - 12).join(u", "_s).toStdString();
        ASSERT_FALSE(HasFailure()) << "step " << step << ": "
                                   << done.mid(step - 12).join(u", "_s).toStdString();
        profile.Boxes.Shown.clear();
    }
    EXPECT_GE(counts.size(), 15) << "some operations never came up";
}

// Neither a save in between nor its number of entries makes a difference to how far an undo goes.
TEST_F(PropertyTest, AnySequenceUndoneToTheStartGivesTheStart) {
    for (int round = 0; round < 60; ++round) {
        OpenLists({{u"news"_s, Words("aa@x.test bb@x.test cc@x.test dd@x.test")}});
        editing.SelectAll(kPending);
        editing.DeleteSelected(kPending);
        Turn();
        const auto start = std::tuple(Current(), Sorted(), Pending());
        const QString first = lists.Undo.UndoText(); // of the Pending list, from before
        QStringList done;
        bool isSavedBetween = false;
        const int oldSteps = CountSteps();
        for (int step = 0; step < 25; ++step) {
            done << (Chance(3) ? ChangeRequests() : Chance(2) ? ChangeEntries() : MoveEntries());
            Turn();
            if (Chance(8)) {
                Click("cmdFileSave");
                isSavedBetween = true;
            }
        }
        while (CountSteps() > oldSteps)
            lists.Undo.Undo();
        ASSERT_TRUE(std::tuple(Current(), Sorted(), Pending()) == start)
            << "round " << round << ": " << done.join(u", "_s).toStdString();
        EXPECT_EQ(lists.Undo.UndoText(), first);
        if (isSavedBetween)
            Click("cmdFileSave");
        EXPECT_TRUE(lists.Open.IsSaved()) << "round " << round;
        EXPECT_EQ(ReadListFile(u"news"_s), test::FileBytes(std::get<0>(start)));
        profile.Boxes.Inputs.clear();
        lists.Open.DropChanges();
    }
}

TEST_F(PropertyTest, SavedVersionsRebuildEveryState) {
    std::vector<QStringList> states{Current()};
    for (int step = 0; step < 600; ++step) {
        (void)(Chance(3) ? ChangeRequests() : Chance(2) ? ChangeEntries() : MoveEntries());
        if (Chance(4))
            Chance(2) ? lists.Undo.Undo() : lists.Undo.Redo();
        KeepSmall();
        Turn();
        profile.Clock = profile.Clock.addSecs(RandomBelow(random, 3) - 1); // forth, back, or not at all
        if (Chance(6)) {
            Click("cmdFileSave");
            if (states.back() != Current())
                states.push_back(Current());
        }
        profile.Boxes.Inputs.clear();
    }
    ASSERT_GT(states.size(), 40);
    std::vector<QStringList> kept;
    for (const History::Version &version : History::Versions(session, u"news"_s))
        kept.push_back(History::ReadVersion(version));
    kept.push_back(Split(ReadListFile(u"news"_s)));
    EXPECT_EQ(kept.size(), states.size());
    EXPECT_TRUE(kept == states);
}

} // namespace
} // namespace varlo
