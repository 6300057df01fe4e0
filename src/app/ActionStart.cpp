#include "app/ActionStart.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

namespace varlo {

bool ActionStart::eventFilter(QObject *receiver, QEvent *event) {
    const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    // The answer to a box belongs to the action that raised it.
    if (isPress && !qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
        session_.LogTrouble.clear();
    return QObject::eventFilter(receiver, event);
}

} // namespace varlo
