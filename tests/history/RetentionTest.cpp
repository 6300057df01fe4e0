#include "history/Retention.h"

#include <gtest/gtest.h>

namespace varlo::History {
namespace {

const QDateTime kNow{QDate(2026, 3, 31), QTime(12, 0)};

// Those that stay, as days and hours before now; the oldest first.
QList<qint64> HoursThatStay(const QList<qint64> &hoursAgo) {
    QList<QDateTime> times;
    for (const qint64 hours : hoursAgo)
        times.append(kNow.addSecs(-hours * 3600));
    QList<qint64> staying = hoursAgo;
    const QList<qsizetype> superfluous = Superfluous(times, kNow);
    for (auto place = superfluous.rbegin(); place != superfluous.rend(); ++place)
        staying.removeAt(*place);
    return staying;
}

TEST(RetentionTest, AllOfTheLastWeekStay) {
    EXPECT_EQ(HoursThatStay({168, 167, 24, 3, 2, 1, 0}), (QList<qint64>{168, 167, 24, 3, 2, 1, 0}));
}

TEST(RetentionTest, ThenTheLastOneOfEachDayStays) {
    // Eight days before now is 23 March: at 20, 13 and 12 o'clock; a day earlier at 12.
    EXPECT_EQ(HoursThatStay({9 * 24, 8 * 24, 8 * 24 - 1, 8 * 24 - 8}), (QList<qint64>{9 * 24, 8 * 24 - 8}));
}

TEST(RetentionTest, AfterAMonthTheLastOneOfEachMonthStays) {
    // 9 and 10 February, 20 January, 1 and 2 January.
    EXPECT_EQ(HoursThatStay({89 * 24, 88 * 24, 70 * 24, 50 * 24, 49 * 24}),
              (QList<qint64>{70 * 24, 49 * 24}));
}

TEST(RetentionTest, TenYearsLaterOneAMonthIsLeft) {
    QList<QDateTime> times;
    for (int day = 0; day < 3652; ++day)
        times.append(kNow.addDays(day - 3652));
    const auto left = times.size() - Superfluous(times, kNow).size();
    EXPECT_GE(left, 7 + 24 + 118);
    EXPECT_LE(left, 8 + 25 + 121);
}

TEST(RetentionTest, WhatLiesInTheFutureStays) {
    EXPECT_EQ(HoursThatStay({-1, -2, -24 * 400, -24 * 401}), (QList<qint64>{-1, -2, -24 * 400, -24 * 401}));
}

} // namespace
} // namespace varlo::History
