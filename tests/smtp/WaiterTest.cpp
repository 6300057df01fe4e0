#include "smtp/Waiter.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace OSSMTP {

using Result = Waiter::Result;

TEST(WaiterTest, WakeEndsTheWait) {
    Waiter waiter;
    waiter.Begin(5000);
    QTimer::singleShot(0, &waiter, &Waiter::Wake);
    EXPECT_EQ(waiter.Wait(), Result::Woken);
}

TEST(WaiterTest, LimitEndsTheWait) {
    Waiter waiter;
    waiter.Begin(50);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(waiter.Wait(), Result::TimedOut);
    EXPECT_GE(clock.elapsed(), 49);
    EXPECT_EQ(waiter.Wait(), Result::TimedOut) << "at once, until the next answer starts";
}

TEST(WaiterTest, AnswerThatStartsMeanwhileHasItsWholeTime) {
    Waiter waiter;
    waiter.Begin(100);
    QElapsedTimer clock;
    clock.start();
    QTimer::singleShot(60, &waiter, &Waiter::StartAnswer);
    EXPECT_EQ(waiter.Wait(), Result::TimedOut);
    EXPECT_GE(clock.elapsed(), 155);
}

TEST(WaiterTest, AbortHoldsUntilTheNextBegin) {
    Waiter waiter;
    waiter.Begin(5000);
    QTimer::singleShot(0, &waiter, &Waiter::Abort);
    EXPECT_EQ(waiter.Wait(), Result::Aborted);
    EXPECT_EQ(waiter.Wait(), Result::Aborted);
    EXPECT_FALSE(waiter.Breathe());
    waiter.Begin(10);
    EXPECT_EQ(waiter.Wait(), Result::TimedOut);
}

TEST(WaiterTest, BreatheLetsEventsRunWhenTheyHaveNotForLong) {
    Waiter waiter;
    waiter.Begin(5000);
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    QElapsedTimer clock;
    clock.start();
    while (!ran && clock.elapsed() < 2000)
        EXPECT_TRUE(waiter.Breathe());
    EXPECT_TRUE(ran);
    EXPECT_LT(clock.elapsed(), 100);
}

} // namespace OSSMTP
