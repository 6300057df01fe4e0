#include "Find.h"

#include "core/Literals.h"

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
        throw Refusal{u"there is no "_s + name};
    const QWidgetList visible = VisibleOf(all);
    const QWidgetList &candidates = visible.isEmpty() ? all : visible;
    if (candidates.size() > 1)
        throw Refusal{u"there are %1 of "_s.arg(candidates.size()) + name + u"; name the window, too"_s};
    return candidates.first();
}

QWidget *FindUsable(const QString &name, const QString &window) {
    QWidget *widget = FindWidget(name, window);
    if (!widget->isVisible())
        throw Refusal{name + u" is not visible"_s};
    if (!widget->isEnabled())
        throw Refusal{name + u" is disabled"_s};
    if (IsBehindModalBox(widget))
        throw Refusal{name + u" is behind the box \""_s + QApplication::activeModalWidget()->windowTitle() +
                      u'"'};
    return widget;
}

QAction *FindUsableAction(const QString &name) {
    for (const QWidget *widget : QApplication::allWidgets()) {
        for (QAction *action : widget->actions()) {
            if (action->objectName() != name)
                continue;
            if (!action->isEnabled() || !action->isVisible())
                throw Refusal{name + u" cannot be chosen now"_s};
            if (IsBehindModalBox(widget) && !OpenMenuOf(action))
                throw Refusal{name + u" is behind a box"_s};
            return action;
        }
    }
    throw Refusal{u"there is no menu entry "_s + name};
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
    throw Refusal{u"no box is open"_s};
}

QString Plain(QString caption) {
    const QString both = u"&&"_s;
    const QString kept(QChar(0xFFFF)); // stands for a real ampersand meanwhile
    return caption.replace(both, kept).remove(u'&').replace(kept, u"&"_s);
}

} // namespace varlo::e2e
