#include "Find.h"

#include <QApplication>

namespace varlo::e2e {

namespace {

QWidgetList Named(const QString &name, const QString &window) {
    QWidgetList found;
    for (QWidget *widget : QApplication::allWidgets())
        if (widget->objectName() == name && (window.isEmpty() || widget->window()->objectName() == window))
            found << widget;
    return found;
}

QWidgetList VisibleOf(const QWidgetList &widgets) {
    QWidgetList visible;
    for (QWidget *widget : widgets)
        if (widget->isVisible())
            visible << widget;
    return visible;
}

bool IsBehindModalBox(const QWidget *widget) {
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && widget->window() != modal && !modal->isAncestorOf(widget->window());
}

} // namespace

QWidget *FindWidget(const QString &name, const QString &window) {
    const QWidgetList all = Named(name, window);
    if (all.isEmpty())
        throw Refusal{QStringLiteral("there is no ") + name};
    const QWidgetList visible = VisibleOf(all);
    const QWidgetList &candidates = visible.isEmpty() ? all : visible;
    if (candidates.size() > 1)
        throw Refusal{QStringLiteral("there are %1 of ").arg(candidates.size()) + name +
                      QStringLiteral("; name the window, too")};
    return candidates.first();
}

QWidget *FindUsable(const QString &name, const QString &window) {
    QWidget *widget = FindWidget(name, window);
    if (!widget->isVisible())
        throw Refusal{name + QStringLiteral(" is not visible")};
    if (!widget->isEnabled())
        throw Refusal{name + QStringLiteral(" is disabled")};
    if (IsBehindModalBox(widget))
        throw Refusal{name + QStringLiteral(" is behind the box \"") +
                      QApplication::activeModalWidget()->windowTitle() + u'"'};
    return widget;
}

QAction *FindUsableAction(const QString &name) {
    for (const QWidget *widget : QApplication::allWidgets()) {
        for (QAction *action : widget->actions()) {
            if (action->objectName() != name)
                continue;
            if (!action->isEnabled() || !action->isVisible())
                throw Refusal{name + QStringLiteral(" cannot be chosen now")};
            if (IsBehindModalBox(widget) && !OpenMenuOf(action))
                throw Refusal{name + QStringLiteral(" is behind a box")};
            return action;
        }
    }
    throw Refusal{QStringLiteral("there is no menu entry ") + name};
}

QMenu *OpenMenuOf(const QAction *action) {
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *menu = qobject_cast<QMenu *>(widget);
            menu && menu->isVisible() && menu->actions().contains(const_cast<QAction *>(action)))
            return menu;
    return nullptr;
}

QWidget *ModalBox() {
    if (QWidget *box = QApplication::activeModalWidget())
        return box;
    throw Refusal{QStringLiteral("no box is open")};
}

QString Plain(QString caption) {
    const QString both = QStringLiteral("&&");
    const QString kept(QChar(0xFFFF)); // stands for a real ampersand meanwhile
    return caption.replace(both, kept).remove(u'&').replace(kept, QStringLiteral("&"));
}

} // namespace varlo::e2e
