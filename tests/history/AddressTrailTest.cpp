#include "history/AddressTrail.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <gtest/gtest.h>

namespace varlo::History {
namespace {

using Kind = TrailEvent::Kind;

QDateTime Day(int day) {
    return {QDate(2026, 3, day), QTime(12, 0)};
}

TrailStop Stop(int day, const QStringList &entries, const QString &cause = u"Save"_s) {
    return {Day(day), Day(day), cause, [entries] { return entries; }};
}

TrailStop Now(const QStringList &entries) {
    return {{}, {}, {}, [entries] { return entries; }};
}

const QStringList kWithout{u"bob@x.test"_s};
const QStringList kWith{u"bob@x.test"_s, u"Anna@x.test"_s};

TEST(AddressTrailTest, TellsWhenAnAddressJoinedAndLeft) {
    const QList<TrailStop> stops{Stop(1, kWithout, u"Process"_s), Stop(2, kWith), Stop(3, kWith, u"Delete"_s),
                                 Now(kWithout)};
    EXPECT_EQ(TrailOf(u"anna@X.test"_s, stops),
              (QList<TrailEvent>{{Kind::Joined, Day(1), Day(1), u"Process"_s},
                                 {Kind::Left, Day(3), Day(3), u"Delete"_s}}));
}

TEST(AddressTrailTest, WhoWasThereFromTheFirstVersionOnHasNotJoined) {
    EXPECT_EQ(TrailOf(u"anna@x.test"_s, {Stop(1, kWith), Now(kWith)}),
              (QList<TrailEvent>{{Kind::WasThere, Day(1), Day(1), {}}}));
}

TEST(AddressTrailTest, AnAddressThatNeverWasThereHasNoTrail) {
    EXPECT_EQ(TrailOf(u"cy@x.test"_s, {Stop(1, kWith), Now(kWithout)}), QList<TrailEvent>());
    EXPECT_EQ(TrailOf(u"anna@x.test"_s, {}), QList<TrailEvent>());
}

TEST(AddressTrailTest, BetweenVersionsThatHaveGoneTheTimeIsOnlyKnownWithinBounds) {
    TrailStop first = Stop(1, kWithout);
    first.Next = Day(5);
    EXPECT_EQ(TrailOf(u"anna@x.test"_s, {first, Now(kWith)}),
              (QList<TrailEvent>{{Kind::Joined, Day(1), Day(5), {}}}));
}

TEST(AddressTrailTest, AVersionThatCannotBeReadIsPassedOver) {
    TrailStop damaged = Stop(2, {});
    damaged.Entries = []() -> QStringList { throw RuntimeError(DeviceIoError); };
    EXPECT_EQ(TrailOf(u"anna@x.test"_s, {Stop(1, kWithout), damaged, Now(kWith)}),
              (QList<TrailEvent>{{Kind::Joined, Day(1), Day(2), {}}}));
    EXPECT_EQ(TrailOf(u"anna@x.test"_s, {damaged, Stop(3, kWith), Now(kWith)}),
              (QList<TrailEvent>{{Kind::WasThere, Day(3), Day(3), {}}}));
}

} // namespace
} // namespace varlo::History
