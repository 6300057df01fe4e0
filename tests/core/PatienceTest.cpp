#include "core/Patience.h"

#include "support/ErrorOf.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

using namespace std::chrono_literals;

TEST(Patience, WhatSucceedsIsDoneOnce) {
    int attempts = 0;
    Patiently([&] { ++attempts; }, [] { return true; });
    EXPECT_EQ(attempts, 1);
}

TEST(Patience, WhatNobodyHoldsIsNotTriedAgain) {
    int attempts = 0;
    const auto attempt = [&] {
        ++attempts;
        throw RuntimeError(DiskFull);
    };
    EXPECT_EQ(ErrorOf([&] { Patiently(attempt, [] { return false; }); }), DiskFull);
    EXPECT_EQ(attempts, 1);
}

TEST(Patience, WhatIsLetGoInTimeSucceeds) {
    int attempts = 0;
    const auto attempt = [&] {
        if (++attempts < 3)
            throw RuntimeError(PermissionDenied);
    };
    EXPECT_EQ(ErrorOf([&] {
                  Patiently(
                      attempt, [] { return true; }, 10s);
              }),
              0);
    EXPECT_EQ(attempts, 3);
}

TEST(Patience, WhatStaysHeldIsReportedWhenTheTimeIsOver) {
    QElapsedTimer time;
    time.start();
    const auto attempt = [] { throw RuntimeError(PermissionDenied); };
    EXPECT_EQ(ErrorOf([&] {
                  Patiently(
                      attempt, [] { return true; }, 100ms);
              }),
              PermissionDenied);
    EXPECT_GE(time.elapsed(), 100);
}

} // namespace
} // namespace varlo::test
