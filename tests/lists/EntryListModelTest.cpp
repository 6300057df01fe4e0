#include "lists/EntryListModel.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"
#include "support/ErrorOf.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace varlo {
namespace {

using test::Addresses;
using test::RandomBelow;
using test::Words;
using Order = EntryListModel::Order;

constexpr int kMost = EntryListModel::kMostEntries;

QStringList EntriesOf(Order order, const QStringList &entries) {
    EntryListModel model(order);
    model.SetEntries(entries);
    return model.Entries();
}

TEST(EntryListModelTest, HoldsAtMostWhatA16BitNumberCounts) {
    EXPECT_EQ(kMost, 32767);
}

TEST(EntryListModelTest, AChronologicalListKeepsTheOrder) {
    EXPECT_EQ(EntriesOf(Order::Chronological, Words("b a C c B a")), Words("b a C c B a"));
}

TEST(EntryListModelTest, AnAlphabeticalListIgnoresCaseAndBreaksTiesByCodePoint) {
    EXPECT_EQ(EntriesOf(Order::Alphabetical, Words("b a C c B A _ 1 z")), Words("1 _ A a B b C c z"));
}

TEST(EntryListModelTest, AnAlphabeticalListSortsLettersOfAllAlphabets) {
    EXPECT_EQ(EntriesOf(Order::Alphabetical, Words("ж Ä z ä Ж")), Words("z Ä ä Ж ж"));
}

TEST(EntryListModelTest, AddPutsAnEntryInItsPlaceAndTellsIt) {
    EntryListModel sorted(Order::Alphabetical);
    sorted.SetEntries(Words("a c e"));
    EXPECT_EQ(sorted.Add(u"D"_s), 2);
    EXPECT_EQ(sorted.Entries(), Words("a c D e"));
    EntryListModel chronological(Order::Chronological);
    chronological.SetEntries(Words("a c e"));
    EXPECT_EQ(chronological.Add(u"D"_s), 3);
    EXPECT_EQ(chronological.Entries(), Words("a c e D"));
}

TEST(EntryListModelTest, AnEmptyTextIsAnEntry) {
    EntryListModel model(Order::Alphabetical);
    model.SetEntries({u"b"_s, QString(), u"a"_s, QString()});
    EXPECT_EQ(model.Entries(), (QStringList{QString(), QString(), u"a"_s, u"b"_s}));
    EXPECT_EQ(model.FindFirst(QString()), 0);
}

TEST(EntryListModelTest, ReplaceKeepsThePlaceOrFindsTheNewOne) {
    EntryListModel chronological(Order::Chronological);
    chronological.SetEntries(Words("m n o"));
    EXPECT_EQ(chronological.Replace(0, u"z"_s), 0);
    EXPECT_EQ(chronological.Entries(), Words("z n o"));
    EntryListModel sorted(Order::Alphabetical);
    sorted.SetEntries(Words("m n o"));
    EXPECT_EQ(sorted.Replace(0, u"z"_s), 2);
    EXPECT_EQ(sorted.Entries(), Words("n o z"));
}

TEST(EntryListModelTest, FindsTheFirstOfEqualEntriesLetterCaseAside) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Words("x@A.b X@a.b y@a.b"));
        EXPECT_EQ(model.FindFirst(u"x@a.B"_s), 0);
        EXPECT_EQ(model.FindFirst(u"Y@A.B"_s), 2);
        EXPECT_EQ(model.FindFirst(u"x@a"_s), -1);
        EXPECT_EQ(model.FindFirst(u"zz"_s), -1);
    }
}

TEST(EntryListModelTest, FindsLettersBeyondAsciiWhateverTheirCase) {
    EntryListModel model(Order::Chronological);
    model.SetEntries({u"jörg@x.test"_s});
    EXPECT_EQ(model.FindFirst(u"JÖRG@X.TEST"_s), 0);
}

TEST(EntryListModelTest, FindsWhatIsLeftOfAListThatChangedBeforeTheFirstSearch) {
    EntryListModel model(Order::Chronological);
    model.SetEntries(Words("a b A c"));
    model.Remove(0);
    model.Add(u"B"_s);
    model.Replace(2, u"d"_s);
    EXPECT_EQ(model.Entries(), Words("b A d B"));
    EXPECT_EQ(model.FindFirst(u"a"_s), 1);
    EXPECT_EQ(model.FindFirst(u"B"_s), 0);
    EXPECT_EQ(model.FindFirst(u"c"_s), -1);
    model.SetEntries(Words("x"));
    EXPECT_EQ(model.FindFirst(u"b"_s), -1);
    EXPECT_EQ(model.FindFirst(u"x"_s), 0);
}

