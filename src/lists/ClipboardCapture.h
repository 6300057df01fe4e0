// Takes addresses from the clipboard, one copied text after another, and puts them on the Pending list.
#pragma once

#include "core/Session.h"

#include <functional>

namespace varlo {

class ListStore;

// The two operations on the system's clipboard that capture needs. Both may throw RuntimeError; then nothing happened.
struct ClipboardAccess {
    std::function<QString()> Text; // empty when there is no text
    std::function<void()> Clear;
};

// What the capture button and its timer do; the window owns the timer, captions come out of the routines.
class ClipboardCapture {
public:
    ClipboardCapture(Session &session, ListStore &lists, ClipboardAccess clipboard);

    // Capture begins or ends: the status line, and an empty clipboard.
    void Begin();
    void End();

    // Looks once at the clipboard, empties it and takes an address from it. The caption to show ("3 e-mail
    // addresses captured"), empty when nothing was taken. Failures are reported as "Main.tmrCaptureEmail".
    QString Tick();

    static QString Caption(int count);

private:
    void Empty();
    void TakeText();

    Session &session_;
    ListStore &lists_;
    ClipboardAccess clipboard_;
};

} // namespace varlo
