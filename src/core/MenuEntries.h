// The entries of every menu are made here.
#pragma once

#include <QString>

class QAction;
class QMenu;

namespace varlo {

// Each goes to the end of the menu and gets that object name.
QAction *AddEntry(QMenu *menu, QAnyStringView name, const QString &caption);
void AddLine(QMenu *menu, QAnyStringView name);

} // namespace varlo
