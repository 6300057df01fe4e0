// The push buttons of every window are made here.
#pragma once

#include <QString>

class QPushButton;
class QWidget;

namespace varlo {

// A button with that object name, a caption, and where wanted a tooltip and an icon (see Icons.h). Enter presses
// it while it has the focus; it never takes Enter from another control: that is said once for each window.
QPushButton *NewButton(QWidget *parent, const char *name, const QString &caption, const QString &toolTip = {},
                       QStringView icon = {});

} // namespace varlo
