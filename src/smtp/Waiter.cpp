#include "smtp/Waiter.h"

#include "core/SocketPoll.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>

#include <limits>
#include <optional>

namespace OSSMTP {

Waiter::Waiter() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Waiter::CheckTime);
    sinceLoop_.start();
}

// The next answer may have become due while the loop ran: then its time counts.
void Waiter::CheckTime() {
    if (!deadline_.hasExpired()) {
        StartTimer();
        return;
    }
    timedOut_ = true;
    if (loop_)
        loop_->quit();
}

void Waiter::StartTimer() {
    timer_.start(int(std::min<qint64>(deadline_.remainingTime(), std::numeric_limits<int>::max())));
}

void Waiter::Begin(int limit) {
    limit_ = limit;
    aborted_ = false;
    StartAnswer();
}

Waiter::Result Waiter::Wait() {
    if (aborted_)
        return Result::Aborted;
    if (deadline_.hasExpired())
        return Result::TimedOut;
    woken_ = timedOut_ = false;
    QEventLoop loop;
    loop_ = &loop;
    StartTimer();
    loop.exec();
    loop_ = nullptr;
    timer_.stop();
    sinceLoop_.start();
    if (aborted_ || !(woken_ || timedOut_))
        return Result::Aborted;
    return woken_ ? Result::Woken : Result::TimedOut;
}

Waiter::Result Waiter::WaitForSocket(qintptr socket, bool orWritable) {
    if (!aborted_ && !IsLoopDue() && varlo::PollSocket(socket, orWritable, varlo::kShortWait))
        return Result::Woken;
    QSocketNotifier readable(socket, QSocketNotifier::Read);
    connect(&readable, &QSocketNotifier::activated, this, &Waiter::Wake);
    std::optional<QSocketNotifier> writable;
    if (orWritable) {
        writable.emplace(socket, QSocketNotifier::Write);
        connect(&*writable, &QSocketNotifier::activated, this, &Waiter::Wake);
    }
    return Wait();
}

bool Waiter::Breathe() {
    if (IsLoopDue()) {
        QCoreApplication::processEvents();
        sinceLoop_.start();
    }
    return !aborted_;
}

void Waiter::Wake() {
    woken_ = true;
    if (loop_)
        loop_->quit();
}

void Waiter::Abort() {
    aborted_ = true;
    if (loop_)
        loop_->quit();
}

} // namespace OSSMTP
