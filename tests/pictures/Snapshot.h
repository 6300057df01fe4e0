// Pictures of windows as files.
#pragma once

#include <QString>

class QMenu;
class QWidget;

namespace varlo::test {

// The colours of a dark desktop for everything that is painted from now on.
void UseDarkColours();

// Shows `window` and writes it to `path`, with a title bar as window managers draw one. Ends the program with
// a message when the file cannot be written.
void TakeWindow(QWidget &window, const QString &path);

// The same for an open menu, which has no title bar.
void TakeMenu(QMenu &menu, const QString &path);

} // namespace varlo::test
