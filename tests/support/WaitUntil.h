// Waits for a condition while events are handled as in the program, without sleeping in between.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

namespace varlo::test {

// True as soon as `condition` holds; false when it does not within the limit, in milliseconds.
template<typename Condition> bool WaitUntil(Condition &&condition, int limit = 30000) {
    QElapsedTimer passed;
    passed.start();
    QTimer wake; // for conditions that change without an event
    wake.start(20);
    while (!condition()) {
        if (passed.hasExpired(limit))
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace varlo::test
