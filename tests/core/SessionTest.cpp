#include "core/Session.h"

#include "core/Literals.h"

#include <QThread>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// What the operator's clock shows; a text, because it must not matter how the time zone is kept.
QString Shown(const QDateTime &time) {
    return time.toString(u"yyyy-MM-dd hh:mm:ss"_s);
}

TEST(LocalTime, IsTheTimeOfTheOperatorsClock) {
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = LocalTime();
    const QDateTime after = QDateTime::currentDateTime();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
    EXPECT_LE(Shown(before), Shown(now));
    EXPECT_LE(Shown(now), Shown(after));
}

TEST(LocalTime, FollowsAChangeOfTheTimeZoneWithinASecond) {
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "VRL-5:30");
    const QDateTime changed = QDateTime::currentDateTimeUtc();
    while (LocalTime().toSecsSinceEpoch() == changed.toSecsSinceEpoch())
        QThread::msleep(5);
    EXPECT_EQ(LocalTime().offsetFromUtc(), (5 * 60 + 30) * 60);
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

TEST(LocalTime, AsksTheSystemInEachSecond) {
    const QByteArray zone = qgetenv("TZ");
    LocalTime();
    qputenv("TZ", "VRL-3:15");
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    while (QDateTime::currentSecsSinceEpoch() == second)
        QThread::msleep(5);
    EXPECT_EQ(LocalTime().offsetFromUtc(), (3 * 60 + 15) * 60);
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

} // namespace
} // namespace varlo::test