// Whatever is done first to an alphabetical list finds it in order.
TEST(EntryListModelTest, IsInOrderWhicheverLookIsTheFirst) {
    const std::vector<std::pair<const char *, std::function<QString(EntryListModel &)>>> looks{
        {"Entry", [](EntryListModel &model) { return model.Entry(0); }},
        {"data", [](EntryListModel &model) { return model.index(0).data().toString(); }},
        {"Entries", [](EntryListModel &model) { return model.Entries().first(); }},
        {"FindFirst", [](EntryListModel &model) { return QString::number(model.FindFirst(u"A"_s)); }},
        {"FindExact", [](EntryListModel &model) { return QString::number(model.FindExact(u"a"_s)); }},
        {"Add", [](EntryListModel &model) { return QString::number(model.Add(u"bb"_s)); }},
        {"Replace", [](EntryListModel &model) { return QString::number(model.Replace(0, u"z"_s)); }},
        {"Remove", [](EntryListModel &model) { return model.Remove(0), model.Entry(0); }},
        {"RemoveRows",
         [](EntryListModel &model) {
             return model.RemoveRows({0, 2}), model.Entry(0);
         }},
        {"AddAll",
         [](EntryListModel &model) { return model.AddAll(Words("0 d")), model.Entries().join(u' '); }}};
    const QStringList results = Words("a a a 0 0 2 2 b b");
    for (size_t i = 0; i < looks.size(); ++i) {
        EntryListModel model(Order::Alphabetical);
        model.SetEntries(Words("c b a"));
        EXPECT_EQ(model.Count(), 3);
        EXPECT_EQ(looks[i].second(model), i < 9 ? results[qsizetype(i)] : u"0 a b c d"_s) << looks[i].first;
        const QStringList entries = model.Entries();
        EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end())) << looks[i].first;
    }
}

TEST(EntryListModelTest, SerialsTellTheRowsOfAnAlphabeticalListApart) {
    EntryListModel model(Order::Alphabetical);
    model.SetEntries(Words("c b"));
    model.Add(u"a"_s);
    EXPECT_EQ((QSet<quint32>{model.Serial(0), model.Serial(1), model.Serial(2)}).size(), 3);
}

TEST(EntryListModelTest, FindExactTellsLetterCaseApart) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Words("B b a"));
        const int lower = model.FindExact(u"b"_s);
        EXPECT_EQ(model.Entry(lower), u"b"_s);
        EXPECT_EQ(model.Entry(model.FindExact(u"B"_s)), u"B"_s);
        EXPECT_EQ(model.FindExact(u"A"_s), -1);
    }
}

TEST(EntryListModelTest, TheNextOfEqualEntriesIsFoundWhenTheFirstIsGone) {
    EntryListModel model(Order::Chronological);
    model.SetEntries(Words("a x b X c x"));
    model.Remove(1);
    EXPECT_EQ(model.FindFirst(u"x"_s), 2);
    model.Replace(2, u"other"_s);
    EXPECT_EQ(model.FindFirst(u"x"_s), 4);
    model.Replace(0, u"X"_s);
    EXPECT_EQ(model.FindFirst(u"x"_s), 0);
    model.RemoveRows({0, 4});
    EXPECT_EQ(model.FindFirst(u"x"_s), -1);
}

TEST(EntryListModelTest, RemoveRowsTakesSeparateRanges) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Words("a b c d e f"));
        model.RemoveRows({0, 1, 3, 5});
        EXPECT_EQ(model.Entries(), Words("c e"));
        model.RemoveRows({});
        EXPECT_EQ(model.Entries(), Words("c e"));
        model.RemoveRows({0, 1});
        EXPECT_EQ(model.Entries(), QStringList());
    }
}

TEST(EntryListModelTest, RemovesEveryOtherOfTheMostEntries) {
    EntryListModel model(Order::Chronological);
    const QStringList entries = Addresses(kMost);
    model.SetEntries(entries);
    QList<int> rows;
    QStringList kept;
    for (int i = 0; i < kMost; ++i)
        i % 2 == 0 ? rows.append(i) : kept.append(entries[i]);
    model.RemoveRows(rows);
    EXPECT_EQ(model.Entries(), kept);
    EXPECT_EQ(model.FindFirst(kept.last()), static_cast<int>(kept.size()) - 1);
    EXPECT_EQ(model.FindFirst(entries.first()), -1);
}

