// Cutting the address out of a sender.
#include "pop3/ExtractAddress.h"

#include "core/RuntimeError.h"

#include <gtest/gtest.h>

namespace varlo {

namespace {

int ErrorOf(const QString &From) {
    try {
        ExtractAddress(From);
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

// "<" at position `lt`, ">" at position `gt`, letters elsewhere.
QString Brackets(int lt, int gt) {
    QString text(qMax(lt, gt), u'a');
    text[lt - 1] = u'<';
    text[gt - 1] = u'>';
    return text;
}

} // namespace

TEST(ExtractAddressTest, TextBetweenTheBracketsWhenThePositionsShareABit) {
    EXPECT_EQ(ExtractAddress(QStringLiteral("Joe <j@x.test>")), QStringLiteral("j@x.test")); // 5 and 14
}

TEST(ExtractAddressTest, WholeValueWhenThePositionsShareNoBit) {
    const QString from = QStringLiteral("Jones <a@b.test>"); // 7 and 16
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
    EXPECT_EQ(ExtractAddress(QStringLiteral("a@b.test")), QStringLiteral("a@b.test"));
    EXPECT_EQ(ExtractAddress(QStringLiteral(" a@b.test ")), QStringLiteral(" a@b.test "));
    EXPECT_EQ(ExtractAddress(QString()), QString());
}

TEST(ExtractAddressTest, OneBracketAloneLeavesTheValueWhole) {
    EXPECT_EQ(ExtractAddress(QStringLiteral("<a@b.test")), QStringLiteral("<a@b.test"));
    EXPECT_EQ(ExtractAddress(QStringLiteral("a@b.test>")), QStringLiteral("a@b.test>"));
}

TEST(ExtractAddressTest, EmptyBracketsGiveAnEmptyAddress) {
    EXPECT_EQ(ExtractAddress(QStringLiteral("a<>")), QString()); // 2 and 3
}

TEST(ExtractAddressTest, ClosingBracketFirstIsANegativeLength) {
    EXPECT_EQ(ErrorOf(QStringLiteral(">a<")), int(InvalidProcedureCall)); // 1 and 3
    EXPECT_EQ(ErrorOf(QStringLiteral("><")), 0);                          // 1 and 2 share no bit
    EXPECT_EQ(ExtractAddress(QStringLiteral("><")), QStringLiteral("><"));
}

TEST(ExtractAddressTest, OnlyTheFirstBracketOfEachKindCounts) {
    EXPECT_EQ(ExtractAddress(QStringLiteral("<<a>>")), QStringLiteral("<<a>>")); // 1 and 4
    EXPECT_EQ(ExtractAddress(QStringLiteral("<<ab>>")), QStringLiteral("<ab"));  // 1 and 5
}

TEST(ExtractAddressTest, PositionsAre16Bit) {
    EXPECT_EQ(ExtractAddress(Brackets(1, 32767)), QString(32765, u'a'));
    EXPECT_EQ(ErrorOf(Brackets(1, 32768)), int(Overflow));
}

} // namespace varlo
