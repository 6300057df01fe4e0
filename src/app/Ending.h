// The end of the program when the system wants it: a log-off, or a signal.
#pragma once

#include "core/Session.h"

#include <QTimer>

#include <chrono>

namespace varlo {

class frmMain;

// Both run the closing sequence of the main window, with its questions, footers and settings. What nobody is
// there to save is kept beside its list (UnsavedList).
class Ending : public QObject {
    Q_OBJECT

public:
    // `patience` is how long a signal waits for an answer.
    Ending(Session &session, frmMain &window, std::chrono::milliseconds patience = std::chrono::seconds(5));

    // A signal: like closing the window. When nobody answers in time, the program ends unasked. Returns when the
    // questions are over.
    void Terminate();

    // A log-off. `mayAsk`: the session manager lets programs ask now. False when the operator wants to stay: the
    // log-off is to be held.
    bool LogOff(bool mayAsk);

Q_SIGNALS:
    void Ended();

private:
    void EndUnasked();
    bool HasEnded();

    Session &session_;
    frmMain &window_;
    QTimer deadline_{this};
};

} // namespace varlo
