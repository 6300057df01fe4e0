// Finds the windows, controls and menu entries of the running program, as an operator would: the visible
// ones.
#pragma once

#include "core/Literals.h"

#include <QAction>
#include <QMenu>
#include <QString>
#include <QWidget>

namespace varlo::e2e {

// What a command could not do; its text is the reply.
struct Refusal {
    QString Reason;
};

// The one widget of that object name; visible ones win over hidden ones, and `window`, when given, is the
// object name of its window. Throws Refusal when there is none or no single one.
QWidget *FindWidget(const QString &name, const QString &window);

// As above, and the operator could use it now: visible, enabled, not behind a modal box. Throws Refusal.
QWidget *FindUsable(const QString &name, const QString &window);

// The same widget as `Wanted`. Throws Refusal when it is of another kind.
template<typename Wanted> Wanted *As(QWidget *widget) {
    if (auto *found = qobject_cast<Wanted *>(widget))
        return found;
    throw Refusal{widget->objectName() + u" is a "_s +
                  QString::fromLatin1(widget->metaObject()->className())};
}

// The menu entry of that object name, usable now. Throws Refusal.
QAction *FindUsableAction(const QString &name);

// The visible pop-up menu that shows the entry, or nothing.
QMenu *OpenMenuOf(const QAction *action);

// The box or dialog that the operator has to answer first. Throws Refusal when there is none.
QWidget *ModalBox();

// "&Yes" reads "Yes".
QString Plain(QString caption);

} // namespace varlo::e2e
