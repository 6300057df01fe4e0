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

} // namespace
} // namespace varlo::test