TEST(EntryListModelTest, AFullListRefusesOneMore) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Addresses(kMost));
        const QStringList before = model.Entries();
        EXPECT_EQ(test::ErrorOf([&] { model.Add(u"one@more.test"_s); }), Overflow);
        EXPECT_EQ(model.Entries(), before);
    }
}

TEST(EntryListModelTest, ATooLongListIsTakenUpToTheLimit) {
    EntryListModel model(Order::Chronological);
    const QStringList entries = Addresses(kMost + 1);
    EXPECT_EQ(test::ErrorOf([&] { model.SetEntries(entries); }), Overflow);
    EXPECT_EQ(model.Entries(), entries.first(kMost));
}

TEST(EntryListModelTest, AddAllTakesWhatFits) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Addresses(kMost - 2));
        EXPECT_EQ(test::ErrorOf([&] { model.AddAll(Words("~1 ~2")); }), 0);
        EXPECT_EQ(test::ErrorOf([&] { model.AddAll(Words("~3 ~4")); }), Overflow);
        EXPECT_EQ(model.Count(), kMost);
        EXPECT_EQ(model.Entries().last(), u"~2"_s);
    }
}

TEST(EntryListModelTest, AddAllMergesIntoTheAlphabet) {
    EntryListModel model(Order::Alphabetical);
    model.SetEntries(Words("b d"));
    model.AddAll(Words("e a C"));
    EXPECT_EQ(model.Entries(), Words("a b C d e"));
}

TEST(EntryListModelTest, AddAllKeepsASelection) {
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        model.SetEntries(Words("b d"));
        QItemSelectionModel selection(&model);
        selection.select({model.index(0), model.index(1)}, QItemSelectionModel::Select);
        model.AddAll(Words("c a"));
        QStringList selected;
        for (const QModelIndex &index : selection.selectedIndexes())
            selected << index.data().toString();
        EXPECT_EQ(selected, Words("b d"));
    }
}

