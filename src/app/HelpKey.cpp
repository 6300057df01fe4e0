#include "app/HelpKey.h"

#include "app/HelpTargets.h"

#include <QKeyEvent>
#include <QWidget>

namespace varlo {

namespace {

QString PageAbout(const QWidget *widget) {
    QString page;
    while (widget && page.isEmpty()) {
        page = HelpTargets::Page(widget->window()->objectName());
        widget = widget->window()->parentWidget();
    }
    return page;
}

} // namespace

bool HelpKey::eventFilter(QObject *receiver, QEvent *event) {
    // The window system's own window gets the key first; the widget that has the focus is the one that counts.
    if (event->type() != QEvent::KeyPress || !receiver->isWidgetType())
        return QObject::eventFilter(receiver, event);
    const auto *press = static_cast<QKeyEvent *>(event);
    if (press->key() != Qt::Key_F1 || press->modifiers() != Qt::NoModifier)
        return QObject::eventFilter(receiver, event);
    OpenHelpPage(session_, PageAbout(static_cast<QWidget *>(receiver)));
    return true;
}

} // namespace varlo
