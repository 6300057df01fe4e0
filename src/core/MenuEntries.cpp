#include "core/MenuEntries.h"

#include <QMenu>

namespace varlo {

QAction *AddEntry(QMenu *menu, QAnyStringView name, const QString &caption) {
    QAction *entry = menu->addAction(caption);
    entry->setObjectName(name);
    return entry;
}

void AddLine(QMenu *menu, QAnyStringView name) {
    menu->addSeparator()->setObjectName(name);
}

} // namespace varlo
