// Cutting the address out of a sender.
#include "pop3/ExtractAddress.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace varlo {

namespace {

// "<" at position `lt`, ">" at position `gt`, letters elsewhere.
QString Brackets(int lt, int gt) {
    QString text(qMax(lt, gt), u'a');
    text[lt - 1] = u'<';
    text[gt - 1] = u'>';
    return text;
}

} // namespace

TEST(ExtractAddressTest, TextBetweenTheBracketsWhenThePositionsShareABit) {
    EXPECT_EQ(ExtractAddress(u"Joe <j@x.test>"_s), u"j@x.test"_s); // 5 and 14
}

TEST(ExtractAddressTest, WholeValueWhenThePositionsShareNoBit) {
    const QString from = u"Jones <a@b.test>"_s; // 7 and 16
    EXPECT_EQ(ExtractAddress(from), from);
    EXPECT_EQ(ExtractAddress(Brackets(4, 11)), Brackets(4, 11));
    EXPECT_EQ(ExtractAddress(Brackets(4, 13)), QString(8, u'a'));
}

TEST(ExtractAddressTest, EveryPairOfPositionsFollowsTheBits) {
    for (int lt = 1; lt <= 40; ++lt)
        for (int gt = lt + 1; gt <= 40; ++gt)
            EXPECT_EQ(ExtractAddress(Brackets(lt, gt)),
                      (lt & gt) != 0 ? QString(gt - lt - 1, u'a') : Brackets(lt, gt))
                << lt << ' ' << gt;
}

TEST(ExtractAddressTest, BareAddressComesBackUnchanged) {
    EXPECT_EQ(ExtractAddress(u"a@b.test"_s), u"a@b.test"_s);
    EXPECT_EQ(ExtractAddress(u" a@b.test "_s), u" a@b.test "_s);
    EXPECT_EQ(ExtractAddress(QString()), QString());
}

TEST(ExtractAddressTest, OneBracketAloneLeavesTheValueWhole) {
    EXPECT_EQ(ExtractAddress(u"<a@b.test"_s), u"<a@b.test"_s);
    EXPECT_EQ(ExtractAddress(u"a@b.test>"_s), u"a@b.test>"_s);
}

TEST(ExtractAddressTest, EmptyBracketsGiveAnEmptyAddress) {
    EXPECT_EQ(ExtractAddress(u"a<>"_s), QString()); // 2 and 3
}

TEST(ExtractAddressTest, ClosingBracketFirstIsANegativeLength) {
    EXPECT_EQ(test::ErrorOf([&] { ExtractAddress(u">a<"_s); }), int(InvalidProcedureCall)); // 1 and 3
    EXPECT_EQ(test::ErrorOf([&] { ExtractAddress(u"><"_s); }), 0); // 1 and 2 share no bit
    EXPECT_EQ(ExtractAddress(u"><"_s), u"><"_s);
}

TEST(ExtractAddressTest, OnlyTheFirstBracketOfEachKindCounts) {
    EXPECT_EQ(ExtractAddress(u"<<a>>"_s), u"<<a>>"_s); // 1 and 4
    EXPECT_EQ(ExtractAddress(u"<<ab>>"_s), u"<ab"_s);  // 1 and 5
}

TEST(ExtractAddressTest, PositionsAre16Bit) {
    EXPECT_EQ(ExtractAddress(Brackets(1, 32767)), QString(32765, u'a'));
    EXPECT_EQ(test::ErrorOf([&] { ExtractAddress(Brackets(1, 32768)); }), int(Overflow));
}

} // namespace varlo
