#include "lists/ListComparison.h"

#include "lists/ListsFixture.h"
#include "support/Printers.h"

#include <QSet>

namespace varlo::test {
namespace {

TEST(ListComparisonTest, PartsTwoLists) {
    const ListComparison parts = CompareLists(Words("a B c"), Words("d C b e"));
    EXPECT_EQ(parts[kOnlyFirst], Words("a"));
    EXPECT_EQ(parts[kBoth], Words("B c")) << "as the first list spells them";
    EXPECT_EQ(parts[kOnlySecond], Words("d e"));
}

TEST(ListComparisonTest, TakesEachAddressOnceAndNoEmptyEntry) {
    const ListComparison parts =
        CompareLists({u"a"_s, u""_s, u"A"_s, u"b"_s}, {u"B"_s, u"b"_s, u""_s, u"c"_s, u"C"_s});
    EXPECT_EQ(parts[kOnlyFirst], Words("a"));
    EXPECT_EQ(parts[kBoth], Words("b"));
    EXPECT_EQ(parts[kOnlySecond], Words("c"));
}

TEST(ListComparisonTest, AnEmptyListHasNothingInCommon) {
    EXPECT_EQ(CompareLists({}, {}), ListComparison());
    EXPECT_EQ(CompareLists(Words("a"), {})[kOnlyFirst], Words("a"));
    EXPECT_EQ(CompareLists({}, Words("a"))[kOnlySecond], Words("a"));
}

TEST(ListComparisonTest, JoinsTheWantedParts) {
    const ListComparison parts = CompareLists(Words("a b"), Words("b c"));
    EXPECT_EQ(JoinParts(parts, {true, true, true}), Words("a b c"));
    EXPECT_EQ(JoinParts(parts, {true, false, true}), Words("a c"));
    EXPECT_EQ(JoinParts(parts, {false, false, false}), QStringList());
}

// Whatever two lists hold: union, intersection and difference are those of sets.
TEST(ListComparisonTest, AgreesWithSets) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        const auto list = [&random] {
            QStringList entries;
            for (int i = RandomBelow(random, 12); i > 0; --i)
                entries << (RandomBelow(random, 2) == 0 ? u"A%1"_s : u"a%1"_s).arg(RandomBelow(random, 8));
            return entries;
        };
        const auto keys = [](const QStringList &entries) {
            QSet<QString> set;
            for (const QString &entry : entries)
                set << entry.toLower();
            return set;
        };
        const QStringList first = list();
        const QStringList second = list();
        const ListComparison parts = CompareLists(first, second);
        EXPECT_EQ(keys(JoinParts(parts, {true, true, true})), keys(first) | keys(second));
        EXPECT_EQ(keys(parts[kBoth]), keys(first) & keys(second));
        EXPECT_EQ(keys(parts[kOnlyFirst]), keys(first) - keys(second));
        EXPECT_EQ(keys(parts[kOnlySecond]), keys(second) - keys(first));
        const QStringList all = JoinParts(parts, {true, true, true});
        EXPECT_EQ(all.size(), keys(all).size()) << "nothing twice";
    }
}

} // namespace
} // namespace varlo::test
