#include "core/PaintBreaks.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

class PaintBreaksTest : public testing::Test {
protected:
    PaintBreaksTest() {
        QObject::connect(&ticker, &QTimer::timeout, &ticker, [this] { ++ticks; });
        ticker.start(0);
    }

    QTimer ticker;
    int ticks = 0;
};

} // namespace

TEST_F(PaintBreaksTest, WhatIsDueIsHandled) {
    LetWindowsPaint();
    EXPECT_EQ(ticks, 1);
}

TEST_F(PaintBreaksTest, ABreakIsTakenTenTimesASecondAndNotWithEveryPass) {
    QElapsedTimer passed;
    passed.start();
    PaintBreaks breaks;
    int passes = 0;
    while (ticks < 3 && !passed.hasExpired(30000)) {
        breaks.Take();
        ++passes;
    }
    EXPECT_EQ(ticks, 3);
    EXPECT_GE(passed.elapsed(), 300);
    EXPECT_GT(passes, 30);
}

} // namespace varlo
