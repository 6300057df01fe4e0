// Lets the windows be painted in the middle of work that runs in one pass.
#pragma once

#include <QElapsedTimer>

namespace varlo {

// Handles what is due, timers included. The operator's clicks wait until the work is done, and so does the
// network: a mail check that ended now would put its requests on lists that are being changed.
void LetWindowsPaint();

// For a loop over thousands of entries: the window shows how far it is, and a window that was covered is
// painted.
class PaintBreaks {
public:
    PaintBreaks() { sinceLast_.start(); }

    // One pass of the loop is done. Costs next to nothing but ten times a second.
    void Take();

private:
    QElapsedTimer sinceLast_;
};

} // namespace varlo
