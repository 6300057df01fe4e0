#include "app/Ending.h"

#include "app/frmMain.h"

#include <QApplication>
#include <QDialog>

namespace varlo {

namespace {

// Each box ends as if nobody had agreed to anything.
void DismissBoxes() {
    while (auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
        box->done(0);
}

} // namespace

Ending::Ending(Session &session, frmMain &window, std::chrono::milliseconds patience)
    : session_(session), window_(window) {
    deadline_.setInterval(patience); // repeated: boxes about errors can follow the questions
    connect(&deadline_, &QTimer::timeout, this, &Ending::EndUnasked);
}

void Ending::Terminate() {
    if (deadline_.isActive())
        return; // systems send several signals
    deadline_.start();
    // Refused by the operator, or accepted; else the window was asking already, and the deadline is for that.
    if (!window_.close())
        deadline_.stop();
    HasEnded();
}

bool Ending::LogOff(bool mayAsk) {
    if (!mayAsk) {
        EndUnasked();
        return true;
    }
    window_.close();
    return HasEnded();
}

void Ending::EndUnasked() {
    window_.EndUnasked();
    DismissBoxes();
    window_.close(); // without effect while it is closing: then its own handler goes on now
    HasEnded();
}

bool Ending::HasEnded() {
    if (!session_.AppExiting)
        return false;
    deadline_.stop();
    Q_EMIT Ended();
    return true;
}

} // namespace varlo
