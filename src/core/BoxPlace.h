// Where a box appears: over the window of this program that the operator sees.
#pragma once

class QDialog;
class QWidget;

namespace varlo {

// The window that a box raised now belongs to: the modal one, else the active one; while another program (or
// none) is active, the one that is on top of the others, else a main window, else any that is not minimised.
// Null when the operator sees none: the box then stands by itself.
QWidget *BoxParent();

// Lifts a box over windows that are "Always On Top"; its parent need not be one of them.
void KeepAbove(QDialog &box);

} // namespace varlo
