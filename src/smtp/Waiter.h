// Waiting without stopping the windows: a nested event loop that ends by a wake-up, a time limit or an abort.
#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QEventLoop;

namespace OSSMTP {

class Waiter : public QObject {
    Q_OBJECT

public:
    enum class Result { Woken, TimedOut, Aborted };

    Waiter();

    // Forgets an abort of earlier work; the time limit is for each answer, in milliseconds.
    void Begin(int limit);
    // From now on the next answer is awaited: its time starts.
    void StartAnswer() { deadline_.setRemainingTime(limit_, Qt::PreciseTimer); }
    int Limit() const { return limit_; }

    // Runs the event loop until Wake. A program that is shutting down counts as an abort.
    Result Wait();
    // The same for one descriptor to become readable (or, when asked, writable). Very short waits are done
    // without the event loop, which costs more than the answer of a near server takes; the loop still turns
    // every 50 ms.
    Result WaitForSocket(qintptr socket, bool orWritable);

    // Lets events run when they have not for 50 ms. False once aborted.
    bool Breathe();

    void Wake();
    void Abort();
    bool IsAborted() const { return aborted_; }

private:
    void CheckTime();
    void StartTimer();
    bool IsLoopDue() const { return sinceLoop_.elapsed() >= kLongestSilence; }

    static constexpr int kLongestSilence = 50; // ms that windows may go without events

    QEventLoop *loop_ = nullptr; // the running one
    QTimer timer_;
    QDeadlineTimer deadline_;
    QElapsedTimer sinceLoop_;
    int limit_ = 0;
    bool woken_ = false;
    bool timedOut_ = false;
    bool aborted_ = false;
};

} // namespace OSSMTP