TEST(EntryListModelTest, BulkChangesAreOneChangeOfTheModel) {
    EntryListModel model(Order::Chronological);
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy inserts(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
    model.SetEntries(Addresses(1000));
    EXPECT_EQ(resets.count(), 1);
    model.AddAll(Addresses(1000, u"b"_s));
    EXPECT_EQ(inserts.count(), 1);
    model.AddAll({});
    EXPECT_EQ(inserts.count(), 1);
    model.RemoveRows({3, 4, 5, 6});
    EXPECT_EQ(removals.count(), 1);
    QList<int> scattered;
    for (int row = 0; row < 1000; row += 2)
        scattered.append(row);
    model.RemoveRows(scattered);
    EXPECT_EQ(resets.count() + removals.count(), 3);
}

TEST(EntryListModelTest, ShowsTextsInTheRolesOfTextsOnly) {
    EntryListModel model(Order::Chronological);
    model.SetEntries({u"<b>a</b>@x.test"_s});
    EXPECT_EQ(model.data(model.index(0)), QVariant(u"<b>a</b>@x.test"_s));
    EXPECT_EQ(model.data(model.index(0), Qt::EditRole), QVariant(u"<b>a</b>@x.test"_s));
    EXPECT_EQ(model.data(model.index(0), Qt::ToolTipRole), QVariant());
    EXPECT_EQ(model.data(model.index(1)), QVariant());
    EXPECT_EQ(model.data({}), QVariant());
    EXPECT_EQ(model.rowCount(model.index(0)), 0);
}

TEST(EntryListModelTest, APersistentIndexFollowsItsEntry) {
    EntryListModel model(Order::Alphabetical);
    model.SetEntries(Words("b d f"));
    const QPersistentModelIndex f = model.index(2);
    model.Add(u"a"_s);
    model.Remove(model.FindFirst(u"d"_s));
    EXPECT_EQ(f.data().toString(), u"f"_s);
    model.Remove(f.row());
    EXPECT_FALSE(f.isValid());
}

// Entries that stand in the list twice, far apart: looking for the second one after the first had gone would
// take the square of their number, half a minute here.
TEST(EntryListModelTest, RemovingEntriesThatComeTwiceTakesTimeInProportion) {
    const QStringList half = Addresses(kMost / 2);
    EntryListModel model(Order::Chronological);
    model.SetEntries(half + half);
    QList<int> firstHalf;
    for (int row = 0; row < kMost / 2; ++row)
        firstHalf.append(row);
    firstHalf.removeLast(); // not all of them, which would be one reset
    model.RemoveRows(firstHalf);
    EXPECT_EQ(model.Entries(), half.last(1) + half);
    EXPECT_EQ(model.FindFirst(half.first()), 1);
    model.SetEntries(half + half);
    for (const QString &entry : half)
        model.Remove(model.FindFirst(entry));
    EXPECT_EQ(model.Entries(), half);
}

TEST(EntryListModelTest, RemovingOneOfManyEqualEntriesTakesAMoment) {
    EntryListModel model(Order::Chronological);
    model.SetEntries(QStringList(kMost, u"same@x.test"_s));
    for (int left = kMost; left > 0; --left) {
        ASSERT_EQ(model.FindFirst(u"SAME@x.test"_s), 0);
        model.Remove(left % 2 == 0 ? 0 : left - 1);
    }
    EXPECT_EQ(model.FindFirst(u"same@x.test"_s), -1);
}

// A plain list that does the same in the plainest way.
class NaiveList {
public:
    explicit NaiveList(Order order) : order_(order) {}

    void Add(const QString &entry) {
        entries.append(entry);
        Sort();
    }
    void Replace(qsizetype row, const QString &entry) {
        entries[row] = entry;
        Sort();
    }
    int FindFirst(const QString &entry) const {
        for (qsizetype i = 0; i < entries.size(); ++i)
            if (entries[i].toLower() == entry.toLower())
                return static_cast<int>(i);
        return -1;
    }

    QStringList entries;

private:
    void Sort() {
        if (order_ == Order::Alphabetical)
            std::sort(entries.begin(), entries.end(), [](const QString &a, const QString &b) {
                return a.toLower() != b.toLower() ? a.toLower() < b.toLower() : a < b;
            });
    }

    Order order_;
};

QString RandomEntry(std::mt19937 &random) {
    static const QStringList kLetters = Words("a A b B ä Ä 1 _");
    QString entry;
    for (int length = 1 + RandomBelow(random, 3); length > 0; --length)
        entry += kLetters[RandomBelow(random, 8)];
    return entry;
}

QList<int> RandomRows(std::mt19937 &random, int count) {
    QList<int> rows;
    for (int row = 0; row < count; ++row)
        if (RandomBelow(random, 3) == 0)
            rows.append(row);
    return rows;
}

void ChangeBoth(std::mt19937 &random, EntryListModel &model, NaiveList &naive) {
    const QString entry = RandomEntry(random);
    const int row =
        model.Count() > 0 ? static_cast<int>(random() % static_cast<unsigned>(model.Count())) : -1;
    const int kind = RandomBelow(random, 20);
    if (kind < 10 || row < 0) {
        model.Add(entry);
        naive.Add(entry);
    } else if (kind < 13) {
        model.Replace(row, entry);
        naive.Replace(row, entry);
    } else if (kind < 17) {
        model.Remove(row);
        naive.entries.removeAt(row);
    } else if (kind < 19) {
        model.AddAll({entry, entry.toUpper()});
        naive.Add(entry);
        naive.Add(entry.toUpper());
    } else if (model.Count() > 150) {
        const QList<int> rows = RandomRows(random, model.Count());
        model.RemoveRows(rows);
        for (auto at = rows.rbegin(); at != rows.rend(); ++at)
            naive.entries.removeAt(*at);
    }
}

TEST(EntryListModelTest, AgreesWithAPlainListOverRandomChanges) {
    constexpr unsigned kSeed = 4711;
    std::mt19937 random(kSeed);
    for (Order order : {Order::Chronological, Order::Alphabetical}) {
        EntryListModel model(order);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        NaiveList naive(order);
        for (int step = 0; step < 3000; ++step) {
            ChangeBoth(random, model, naive);
            ASSERT_EQ(model.Entries(), naive.entries) << "seed " << kSeed << ", step " << step;
            const QString wanted = RandomEntry(random);
            ASSERT_EQ(model.FindFirst(wanted), naive.FindFirst(wanted))
                << "seed " << kSeed << ", step " << step;
            ASSERT_EQ(model.FindExact(wanted), static_cast<int>(naive.entries.indexOf(wanted)))
                << "seed " << kSeed << ", step " << step;
        }
    }
}

} // namespace
} // namespace varlo
