#include "app/EndSignals.h"

#include <QSignalSpy>
#include <QtTest>
#include <gtest/gtest.h>

#include <csignal>

namespace varlo::test {
namespace {

TEST(EndSignals, EachOfTheThreeReachesTheEventLoop) {
    for (int number : {SIGTERM, SIGHUP, SIGINT}) // whoever started the test may ignore them
        std::signal(number, SIG_DFL);
    const EndSignals signals;
    QSignalSpy received(&signals, &EndSignals::Received);
    int expected = 0;
    for (int number : {SIGTERM, SIGHUP, SIGINT}) {
        ASSERT_EQ(std::raise(number), 0);
        EXPECT_EQ(received.count(), expected) << "nothing happens inside the handler";
        EXPECT_TRUE(QTest::qWaitFor([&] { return received.count() == expected + 1; }, 5000)) << number;
        ++expected;
    }
}

TEST(EndSignals, OneThatWasIgnoredStaysIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        const EndSignals signals;
        QSignalSpy received(&signals, &EndSignals::Received);
        ASSERT_EQ(std::raise(SIGHUP), 0);
        ASSERT_EQ(std::raise(SIGTERM), 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return received.count() > 0; }, 5000));
        EXPECT_EQ(received.count(), 1);
    }
    EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

TEST(EndSignals, ItsEndGivesTheSignalsBack) {
    const auto before = std::signal(SIGTERM, SIG_DFL);
    { const EndSignals signals; }
    EXPECT_EQ(std::signal(SIGTERM, before), SIG_DFL);
}

} // namespace
} // namespace varlo::test
